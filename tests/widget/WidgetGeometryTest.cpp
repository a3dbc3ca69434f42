#include "widget/WidgetGeometry.h"

#include "widget/WidgetStyle.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr std::array allKinds{Readout::Kind::time, Readout::Kind::done, Readout::Kind::count};

bool isWhole(double value)
{
    return value == std::floor(value);
}

QRectF ringSquare(const RingGeometry& ring)
{
    return {ring.center.x() - ring.diameter / 2, ring.center.y() - ring.diameter / 2, ring.diameter,
            ring.diameter};
}

void expectStyle(const TextStyle& style, int size, QFont::Weight weight, double tracking = 0)
{
    EXPECT_EQ(style.size, size);
    EXPECT_EQ(style.weight, weight);
    EXPECT_EQ(style.tracking, tracking);
}

} // namespace

TEST(WidgetGeometryTest, theFormsHaveTheirSizes)
{
    EXPECT_EQ(fullSize, QSizeF(250, 320));
    EXPECT_EQ(compactSize, QSizeF(216, 76));
    EXPECT_EQ(cornerRadius(false), 28);
    EXPECT_EQ(cornerRadius(true), 20);
    EXPECT_EQ(compactnessOf(fullSize), 0);
    EXPECT_EQ(compactnessOf(compactSize), 1);
    EXPECT_NEAR(compactnessOf({233, 198}), 0.5, 1e-9);
    EXPECT_EQ(compactnessOf({300, 400}), 0);
    EXPECT_EQ(compactnessOf({50, 20}), 1);
}

TEST(WidgetGeometryTest, theTextsHaveTheirStyles)
{
    expectStyle(styles::title, 12, QFont::Bold, 2.2);
    expectStyle(styles::badge, 10, QFont::DemiBold, 1.2);
    expectStyle(styles::time, 44, QFont::DemiBold);
    expectStyle(styles::done, 36, QFont::DemiBold);
    expectStyle(styles::count, 40, QFont::DemiBold);
    expectStyle(styles::reps, 15, QFont::Medium);
    expectStyle(styles::hint, 12, QFont::Medium);
    expectStyle(styles::capsule, 13, QFont::DemiBold);
    expectStyle(styles::compactTitle, 9, QFont::Bold, 1.6);
    expectStyle(styles::compactTime, 26, QFont::DemiBold);
    expectStyle(styles::compactDone, 22, QFont::DemiBold);
    expectStyle(styles::compactCount, 24, QFont::DemiBold);
    EXPECT_TRUE(styles::time.fixedDigits && styles::compactTime.fixedDigits);
    EXPECT_EQ(styles::reps.design, TextStyle::Design::plain);
    EXPECT_EQ(styles::time.design, TextStyle::Design::rounded);
}

TEST(WidgetGeometryTest, theRingsHaveTheirSizes)
{
    const RingGeometry& large = ringGeometry(false);
    EXPECT_EQ(large.diameter, 148);
    EXPECT_EQ(large.lineWidth, 9);
    EXPECT_EQ(large.pulseLineWidth, 2.5);
    EXPECT_EQ(large.glyph().size(), QSizeF(92, 92));
    EXPECT_EQ(large.glyph().center(), large.center);
    const RingGeometry& small = ringGeometry(true);
    EXPECT_EQ(small.diameter, 48);
    EXPECT_EQ(small.lineWidth, 5);
    EXPECT_EQ(small.pulseLineWidth, 1.8);
    EXPECT_EQ(small.glyph().size(), QSizeF(32, 32));
    EXPECT_EQ(small.glyph().center(), small.center);
}

TEST(WidgetGeometryTest, theHeaderStandsOnOneBaselineWithinItsPadding)
{
    const full::Geometry& place = full::geometry();
    EXPECT_EQ(place.titleLeft, 20);
    EXPECT_EQ(place.badge.right(), 250 - 20);
    EXPECT_EQ(place.badge.width(), 2 * 8) << "the padding beside a text of no width";
    EXPECT_EQ(place.headerBaseline, place.badgeBaseline);
    const LineMetrics badge = metricsOf(styles::badge);
    EXPECT_EQ(place.badge.top(), place.badgeBaseline - badge.ascent - 3);
    EXPECT_EQ(place.badge.bottom(), place.badgeBaseline + badge.descent + 3);
}

