#pragma once

#include "widget/WidgetModel.h"

#include <array>
#include <vector>

using State = TimerEngine::State;

/// A widget in the middle of a phase, as the engine would show it: a complete phase has nothing to
/// come any more, and push-ups have no time at all.
inline WidgetModel modelOf(Phase phase, State state = State::running, bool compact = false)
{
    WidgetModel model;
    model.phase = phase;
    model.state = state;
    model.compact = compact;
    model.cycle = 3;
    model.pushupCount = 50;
    if (phase == Phase::pushups) {
        model.timeString = QStringLiteral("0:00");
        return model;
    }
    model.timeString = state == State::complete ? QStringLiteral("0:00") : QStringLiteral("12:34");
    model.progress = state == State::complete ? 0 : 0.6;
    return model;
}

/// Every phase in every state, in one form.
inline std::vector<WidgetModel> allModels(bool compact)
{
    std::vector<WidgetModel> models;
    for (const Phase phase : allPhases) {
        for (const State state : {State::running, State::paused, State::complete}) {
            if (phase != Phase::pushups || state != State::paused)
                models.push_back(modelOf(phase, state, compact));
        }
    }
    return models;
}
