#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

class QProgressBar;
class QTimer;

/// The wait of a start page for billing's answer: the reply timer that ticks twice a second and the
/// progress bar. The page owns both objects and connects the timer to its own slot.
class SrReplyWait
{
    Q_DECLARE_TR_FUNCTIONS(SrReplyWait)

public:
    SrReplyWait(QTimer *timer, QProgressBar *bar);

    /// A request was sent: the bar is shown from the start and the timer runs.
    void begin();
    /// An answer was matched: the bar is reset and hidden, the timer stopped.
    void end();
    /// One tick of the timer. True when the bar has reached its end, which means that no answer
    /// came.
    bool tick();

private:
    void showElapsed();

    QTimer *m_timer;
    QProgressBar *m_bar;
    QElapsedTimer m_since;
};