TEST(WidgetGeometryTest, theFullStackFollowsItsPaddings)
{
    const full::Geometry& place = full::geometry();
    const LineMetrics title = metricsOf(styles::title);
    const LineMetrics hint = metricsOf(styles::hint);
    const QRectF ring = ringSquare(place.ring);
    const double headerTop = std::min(place.headerBaseline - title.ascent, place.badge.top());
    const double headerBottom =
        std::max(place.headerBaseline + title.descent, place.badge.bottom());

    EXPECT_EQ(ring.center().x(), 125);
    const double gap = ring.top() - headerBottom;
    EXPECT_GE(gap, 8);
    EXPECT_EQ(place.readout.top() - ring.bottom(), gap) << "both spacers are alike";
    EXPECT_EQ(place.readout.height(), 48);
    EXPECT_EQ(place.hint.top(), place.readout.bottom() + 4);
    EXPECT_EQ(place.hint.height(), hint.height());
    EXPECT_EQ(place.hintBaseline, place.hint.top() + hint.ascent);
    EXPECT_EQ(place.controls.top(), place.hint.bottom() + 10);
    EXPECT_EQ(place.controls.height(), 34);
    EXPECT_EQ(place.controls.center().x(), 125);

    // The stack fills the card, or hangs over alike.
    const double above = headerTop - 18;
    const double below = 320 - (place.controls.bottom() + 12);
    EXPECT_NEAR(above, below, 1);
    if (gap > 8) {
        EXPECT_NEAR(above, 0, 1);
    } else {
        EXPECT_LE(above, 0);
    }
}

TEST(WidgetGeometryTest, theReadoutIsInTheMiddleOfItsFrame)
{
    const full::Geometry& place = full::geometry();
    for (const TextStyle& style : {styles::time, styles::done, styles::count}) {
        const LineMetrics line = metricsOf(style);
        const double baseline = place.readoutBaseline(line);
        const double middle = baseline + (line.descent - line.ascent) / 2.0;
        EXPECT_NEAR(middle, place.readout.center().y(), 0.5);
    }
}

TEST(WidgetGeometryTest, theStripIsARowWithItsPaddings)
{
    for (const Readout::Kind kind : allKinds) {
        const compact::Geometry& place = compact::geometry(kind);
        EXPECT_EQ(ringSquare(place.ring), QRectF(14, 14, 48, 48));
        EXPECT_EQ(place.textLeft, 14 + 48 + 12);
        EXPECT_EQ(place.checkMark, QRectF(216 - 14 - 30, 23, 30, 30));
        EXPECT_EQ(place.row.left(), 0);
        EXPECT_EQ(place.row.width(), 216);
        EXPECT_EQ(place.row.center().y(), 38);
        EXPECT_LE(place.readout.right(), 216 - 14);
    }
    EXPECT_EQ(compact::buttonDiameter, 26);
    EXPECT_EQ(compact::buttonSpacing, 7);
    EXPECT_EQ(full::buttonDiameter, 30);
    EXPECT_EQ(full::buttonSpacing, 10);
}

TEST(WidgetGeometryTest, theStripsLinesStandAPixelApartInItsMiddle)
{
    const auto styleOf = [](Readout::Kind kind) {
        return kind == Readout::Kind::done    ? styles::compactDone
               : kind == Readout::Kind::count ? styles::compactCount
                                              : styles::compactTime;
    };
    const LineMetrics title = metricsOf(styles::compactTitle);
    for (const Readout::Kind kind : allKinds) {
        const compact::Geometry& place = compact::geometry(kind);
        const LineMetrics readout = metricsOf(styleOf(kind));
        const double top = place.titleBaseline - title.ascent;
        const double bottom = place.readoutBaseline + readout.descent;
        EXPECT_EQ(place.titleBaseline + title.descent + 1, place.readout.top());
        EXPECT_EQ(place.readoutBaseline, place.readout.top() + readout.ascent);
        EXPECT_EQ(place.readout.height(), readout.height());
        EXPECT_NEAR((top + bottom) / 2, 38, 0.5);
        EXPECT_EQ(place.row.height(), std::max(48.0, bottom - top));
    }
}

TEST(WidgetGeometryTest, baselinesAreOnWholePixels)
{
    const full::Geometry& place = full::geometry();
    EXPECT_TRUE(isWhole(place.headerBaseline));
    EXPECT_TRUE(isWhole(place.badgeBaseline));
    EXPECT_TRUE(isWhole(place.hintBaseline));
    for (const TextStyle& style : {styles::time, styles::done, styles::count})
        EXPECT_TRUE(isWhole(place.readoutBaseline(metricsOf(style))));
    for (const Readout::Kind kind : allKinds) {
        EXPECT_TRUE(isWhole(compact::geometry(kind).titleBaseline));
        EXPECT_TRUE(isWhole(compact::geometry(kind).readoutBaseline));
    }
}
