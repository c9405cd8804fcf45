#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QQueue>
#include <QString>
#include <QTimer>

#include <functional>

/// Runs a planned sequence of steps against windows that are open, also from inside their modal
/// loops.
///
/// A step waits until its condition holds, then acts. An action may open a modal dialog and return
/// only when that dialog closes; the steps after it go on meanwhile, in the dialog's own event
/// loop. Every wait is bounded: a step that does not become ready in its time, and a message box
/// that no step asked for, end the run as failed.
class StepRunner final : public QObject
{
    Q_OBJECT

public:
    struct Step
    {
        QString title;
        std::function<bool()> ready; ///< empty: at once
        std::function<void()> act;   ///< empty: only wait
        int deadline = 30000;        ///< milliseconds to wait for `ready`
        bool expectsMessage = false; ///< a message box in front is what this step is about
    };

    /// `pause`: milliseconds between two steps, for a person who watches.
    explicit StepRunner(int pause, QObject *parent = nullptr);

    void add(const Step &step);
    void start();

    /// Ends the run as failed: closes what is open and drops the steps. Only the first reason
    /// counts.
    void fail(const QString &reason);
    bool failed() const { return !m_failure.isEmpty(); }
    QString failure() const { return m_failure; }
    bool isFinished() const { return m_finished; }
    /// Steps that have not begun yet.
    int pending() const { return m_steps.size(); }

signals:
    void stepStarted(const QString &title);
    void finished();

private:
    void look();
    void lookWhenIdle();
    void closeFront();
    void runNext();
    void finish();
    static QString describeScreen();

    QQueue<Step> m_steps;
    QTimer m_timer;
    QElapsedTimer m_waiting;
    QElapsedTimer m_sinceStep;
    QString m_failure;
    int m_pause;
    int m_acting = 0; ///< actions that have not returned yet: each but the innermost stands in a
                      ///< modal dialog's loop
    bool m_queued = false;
    bool m_finished = false;
};
