#include "widget/CompletionPulse.h"

#include "paint/Pixel.h"
#include "widget/Annulus.h"
#include "widget/Wrapped.h"

#include <QPainter>

namespace {

constexpr double period = 1.6; ///< seconds
constexpr double growth = 0.45;
constexpr double startOpacity = 0.55;

} // namespace

QRectF pulseBounds(const RingGeometry& ring)
{
    const double reach = (ring.radius() + ring.pulseLineWidth / 2) * (1 + growth) + 1;
    return {ring.center.x() - reach, ring.center.y() - reach, 2 * reach, 2 * reach};
}

void paintCompletionPulse(QPainter& painter, const RingGeometry& ring, const Color& color,
                          double seconds, double opacity, const QRectF& exposed)
{
    const QRectF painted = pulseBounds(ring).intersected(exposed);
    if (painted.isEmpty())
        return;
    DevicePatch patch(painter, painted);
    for (const double delay : {0.0, 0.5}) {
        const double part = wrapped(seconds / period + delay, 1);
        // The whole drawing grows, the width of its line included.
        const double scale = 1 + part * growth;
        const double radius = ring.radius() * scale;
        const double halfWidth = ring.pulseLineWidth / 2 * scale;
        const double edge = halfWidth + 1 / patch.scale;
        const Pixel ink = pixelOf(color) * static_cast<float>((1 - part) * startOpacity * opacity);
        visitAnnulus(patch, ring.center, radius - edge, radius + edge,
                     [&](QRgb& pixel, float, float, float away) {
                         const float distance = std::abs(away - static_cast<float>(radius));
                         const float coverage =
                             lineCoverage(distance, static_cast<float>(halfWidth),
                                          static_cast<float>(patch.scale));
                         pixel = toRgb(over(ink * coverage, fromRgb(pixel)));
                     });
    }
    drawPatch(painter, patch);
}
