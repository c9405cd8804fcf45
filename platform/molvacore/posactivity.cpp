#include <molvacore/posactivity.h>

#include <QEventLoop>
#include <QTimer>

#include <atomic>

namespace {

std::atomic<int> waiting{0};
std::atomic<int> slow{5000};

} // namespace

PosActivity *PosActivity::instance()
{
    static PosActivity activity;
    return &activity;
}

bool PosActivity::busy()
{
    return waiting > 0;
}

int PosActivity::slowTime()
{
    return slow;
}

void PosActivity::setSlowTime(int milliseconds)
{
    slow = qMax(0, milliseconds);
}

void PosActivity::wait()
{
    if (++waiting == 1)
        emit instance()->busyChanged(true);
    QEventLoop loop;
    QTimer::singleShot(slow.load(), &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (--waiting == 0)
        emit instance()->busyChanged(false);
}
