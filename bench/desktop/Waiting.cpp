#include "bench/desktop/Waiting.h"

#include <QCoreApplication>
#include <QTimer>

#include <csignal>

using namespace std::chrono_literals;

namespace {

volatile std::sig_atomic_t interrupted = 0;

void noteSignal(int)
{
    interrupted = 1;
}

} // namespace

void endWaitsOnSignals()
{
    struct sigaction action = {};
    action.sa_handler = noteSignal; // without SA_RESTART, so that it ends a blocking read as well
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        sigaction(signal, &action, nullptr);
}

void throwIfInterrupted()
{
    if (interrupted != 0)
        throw Interrupted();
}

bool waitUntil(const std::function<bool()>& reached, std::chrono::milliseconds atMost)
{
    const auto end = std::chrono::steady_clock::now() + atMost;
    // The event loop sleeps on through a signal and past the end, so something has to wake it.
    QTimer look;
    look.start(20ms);
    while (!reached()) {
        throwIfInterrupted();
        if (std::chrono::steady_clock::now() >= end)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void waitFor(std::chrono::milliseconds time)
{
    waitUntil([] { return false; }, time);
}
