#pragma once

#include "core/TimerEngine.h"

/// The state of the timer as it is read out, such as "Deep Work, 39 minutes left, running". Minutes
/// are whole ones, rounded up.
QString spokenState(const TimerEngine& engine);

/// The states between which somebody who does not look at the widget is told of a change.
struct Milestone
{
    Phase phase = Phase::sitting;
    TimerEngine::State state = TimerEngine::State::running;
    /// Of a timed phase that runs: 0 at first, 1 in the last five minutes, 2 in the last one.
    int stage = 0;

    bool operator==(const Milestone&) const = default;
};

Milestone milestoneOf(const TimerEngine& engine);
