#include "platform/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

sigset_t terminationSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, signal);
    return signals;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    const sigset_t signals = terminationSignals();
    m_file = ::signalfd(-1, &signals, SFD_CLOEXEC);
    if (m_file >= 0)
        ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    m_notifier.reset();
    if (m_file >= 0)
        ::close(m_file);
}

void TerminationSignals::quitWhenReceived()
{
    if (m_file < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_file, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, QCoreApplication::instance(),
                     [this] {
                         // Not read: a second one would say the same.
                         m_notifier->setEnabled(false);
                         QCoreApplication::quit();
                     });
}
