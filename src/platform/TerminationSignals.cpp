#include "platform/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr std::array terminationSignals{SIGTERM, SIGINT, SIGHUP};

/// What an orderly quit may take, in seconds.
constexpr unsigned longestQuit = 5;

/// Counts the signals that came; a signal handler can reach nothing else.
int signalCounter = -1;

void noteSignal(int)
{
    constexpr uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(signalCounter, &one, sizeof one);
    ::alarm(longestQuit); // an event loop that hangs never reads it
}

} // namespace

TerminationSignals::TerminationSignals()
{
    signalCounter = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (signalCounter < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(signalCounter, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, QCoreApplication::instance(),
                     [this] {
                         m_notifier->setEnabled(false);
                         QCoreApplication::quit();
                     });
    struct sigaction action = {};
    action.sa_handler = noteSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (const int signal : terminationSignals) {
        struct sigaction before = {};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) // as nohup wants it
            ::sigaction(signal, &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    for (const int signal : terminationSignals)
        ::signal(signal, SIG_DFL);
    m_notifier.reset();
    if (signalCounter >= 0)
        ::close(signalCounter);
}
