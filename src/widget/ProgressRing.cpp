#include "widget/ProgressRing.h"

#include "paint/Pixel.h"
#include "widget/Annulus.h"
#include "widget/Wrapped.h"

#include <QPainter>

#include <array>
#include <numbers>

namespace {

constexpr double trackOpacity = 0.08;
constexpr double glowOpacity = 0.55;
constexpr double degreesPerSecond = 40;

/// The blur of the glow: its radius is twice the standard deviation, and beyond three of these
/// nothing is seen of it.
double glowSigma(const RingGeometry& ring)
{
    return 0.4 * ring.lineWidth;
}
double glowReach(const RingGeometry& ring)
{
    return ring.lineWidth / 2 + 3 * glowSigma(ring);
}

/// The part of a normal distribution below `x` standard deviations.
float normalPart(float x)
{
    return 0.5F * (1 + std::erf(x / std::numbers::sqrt2_v<float>));
}

/// How strong the glow of a full circle is at each distance from its center.
class GlowProfile
{
public:
    explicit GlowProfile(const RingGeometry& ring)
        : m_first(ring.radius() - glowReach(ring))
        , m_stepsPerPixel((count - 1) / (2 * glowReach(ring)))
    {
        for (std::size_t i = 0; i < count; ++i)
            m_values[i] = blurred(ring, m_first + static_cast<double>(i) / m_stepsPerPixel);
    }

    float at(float radius) const
    {
        const float step =
            (radius - static_cast<float>(m_first)) * static_cast<float>(m_stepsPerPixel);
        const float clamped = std::clamp(step, 0.0F, static_cast<float>(count - 2));
        const auto index = static_cast<std::size_t>(clamped);
        const float part = clamped - static_cast<float>(index);
        return m_values[index] + (m_values[index + 1] - m_values[index]) * part;
    }

private:
    /// The line across the ring, blurred. Further out a part of the circle is longer than further
    /// in, so it gives more light; the root is how much of that the blur sees.
    static float blurred(const RingGeometry& ring, double radius)
    {
        constexpr int slices = 32;
        const double sigma = glowSigma(ring);
        const double slice = ring.lineWidth / slices;
        double sum = 0;
        for (int i = 0; i < slices; ++i) {
            const double source = ring.radius() - ring.lineWidth / 2 + (i + 0.5) * slice;
            const double away = (radius - source) / sigma;
            sum += std::sqrt(source / radius) * std::exp(-away * away / 2);
        }
        return static_cast<float>(sum * slice / (sigma * std::sqrt(2 * std::numbers::pi)));
    }

    static constexpr std::size_t count = 64;
    double m_first;
    double m_stepsPerPixel;
    std::array<float, count> m_values{};
};

const GlowProfile& glowProfile(const RingGeometry& ring)
{
    static const GlowProfile ofFull(ringGeometry(false));
    static const GlowProfile ofCompact(ringGeometry(true));
    return ring.diameter == ringGeometry(false).diameter ? ofFull : ofCompact;
}

/// The angle of a point, in turns clockwise from twelve o'clock, from 0 to 1. Its error is below
/// a millionth.
float turnOf(float x, float y)
{
    const float across = std::abs(x);
    const float along = std::abs(y);
    const float slope = std::min(across, along) / std::max({across, along, 1e-6F});
    const float square = slope * slope;
    float turn = 0;
    for (const float factor :
         {-0.00186549F, 0.00838004F, -0.01853087F, 0.03080340F, -0.05293867F, 0.15915132F})
        turn = turn * square + factor;
    turn *= slope;
    if (across > along)
        turn = 0.25F - turn;
    if (y > 0)
        turn = 0.5F - turn;
    return x < 0 ? 1 - turn : turn;
}

/// Dark, light, dark around the circle.
class RingColors
{
public:
    RingColors(const Tones& tones, double opacity)
        : m_dark(pixelOf(tones.dark) * static_cast<float>(opacity))
        , m_light(pixelOf(tones.light) * static_cast<float>(opacity))
    {}

