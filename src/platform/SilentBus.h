#pragma once

#include <QByteArray>

#include <chrono>
#include <stop_token>

/// A bus that takes connections and does not answer.
struct SilentBus
{
    QByteArray address; ///< D-Bus's

    /// How long it has before it is asked anew; twice as long each time, up to the longest. Both
    /// are more than 0.
    std::chrono::milliseconds firstWait = std::chrono::seconds(2);
    std::chrono::milliseconds longestWait = std::chrono::seconds(30);

    /// Waits until it answers, and asks it anew in case it was replaced. False if `stop` comes
    /// first.
    bool waitForAnswer(const std::stop_token& stop) const;
};
