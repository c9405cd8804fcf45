#include "terminationsignal.h"

#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A signal handler may do no more than write to a pipe.
std::array<int, 2> g_pipe{-1, -1};

void onSignal(int)
{
    const char byte = 1;
    if (::write(g_pipe[1], &byte, 1) < 0)
        return;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

} // namespace

TerminationSignal::TerminationSignal(QObject *parent) : QObject(parent)
{
    if (::pipe2(g_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qWarning("SIGTERM ends this program at once: no pipe");
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(g_pipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (::read(g_pipe[0], &byte, 1) == 1)
            emit received();
    });
    setHandler(onSignal);
}

TerminationSignal::~TerminationSignal()
{
    if (!m_notifier)
        return;
    setHandler(SIG_DFL);
    m_notifier.reset();
    ::close(g_pipe[0]);
    ::close(g_pipe[1]);
    g_pipe = {-1, -1};
}
