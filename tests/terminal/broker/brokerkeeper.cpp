#include "brokerprocess.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <QThread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int LOOK_MS = 200;
/// Longer than a broker may take to start.
constexpr int PATIENCE_MS = 400000;

enum ExitCode { Ok = 0, WrongUse = 2, NotStarted = 3 };

bool isThere(pid_t process)
{
    return ::kill(process, 0) == 0;
}

/// Holds a broker until the ticket is gone, or whoever ran the tests is.
int keep(const QString &ticket, pid_t forWhom)
{
    BrokerProcess broker(1, BrokerProcess::Tls::On);
    const QString problem = broker.start();
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(problem));
        return NotStarted;
    }
    QSaveFile file(ticket);
    const QByteArray text = broker.ticket();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        return NotStarted;
    while (isThere(forWhom) && QFile::exists(ticket))
        QThread::msleep(LOOK_MS);
    QFile::remove(ticket);
    return Ok;
}

int start(int argc, char *argv[], const QString &ticket)
{
    QFile::remove(ticket);
    const pid_t tests = ::getppid();
    const pid_t keeper = ::fork();
    if (keeper == 0) {
        ::setsid();
        // Whoever reads what the tests write must not wait for the broker's end.
        const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        ::dup2(nowhere, STDIN_FILENO);
        ::dup2(nowhere, STDOUT_FILENO);
        ::dup2(nowhere, STDERR_FILENO);
        const QCoreApplication application(argc, argv);
        std::exit(keep(ticket, tests));
    }
    QElapsedTimer waiting;
    waiting.start();
    while (keeper > 0 && !waiting.hasExpired(PATIENCE_MS)) {
        if (QFile::exists(ticket))
            return Ok;
        if (::waitpid(keeper, nullptr, WNOHANG) == keeper)
            break;
        QThread::msleep(LOOK_MS);
    }
    std::fprintf(stderr, "the shared broker did not start\n");
    return NotStarted;
}

} // namespace

/// One broker for several tests: "start TICKET" leaves a process behind that keeps it and writes
/// where it is into the file TICKET; "stop TICKET" ends it.
int main(int argc, char *argv[])
{
    if (argc != 3)
        return WrongUse;
    const QByteArray what(argv[1]);
    const QString ticket = QFile::decodeName(argv[2]);
    if (what == "start")
        return start(argc, argv, ticket);
    if (what != "stop")
        return WrongUse;
    QFile::remove(ticket);
    return Ok;
}
