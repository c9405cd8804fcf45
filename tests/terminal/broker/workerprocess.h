#pragma once

#include <QProcess>
#include <QString>

/// The worker program as its own process. Killed when this goes.
class WorkerProcess final
{
public:
    /// `address` with the password, which the program gets through its environment.
    WorkerProcess(const QString &address, const QString &database, int prefetch = 16);
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess &) = delete;
    WorkerProcess &operator=(const WorkerProcess &) = delete;

    /// True when it takes work.
    bool waitUntilReady();
    void kill9();
    /// Asks it to end; its exit code, or -1 if it had to be killed.
    int terminate();
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// All it has written so far.
    QString output();

    static QString program();

private:
    QProcess m_process;
    QByteArray m_output;
};
