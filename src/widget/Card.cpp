#include "widget/Card.h"

#include "paint/ContinuousCorners.h"
#include "paint/DevicePatch.h"
#include "paint/Pixel.h"
#include "widget/WidgetGeometry.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

/// In place of frosted glass, which only the window system could make: it lets the desktop through,
/// but not so much that a text behind the card could be read.
constexpr Color material{0.10, 0.10, 0.13, 0.65};

constexpr Color topColor{0.09, 0.10, 0.15, 0.82};
constexpr Color bottomColor{0.04, 0.04, 0.07, 0.9};

constexpr double borderWidth = 1;
constexpr double borderStartOpacity = 0.28;
constexpr double borderEndOpacity = 0.05;

/// The glow falls off from this radius on, in logical pixels.
constexpr double glowStartRadius = 10;

/// No corner reaches further than this, in logical pixels.
constexpr double cornerReach = 45;

double between(double a, double b, double part)
{
    return a + (b - a) * part;
}

Color between(const Color& a, const Color& b, double part)
{
    return {between(a.red, b.red, part), between(a.green, b.green, part),
            between(a.blue, b.blue, part), between(a.opacity, b.opacity, part)};
}

/// The order in which the pixels of an 8 by 8 tile are rounded up as a colour grows: the steps of
/// these dark gradients would be seen as bands otherwise.
constexpr auto ditherTile = [] {
    std::array<std::array<float, 8>, 8> tile{};
    for (unsigned y = 0; y < 8; ++y) {
        for (unsigned x = 0; x < 8; ++x) {
            unsigned rank = 0;
            for (unsigned bit = 0; bit < 3; ++bit) {
                rank = rank << 2 | ((x ^ y) >> bit & 1) << 1 | (y >> bit & 1);
            }
            tile[y][x] = (static_cast<float>(rank) + 0.5F) / 64;
        }
    }
    return tile;
}();

/// The thresholds of one row of pixels, for each of the eight rows of a tile.
class Dither
{
public:
    explicit Dither(const DevicePatch& patch)
        // Counted from the card's corner, so that a part of it comes out as in the whole.
        : m_corner(patch.offset.toPoint() - patch.origin)
        , m_width(static_cast<std::size_t>(patch.image.width()))
        , m_thresholds(8 * m_width)
    {
        for (std::size_t y = 0; y < 8; ++y) {
            for (std::size_t column = 0; column < m_width; ++column) {
                const auto x = static_cast<unsigned>(static_cast<int>(column) - m_corner.x()) % 8;
                m_thresholds[y * m_width + column] = ditherTile[y][x];
            }
        }
    }

    const float* row(int row) const
    {
        return &m_thresholds[static_cast<unsigned>(row - m_corner.y()) % 8 * m_width];
    }

private:
    QPoint m_corner;
    std::size_t m_width;
    std::vector<float> m_thresholds;
};

/// The gradient from top to bottom under the glow, without corners. It is most of what there is to
/// compute, so its loop is kept to what a compiler does for several pixels at once.
void computeSurface(DevicePatch& patch, const CardLook& look)
{
    const double compactness = look.compactness;
    const double centerX = look.size.width() * between(0.5, -0.05, compactness);
    const double centerY = look.size.height() * between(-0.15, 0.5, compactness);
    const auto endRadius = static_cast<float>(between(260, 170, compactness));
    const float perRadius = 1 / (endRadius - static_cast<float>(glowStartRadius));
    const auto step = static_cast<float>(1 / patch.scale);
    const auto firstX = static_cast<float>(patch.x(0) - centerX);
    const Pixel glow = pixelOf(look.glow);
    const Dither dither(patch);
    const int width = patch.image.width();
    const int height = patch.image.height();

    for (int row = 0; row < height; ++row) {
        const double y = patch.y(row);
        const double part = std::clamp(y / look.size.height(), 0.0, 1.0);
        const Pixel dark = over(pixelOf(between(topColor, bottomColor, part)), pixelOf(material));
        const Pixel bright = over(glow, dark);
        const auto awayY = static_cast<float>(y - centerY);
        const float* thresholds = dither.row(row);
        QRgb* pixels = patch.row(row);
        for (int column = 0; column < width; ++column) {
            const float awayX = firstX + static_cast<float>(column) * step;
            const float radius = std::sqrt(awayX * awayX + awayY * awayY);
            const float falling = (endRadius - radius) * perRadius;
            const float lit = falling > 0 ? falling : 0;
            const float strength = lit < 1 ? lit : 1;
            pixels[column] = toRgb(mixed(dark, bright, strength), thresholds[column]);
        }
    }
}

/// Whether neither the border nor a corner is in `rect`.
bool isInside(const QRectF& rect, const QSizeF& card)
{
    const QRectF whole({}, card);
    return whole.adjusted(cornerReach, borderWidth, -cornerReach, -borderWidth).contains(rect) ||
           whole.adjusted(borderWidth, cornerReach, -borderWidth, -cornerReach).contains(rect);
}

void paintBorder(QPainter& painter, const CardLook& look)
{
    const QRectF card({}, look.size);
    QLinearGradient light(card.topLeft(), card.bottomRight());
    light.setColorAt(0, QColor::fromRgbF(1, 1, 1, float(borderStartOpacity)));
    light.setColorAt(1, QColor::fromRgbF(1, 1, 1, float(borderEndOpacity)));
    constexpr double inset = borderWidth / 2;
    const double radius = between(cornerRadius(false), cornerRadius(true), look.compactness);
    painter.strokePath(
        continuousRoundedRect(card.adjusted(inset, inset, -inset, -inset), radius - inset),
        QPen(light, borderWidth));
}

} // namespace

QPainterPath cardShape(const QSizeF& size, double compactness)
{
    return continuousRoundedRect({{}, size},
                                 between(cornerRadius(false), cornerRadius(true), compactness));
}

void paintCard(QPainter& painter, const CardLook& look, const QRectF& exposed)
{
    const QRectF painted = exposed.intersected({{}, look.size});
    if (painted.isEmpty())
        return;
    DevicePatch surface(painter, painted);
    computeSurface(surface, look);
    if (isInside(painted, look.size)) {
        drawPatch(painter, surface);
        return;
    }
    {
        const QPainterPath shape =
            painter.deviceTransform().map(cardShape(look.size, look.compactness));
        const DevicePixels devicePixels(painter);
        QBrush brush(surface.image);
        brush.setTransform(QTransform::fromTranslate(surface.origin.x(), surface.origin.y()));
        painter.setClipRect(QRect(surface.origin, surface.image.size()), Qt::IntersectClip);
        painter.fillPath(shape, brush);
    }
    painter.save();
    painter.setClipRect(painted, Qt::IntersectClip);
    paintBorder(painter, look);
    painter.restore();
}
