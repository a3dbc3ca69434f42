#include "widget/WidgetGeometry.h"

#include "widget/WidgetStyle.h"

#include <algorithm>
#include <cmath>

namespace {

/// The top of a box of this height whose middle is at `middle`, on a whole pixel.
double centeredTop(double middle, double height)
{
    return std::floor(middle - height / 2 + 0.5);
}

} // namespace

double compactnessOf(QSizeF size)
{
    const double way = fullSize.height() - compactSize.height();
    return std::clamp((fullSize.height() - size.height()) / way, 0.0, 1.0);
}

QRectF RingGeometry::glyph() const
{
    return {center.x() - glyphSize / 2, center.y() - glyphSize / 2, glyphSize, glyphSize};
}

double cornerRadius(bool compact)
{
    return compact ? 20 : 28;
}

const RingGeometry& ringGeometry(bool compact)
{
    return compact ? compact::geometry(Readout::Kind::time).ring : full::geometry().ring;
}

namespace full {

namespace {

constexpr double headerTopPadding = 18;
constexpr double headerSidePadding = 20;
constexpr double badgeSidePadding = 8;
constexpr double badgeTopPadding = 3;
constexpr double spacer = 8; ///< at least
constexpr double readoutHeight = 48;
constexpr double hintTopPadding = 4;
constexpr double controlsTopPadding = 10;
constexpr double controlsHeight = 34;
constexpr double controlsBottomPadding = 12;

Geometry arrange()
{
    const LineMetrics title = metricsOf(styles::title);
    const LineMetrics badge = metricsOf(styles::badge);
    const LineMetrics hint = metricsOf(styles::hint);
    Geometry geometry;
    geometry.ring = {.diameter = 148, .lineWidth = 9, .pulseLineWidth = 2.5, .glyphSize = 92};

    const double headerAscent = std::max(title.ascent, badge.ascent + int(badgeTopPadding));
    const double headerHeight =
        headerAscent + std::max(title.descent, badge.descent + int(badgeTopPadding));
    const double fixedHeight = headerTopPadding + headerHeight + geometry.ring.diameter +
                               readoutHeight + hintTopPadding + hint.height() + controlsTopPadding +
                               controlsHeight + controlsBottomPadding;
    // Where the stack is higher than the card, it hangs over as far above as below.
    const double gap = std::max(spacer, std::floor((fullSize.height() - fixedHeight) / 2));
    double y = std::floor((fullSize.height() - fixedHeight - 2 * gap) / 2);

    y += headerTopPadding;
    geometry.headerBaseline = y + headerAscent;
    geometry.titleLeft = headerSidePadding;
    geometry.badgeBaseline = geometry.headerBaseline;
    const double badgeWidth = 2 * badgeSidePadding;
    geometry.badge = {fullSize.width() - headerSidePadding - badgeWidth,
                      geometry.badgeBaseline - badge.ascent - badgeTopPadding, badgeWidth,
                      badge.height() + 2 * badgeTopPadding};
    y += headerHeight + gap;

    geometry.ring.center = {fullSize.width() / 2, y + geometry.ring.radius()};
    y += geometry.ring.diameter + gap;

    geometry.readout = {0, y, fullSize.width(), readoutHeight};
    y += readoutHeight + hintTopPadding;

    geometry.hint = {0, y, fullSize.width(), double(hint.height())};
    geometry.hintBaseline = y + hint.ascent;
    y += hint.height() + controlsTopPadding;

    geometry.controls = {0, y, fullSize.width(), controlsHeight};
    return geometry;
}

} // namespace

double Geometry::readoutBaseline(const LineMetrics& line) const
{
    return centeredTop(readout.center().y(), line.height()) + line.ascent;
}

const Geometry& geometry()
{
    static const Geometry arranged = arrange();
    return arranged;
}

} // namespace full

namespace compact {

namespace {

constexpr double sidePadding = 14;
constexpr double spacing = 12;
constexpr double lineSpacing = 1;
constexpr double checkMarkDiameter = 30;

Geometry arrange(Readout::Kind kind, const TextStyle& readoutStyle)
{
    const LineMetrics title = metricsOf(styles::compactTitle);
    const LineMetrics readout = metricsOf(readoutStyle);
    Geometry geometry;
    geometry.ring = {.diameter = 48, .lineWidth = 5, .pulseLineWidth = 1.8, .glyphSize = 32};

    const double textHeight = title.height() + lineSpacing + readout.height();
    const double rowHeight = std::max({geometry.ring.diameter, textHeight, checkMarkDiameter});
    const double middle = compactSize.height() / 2;
    geometry.row = {0, middle - rowHeight / 2, compactSize.width(), rowHeight};

    geometry.ring.center = {sidePadding + geometry.ring.radius(), middle};
    geometry.textLeft = sidePadding + geometry.ring.diameter + spacing;
    const double textTop = centeredTop(middle, textHeight);
    geometry.titleBaseline = textTop + title.ascent;
    const double readoutTop = textTop + title.height() + lineSpacing;
    geometry.readoutBaseline = readoutTop + readout.ascent;
    geometry.readout = {geometry.textLeft, readoutTop,
                        compactSize.width() - sidePadding - geometry.textLeft,
                        double(readout.height())};
    geometry.checkMark = {compactSize.width() - sidePadding - checkMarkDiameter,
                          middle - checkMarkDiameter / 2, checkMarkDiameter, checkMarkDiameter};
    // Only a count has the check mark beside it.
    if (kind == Readout::Kind::count)
        geometry.readout.setRight(geometry.checkMark.left() - spacing);
    return geometry;
}

} // namespace

QRect controlBand()
{
    return geometry(Readout::Kind::time).row.toAlignedRect();
}

const Geometry& geometry(Readout::Kind kind)
{
    static const Geometry withTime = arrange(Readout::Kind::time, styles::compactTime);
    static const Geometry withDone = arrange(Readout::Kind::done, styles::compactDone);
    static const Geometry withCount = arrange(Readout::Kind::count, styles::compactCount);
    switch (kind) {
    case Readout::Kind::done:
        return withDone;
    case Readout::Kind::count:
        return withCount;
    case Readout::Kind::time:
        break;
    }
    return withTime;
}

} // namespace compact
