#pragma once

#include "core/Clock.h"

/// The machine's wall clock, and a timer of the main event loop.
class SystemClock : public Clock
{
public:
    Instant now() const override;
    std::unique_ptr<Ticks> startTicks(std::function<void()> tick) override;
};
