#pragma once

#include <molvacore/molvacore_global.h>

#include <QObject>

/// Whether an emulated card terminal of this process is waiting just now, so that the host can show
/// it, and how long a slow one takes.
class MOLVACORE_EXPORT PosActivity : public QObject
{
    Q_OBJECT

public:
    /// The one of the process, for connecting to busyChanged().
    static PosActivity *instance();
    static bool busy();

    /// Milliseconds that a slow terminal takes; 5000 unless set.
    static int slowTime();
    static void setSlowTime(int milliseconds);

    /// For the terminals: returns after slowTime(). Meanwhile windows are painted, timers run and
    /// messages arrive, while keys and clicks wait: nobody can close or repeat a payment that is
    /// being charged.
    static void wait();

signals:
    /// Emitted in the thread that waits.
    void busyChanged(bool busy);
};
