#pragma once

#include <functional>
#include <memory>

/// An instant of wall-clock time, in seconds since 2001-01-01 00:00:00 UTC.
struct Instant
{
    double seconds = 0;

    bool operator==(const Instant&) const = default;
};

/// `instant` moved by `seconds`.
constexpr Instant operator+(Instant instant, double seconds)
{
    return {instant.seconds + seconds};
}

/// The seconds from `earlier` to `later`.
constexpr double operator-(Instant later, Instant earlier)
{
    return later.seconds - earlier.seconds;
}

/// The Unix time of the reference date of Instant, in seconds.
inline constexpr double referenceDateUnixSeconds = 978307200;

/// A running tick source; it stops when it is destroyed.
class Ticks
{
public:
    Ticks() = default;
    Ticks(const Ticks&) = delete;
    Ticks& operator=(const Ticks&) = delete;
    virtual ~Ticks() = default;
};

/// Wall-clock time and the ticks that follow it. It is wall time on purpose: a countdown goes on
/// while the machine sleeps.
class Clock
{
public:
    virtual ~Clock() = default;

    virtual Instant now() const = 0;

    /// Calls `tick` on the main thread every half second, at most 0.1 s late while the machine is
    /// awake, until the result is destroyed. The result may be destroyed from within `tick`.
    virtual std::unique_ptr<Ticks> startTicks(std::function<void()> tick) = 0;

    /// Calls `frame` on the main thread for each frame of something that moves, at most
    /// `framesPerSecond` times a second, until the result is destroyed, which may be from within
    /// `frame`.
    virtual std::unique_ptr<Ticks> startFrames(double framesPerSecond,
                                               std::function<void()> frame) = 0;
};
