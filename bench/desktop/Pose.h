#pragma once

#include "core/TimerEngine.h"

#include <QByteArrayList>

/// A state of the widget to be measured, which one program of the benchmarks tells another by its
/// arguments.
struct Pose
{
    Phase phase = Phase::sitting;
    TimerEngine::State state = TimerEngine::State::running;
    bool compact = false;
    bool hovered = false;

    QByteArrayList toArguments() const
    {
        return {QByteArray::number(rawValue(phase)), QByteArray::number(static_cast<int>(state)),
                QByteArray::number(compact), QByteArray::number(hovered)};
    }

    /// Of a whole command line.
    static Pose fromArguments(const QStringList& arguments)
    {
        return {phaseFromRaw(arguments.value(1).toInt()).value_or(Phase::sitting),
                static_cast<TimerEngine::State>(arguments.value(2).toInt()),
                arguments.value(3).toInt() != 0, arguments.value(4).toInt() != 0};
    }
};
