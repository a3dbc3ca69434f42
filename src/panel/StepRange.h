#pragma once

#include <QtGlobal>

#include <algorithm>

/// The bounds of a setting, and how far one press moves it.
struct StepRange
{
    qint64 least = 1;
    qint64 most = 1;
    qint64 step = 1;

    constexpr bool canRaise(qint64 value) const { return value < most; }
    constexpr bool canLower(qint64 value) const { return value > least; }

    /// The value after a press, which brings one from outside back within the bounds.
    constexpr qint64 raised(qint64 value) const
    {
        return canRaise(value) ? std::clamp(value + step, least, most) : value;
    }
    constexpr qint64 lowered(qint64 value) const
    {
        return canLower(value) ? std::clamp(value - step, least, most) : value;
    }
};