    Pixel at(float turn) const { return mixed(m_light, m_dark, std::abs(2 * turn - 1)); }

private:
    Pixel m_dark;
    Pixel m_light;
};

/// An arc as it lies in the light of its glow: how much of the circle's glow there is along it.
class ArcGlow
{
public:
    ArcGlow(const RingGeometry& ring, double progress)
        : m_sigma(static_cast<float>(glowSigma(ring)))
        , m_circle(static_cast<float>(2 * std::numbers::pi * ring.radius()))
        // A round end gives as much light as a straight one of the same area.
        , m_start(static_cast<float>(-std::numbers::pi / 8 * ring.lineWidth))
        , m_end(static_cast<float>(progress) * m_circle - m_start)
    {}

    float at(float turn) const
    {
        const float way = turn * m_circle;
        // Most of an arc is far from both of its ends.
        if (way - m_start > faded * m_sigma && m_end - way > faded * m_sigma)
            return 1;
        return std::min(lightAt(way) + lightAt(way - m_circle) + lightAt(way + m_circle), 1.0F);
    }

private:
    /// In standard deviations.
    static constexpr float faded = 4;

    float lightAt(float way) const
    {
        const float sinceStart = (way - m_start) / m_sigma;
        const float untilEnd = (m_end - way) / m_sigma;
        if (sinceStart > faded && untilEnd > faded)
            return 1;
        if (sinceStart < -faded || untilEnd < -faded)
            return 0;
        return std::max(normalPart(sinceStart) + normalPart(untilEnd) - 1, 0.0F);
    }

    float m_sigma;
    float m_circle;
    float m_start;
    float m_end;
};

struct Band
{
    double inner;
    double outer;
};

Band lineBand(const RingGeometry& ring, double scale)
{
    const double half = ring.lineWidth / 2 + 1 / scale;
    return {ring.radius() - half, ring.radius() + half};
}

Band glowBand(const RingGeometry& ring)
{
    return {ring.radius() - glowReach(ring), ring.radius() + glowReach(ring)};
}

QPointF pointAt(const RingGeometry& ring, double turn)
{
    const double angle = turn * 2 * std::numbers::pi;
    return ring.center + ring.radius() * QPointF(std::sin(angle), -std::cos(angle));
}

/// The part of the ring's bounds that is exposed, or an empty rectangle.
QRectF exposedRing(const RingGeometry& ring, const QRectF& exposed)
{
    const QRectF part = ringBounds(ring).intersected(exposed);
    const double hole = (ring.radius() - glowReach(ring)) / std::numbers::sqrt2;
    const QRectF square(ring.center.x() - hole, ring.center.y() - hole, 2 * hole, 2 * hole);
    return square.contains(part) ? QRectF() : part;
}

} // namespace

QRectF ringBounds(const RingGeometry& ring)
{
    const double reach = ring.radius() + glowReach(ring);
    return {ring.center.x() - reach, ring.center.y() - reach, 2 * reach, 2 * reach};
}

void paintTrack(QPainter& painter, const RingGeometry& ring, const QRectF& exposed)
{
    const QRectF painted = exposedRing(ring, exposed);
    if (painted.isEmpty())
        return;
    DevicePatch patch(painter, painted);
    const auto scale = static_cast<float>(patch.scale);
    const auto halfWidth = static_cast<float>(ring.lineWidth / 2);
    const auto radius = static_cast<float>(ring.radius());
    const Pixel color = pixelOf({1, 1, 1, trackOpacity});
    const Band band = lineBand(ring, patch.scale);
    visitAnnulus(patch, ring.center, band.inner, band.outer,
                 [&](QRgb& pixel, float, float, float away) {
                     pixel = toRgb(color * lineCoverage(std::abs(away - radius), halfWidth, scale));
                 });
    drawPatch(painter, patch);
}

