#pragma once

#include <QElapsedTimer>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QQueue>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <functional>

class QDialog;

/// Answers the modal dialogs that a tested action opens, in the order in which the steps were
/// planned.
///
/// Plan the steps before the action; a modal dialog runs its own event loop inside it. A dialog
/// that no step was planned for, or that stays open past the watchdog, is closed and counted in
/// problems(), so a test ends red instead of hanging.
class ModalAnswers : public QObject
{
    Q_OBJECT

public:
    /// What a message box or input dialog showed when its step ran.
    struct Seen
    {
        QString className;
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QStringList buttons;
        bool enabled = false;
    };

    explicit ModalAnswers(QObject *parent = nullptr);
    ~ModalAnswers() override;

    /// Clicks OK in the next message box with the mouse.
    ModalAnswers &ok();
    /// Types `text` over what stands in the next input dialog's field and presses Enter.
    ModalAnswers &enter(const QString &text);
    /// Presses Esc in the next dialog.
    ModalAnswers &escape();
    /// Runs `step` on the next dialog; the step must close it.
    ModalAnswers &run(const std::function<void(QDialog *)> &step);

    QVector<Seen> seen() const { return m_seen; }
    /// Forgets what was seen.
    void forget() { m_seen.clear(); }
    /// Planned steps that no dialog asked for yet.
    int pending() const { return m_steps.size(); }
    /// Dialogs nobody planned for and dialogs that did not close.
    QStringList problems() const { return m_problems; }

private:
    void look();

    QQueue<std::function<void(QDialog *)>> m_steps;
    QVector<Seen> m_seen;
    QStringList m_problems;
    QPointer<QWidget> m_answered;
    QElapsedTimer m_since;
    QTimer m_timer;
};
