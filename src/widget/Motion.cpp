#include "widget/Motion.h"

#include <QEasingCurve>
#include <QPointF>

#include <cmath>
#include <numbers>

namespace {

/// A spring is at rest after so many of its natural time units: a thousandth of the way is left.
constexpr double springRest = 9.234;

double angularFrequency(const Curve& spring)
{
    return 2 * std::numbers::pi / spring.seconds;
}

double durationOf(const Curve& curve)
{
    return curve.shape == Curve::Shape::spring ? springRest / angularFrequency(curve)
                                               : curve.seconds;
}

const QEasingCurve& easeInOut()
{
    static const QEasingCurve curve = [] {
        QEasingCurve bezier(QEasingCurve::BezierSpline);
        bezier.addCubicBezierSegment(QPointF(0.42, 0), QPointF(0.58, 1), QPointF(1, 1));
        return bezier;
    }();
    return curve;
}

} // namespace

void Motion::jumpTo(double target)
{
    *this = Motion(target);
}

void Motion::moveTo(double target, Curve curve, Instant now)
{
    if (target == m_target)
        return;
    const double from = at(now);
    m_startVelocity = curve.shape == Curve::Shape::spring ? velocityAt(now) : 0;
    m_from = from;
    m_target = target;
    m_curve = curve;
    m_start = now;
    m_duration = durationOf(curve);
}

bool Motion::isMovingAt(Instant now) const
{
    const double elapsed = now - m_start;
    return elapsed >= 0 && elapsed < m_duration;
}

double Motion::at(Instant now) const
{
    if (!isMovingAt(now))
        return m_target;
    const double elapsed = now - m_start;
    const double way = m_target - m_from;
    switch (m_curve.shape) {
    case Curve::Shape::linear:
        break;
    case Curve::Shape::easeInOut:
        return m_from + way * easeInOut().valueForProgress(elapsed / m_duration);
    case Curve::Shape::spring: {
        const double omega = angularFrequency(m_curve);
        return m_target +
               (-way + (m_startVelocity - omega * way) * elapsed) * std::exp(-omega * elapsed);
    }
    }
    return m_from + way * elapsed / m_duration;
}

double Motion::velocityAt(Instant now) const
{
    // Fine enough for the eye, and one rule for all shapes.
    constexpr double step = 1.0 / 1024;
    if (!isMovingAt(now))
        return 0;
    return (at(now + step) - at(now)) / step;
}