void paintArc(QPainter& painter, const RingGeometry& ring, const Tones& tones, double progress,
              double opacity, const QRectF& exposed)
{
    const QRectF painted = exposedRing(ring, exposed);
    if (progress <= 0 || painted.isEmpty())
        return;
    DevicePatch patch(painter, painted);
    const auto scale = static_cast<float>(patch.scale);
    const auto halfWidth = static_cast<float>(ring.lineWidth / 2);
    const auto radius = static_cast<float>(ring.radius());
    const auto end = static_cast<float>(progress);
    const QPointF startPoint = pointAt(ring, 0) - ring.center;
    const QPointF endPoint = pointAt(ring, progress) - ring.center;
    const auto squaredDistance = [](float x, float y, QPointF to) {
        const float awayX = x - static_cast<float>(to.x());
        const float awayY = y - static_cast<float>(to.y());
        return awayX * awayX + awayY * awayY;
    };
    const RingColors colors(tones, opacity);
    Color dark = tones.dark;
    dark.opacity *= glowOpacity * opacity;
    const Pixel glow = pixelOf(dark);
    const GlowProfile& across = glowProfile(ring);
    const ArcGlow along(ring, progress);
    const Band band = glowBand(ring);
    visitAnnulus(patch, ring.center, band.inner, band.outer,
                 [&](QRgb& pixel, float x, float y, float away) {
                     const float turn = turnOf(x, y);
                     const float lit = along.at(turn);
                     const float fromLine =
                         turn <= end ? std::abs(away - radius)
                                     : std::sqrt(std::min(squaredDistance(x, y, startPoint),
                                                          squaredDistance(x, y, endPoint)));
                     const float coverage = lineCoverage(fromLine, halfWidth, scale);
                     if (lit == 0 && coverage == 0)
                         return;
                     const Pixel light = glow * (across.at(away) * lit);
                     pixel = toRgb(over(colors.at(turn) * coverage, light));
                 });
    drawPatch(painter, patch);
}

QRectF arcDifference(const RingGeometry& ring, double progress, double otherProgress)
{
    const double first = std::min(progress, otherProgress);
    const double last = std::max(progress, otherProgress);
    const double reach = glowReach(ring) + ring.lineWidth / 2;
    const auto around = [&](double turn) {
        const QPointF point = pointAt(ring, turn);
        return QRectF(point.x() - reach, point.y() - reach, 2 * reach, 2 * reach);
    };
    QRectF bounds = around(first) | around(last);
    for (const double quarter : {0.25, 0.5, 0.75}) {
        if (first < quarter && quarter < last)
            bounds |= around(quarter);
    }
    // Without an arc there is no start either.
    return first <= 0 ? bounds | around(0) : bounds;
}

void paintTurningGlow(QPainter& painter, const RingGeometry& ring, const Tones& tones,
                      double opacity, const QRectF& exposed)
{
    const QRectF painted = exposedRing(ring, exposed);
    if (painted.isEmpty())
        return;
    DevicePatch patch(painter, painted);
    Color dark = tones.dark;
    dark.opacity *= glowOpacity * opacity;
    const Pixel glow = pixelOf(dark);
    const GlowProfile& across = glowProfile(ring);
    const Band band = glowBand(ring);
    visitAnnulus(
        patch, ring.center, band.inner, band.outer,
        [&](QRgb& pixel, float, float, float away) { pixel = toRgb(glow * across.at(away)); });
    drawPatch(painter, patch);
}

void paintTurningRing(QPainter& painter, const RingGeometry& ring, const Tones& tones,
                      double seconds, double opacity, const QRectF& exposed)
{
    const QRectF painted = exposedRing(ring, exposed);
    if (painted.isEmpty())
        return;
    DevicePatch patch(painter, painted);
    const auto scale = static_cast<float>(patch.scale);
    const auto halfWidth = static_cast<float>(ring.lineWidth / 2);
    const auto radius = static_cast<float>(ring.radius());
    // The colours begin at three o'clock and turn on from there.
    const auto start = static_cast<float>(0.25 + wrapped(degreesPerSecond * seconds, 360) / 360);
    const RingColors colors(tones, opacity);
    const Band band = lineBand(ring, patch.scale);
    visitAnnulus(patch, ring.center, band.inner, band.outer,
                 [&](QRgb& pixel, float x, float y, float away) {
                     const float turn = turnOf(x, y) - start;
                     const float coverage = lineCoverage(std::abs(away - radius), halfWidth, scale);
                     pixel = toRgb(colors.at(turn - std::floor(turn)) * coverage);
                 });
    drawPatch(painter, patch);
}
