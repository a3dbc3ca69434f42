#pragma once

#include "core/Clock.h"

/// How a value gets to its target.
struct Curve
{
    enum class Shape {
        linear,
        easeInOut,
        spring, ///< critically damped: as fast as it can without going too far
    };

    Shape shape = Shape::linear;
    double seconds = 0; ///< the duration; of a spring the response, the period it would swing with
};

/// A number on its way to where it was sent. It takes time from its caller and keeps none running.
class Motion
{
public:
    explicit Motion(double value = 0)
        : m_from(value)
        , m_target(value)
    {}

    double target() const { return m_target; }

    /// Is at `target` from now on.
    void jumpTo(double target);

    /// Sets out for `target` from wherever it is at `now`; a spring also keeps the speed it has.
    /// Goes on undisturbed if that is where it is going already.
    void moveTo(double target, Curve curve, Instant now);

    double at(Instant now) const;

    /// By how much it changes in a second.
    double velocityAt(Instant now) const;

    /// Whether it has not arrived yet. A clock that was set back ends the way.
    bool isMovingAt(Instant now) const;

private:
    double m_from;
    double m_target;
    double m_startVelocity = 0; ///< per second
    Curve m_curve;
    Instant m_start;
    double m_duration = 0; ///< seconds
};
