#include "srreplywait.h"

#include <QProgressBar>
#include <QTimer>

namespace {

constexpr int tickMs = 500;

} // namespace

SrReplyWait::SrReplyWait(QTimer *timer, QProgressBar *bar) : m_timer(timer), m_bar(bar)
{
    m_timer->setInterval(tickMs);
    m_bar->hide();
}

void SrReplyWait::begin()
{
    m_since.start();
    m_bar->setValue(0);
    showElapsed();
    m_timer->start();
    m_bar->show();
}

void SrReplyWait::end()
{
    m_bar->setValue(0);
    m_bar->hide();
    m_timer->stop();
}

bool SrReplyWait::tick()
{
    // A step of 500 on a range of 0 to 100 is ignored by the bar, so the wait has no end on
    // purpose: a slow billing service is waited for as long as the cashier wants to. The seconds
    // beside the bar show that it still goes on.
    m_bar->setValue(m_bar->value() + tickMs);
    showElapsed();
    return m_bar->value() >= m_bar->maximum();
}

void SrReplyWait::showElapsed()
{
    m_bar->setFormat(tr("Ожидание ответа: %1 с").arg(m_since.elapsed() / 1000));
}
