#pragma once

#include "support/Pixels.h"
#include "widget/ProgressRing.h"

#include <cmath>
#include <numbers>
#include <vector>

/// What the pictures of rings are painted for: the places and sizes of both forms.
inline QSizeF ringPictureSize(bool compact)
{
    return compact ? compactSize : fullSize;
}

/// Tones that tell the ring's parts apart: no blue but that of the line.
inline constexpr Tones redToBlue{.light = {0, 0, 1}, .dark = {1, 0, 0}};

/// The way from the ring's center to the middle of a pixel, in logical pixels.
inline QPointF fromCenter(const RingGeometry& ring, double scale, int column, int row)
{
    return QPointF(column + 0.5, row + 0.5) / scale - ring.center;
}

inline double lengthOf(QPointF way)
{
    return std::hypot(way.x(), way.y());
}

/// The direction of a way, in turns clockwise from twelve o'clock, from 0 to 1.
inline double turnOf(QPointF way)
{
    const double turn = std::atan2(way.x(), -way.y()) / (2 * std::numbers::pi);
    return turn < 0 ? turn + 1 : turn;
}

/// Calls `visit(column, row, way)` for each pixel of the picture.
template <typename Visitor>
void visitPixels(const QImage& image, const RingGeometry& ring, Visitor visit)
{
    for (int row = 0; row < image.height(); ++row) {
        for (int column = 0; column < image.width(); ++column)
            visit(column, row, fromCenter(ring, image.devicePixelRatio(), column, row));
    }
}

/// A line that was cut across, in logical pixels.
struct LineCut
{
    double width;
    double radius; ///< of its middle around the ring's center
};

/// The line that crosses the horizontal radius to the right of the ring's center between two
/// distances, measured by one component (2 is blue, 3 alpha), of which `full` is all there is.
inline LineCut cutAtThreeOClock(const QImage& image, const RingGeometry& ring, double inner,
                                double outer, std::size_t component, double full)
{
    const double scale = image.devicePixelRatio();
    const int row = static_cast<int>(std::floor(ring.center.y() * scale));
    double covered = 0;
    double moment = 0;
    for (int column = 0; column < image.width(); ++column) {
        const QPointF way = fromCenter(ring, scale, column, row);
        if (way.x() < inner || way.x() > outer)
            continue;
        const double part = levelsAt(image, column, row)[component] / full;
        covered += part / scale;
        moment += part / scale * lengthOf(way);
    }
    return {covered, moment / covered};
}
