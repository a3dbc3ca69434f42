#include "paint/ContinuousCorners.h"

#include <QTransform>

#include <algorithm>

namespace {

// The corner that a plain arc around (1, 1) from (1, 0) to (0, 1) would make, in radii. Its curve
// meets the middle of the arc, with the arc's own bend, and has no bend at all where it meets the
// straight edges. It is symmetrical, so these are the points from the top edge to the middle.
constexpr double reach = 1.5;
constexpr double firstPull = 0.9497;
constexpr double secondPull = 0.5858;
constexpr double middle = 0.2929;

/// How much of the radius fits into the rectangle.
double fitting(const QRectF& rect, double radius)
{
    return std::min({radius, rect.width() / 2 / reach, rect.height() / 2 / reach});
}

/// Adds the corner at (0, 0), from the top edge to the left one, seen through `placed`.
void addCorner(QPainterPath& path, const QTransform& placed)
{
    const auto at = [&placed](double x, double y) { return placed.map(QPointF(x, y)); };
    path.lineTo(at(reach, 0));
    path.cubicTo(at(firstPull, 0), at(secondPull, 0), at(middle, middle));
    path.cubicTo(at(0, secondPull), at(0, firstPull), at(0, reach));
}

} // namespace

QPainterPath continuousRoundedRect(const QRectF& rect, double radius)
{
    const double unit = fitting(rect, radius);
    const double right = rect.x() + rect.width();
    const double bottom = rect.y() + rect.height();

    QPainterPath path(QPointF(right - reach * unit, rect.y()));
    addCorner(path, {unit, 0, 0, unit, rect.x(), rect.y()});
    addCorner(path, {0, -unit, unit, 0, rect.x(), bottom});
    addCorner(path, {-unit, 0, 0, -unit, right, bottom});
    addCorner(path, {0, unit, -unit, 0, right, rect.y()});
    path.closeSubpath();
    return path;
}
