#include "TerminationSignals.h"

#include <QProcess>
#include <QSocketNotifier>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

int s_pipe[2] = {-1, -1};

// Runs in the signal's context, where writing a byte is about all that is allowed.
void noteSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(s_pipe[1], &byte, 1);
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : kSignals)
        sigaction(number, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    if (s_pipe[0] >= 0 || pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(s_pipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { onSignal(); });
    setHandler(noteSignal);
}

TerminationSignals::~TerminationSignals()
{
    if (m_notifier == nullptr)
        return;
    setHandler(SIG_DFL);
    m_notifier.reset();
    close(s_pipe[0]);
    close(s_pipe[1]);
    s_pipe[0] = s_pipe[1] = -1;
}

void TerminationSignals::onSignal()
{
    char bytes[16];
    while (read(s_pipe[0], bytes, sizeof bytes) > 0) {
    }
    Q_EMIT requested();
}

void endWithThisProcess(QProcess& process)
{
    process.setChildProcessModifier([parent = getpid()] {
        // The parent may have ended before the kernel was asked.
        if (prctl(PR_SET_PDEATHSIG, SIGTERM) != 0 || getppid() != parent)
            _exit(EXIT_FAILURE);
    });
}

} // namespace platform
