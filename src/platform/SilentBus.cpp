#include "platform/SilentBus.h"

#include "platform/BusProbe.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>

namespace {

/// Returns at this time, or at `stop`.
void sleepUntil(std::chrono::steady_clock::time_point end, const std::stop_token& stop)
{
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any nothing;
    nothing.wait_until(lock, stop, end, [] { return false; });
}

} // namespace

bool SilentBus::waitForAnswer(const std::stop_token& stop) const
{
    for (auto wait = firstWait; !stop.stop_requested(); wait = std::min(2 * wait, longestWait)) {
        const auto next = std::chrono::steady_clock::now() + wait;
        // Any name does; the bus has its own.
        const NameOnBus said = askBusFor("org.freedesktop.DBus", address, wait, stop);
        if (said == NameOnBus::free || said == NameOnBus::taken)
            return true;
        sleepUntil(next, stop); // it may have hung up at once
    }
    return false;
}
