#pragma once

#include "core/Clock.h"

/// The machine's wall clock, and timers of the main event loop.
class SystemClock : public Clock
{
public:
    Instant now() const override;
    std::unique_ptr<Ticks> startTicks(std::function<void()> tick) override;
    std::unique_ptr<Ticks> startFrames(double framesPerSecond,
                                       std::function<void()> frame) override;
};
