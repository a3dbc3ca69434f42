#pragma once

#include "core/TimerEngine.h"

/// All that the widget shows, as it stands at one moment.
struct WidgetModel
{
    Phase phase = Phase::sitting;
    TimerEngine::State state = TimerEngine::State::running;
    bool compact = false;
    bool hovered = false;
    qint64 cycle = 1;
    qint64 pushupCount = 0;
    QString timeString;
    std::optional<double> progress; ///< the part still to come; nothing in push-ups

    bool isComplete() const { return state == TimerEngine::State::complete; }
    bool isPaused() const { return state == TimerEngine::State::paused; }

    /// The user is asked to report the push-ups done.
    bool offersDone() const { return phase == Phase::pushups && !isComplete(); }

    /// The countdown can be paused, or resumed.
    bool offersPause() const { return progress.has_value() && !isComplete(); }

    bool operator==(const WidgetModel&) const = default;
};
