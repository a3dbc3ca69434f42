#include "widget/CompletionPulse.h"

#include "widget/RingPictures.h"

#include <gtest/gtest.h>

namespace {

constexpr std::array bothForms{false, true};
constexpr double period = 1.6;

/// A whole number of periods since 2001.
constexpr double wholePeriods = period * 477'000'000;

QImage pulsePicture(bool compact, double scale, double seconds, double opacity = 1)
{
    return painted(ringPictureSize(compact), scale, [&](QPainter& painter) {
        paintCompletionPulse(painter, ringGeometry(compact), {1, 1, 1}, seconds, opacity,
                             QRectF({}, fullSize));
    });
}

/// Checks a ring of the pulse that is `part` of the way from its start to its end.
void expectRing(bool compact, double scale, double seconds, double part)
{
    const RingGeometry& ring = ringGeometry(compact);
    const double growth = 1 + 0.45 * part;
    const double radius = ring.radius() * growth;
    const double opacity = 0.55 * (1 - part);
    const QImage image = pulsePicture(compact, scale, seconds);
    const LineCut cut = cutAtThreeOClock(image, ring, radius - 4, radius + 4, 3, opacity * 255);
    EXPECT_NEAR(cut.width, ring.pulseLineWidth * growth, 0.12) << part << " at " << scale;
    EXPECT_NEAR(cut.radius, radius, 0.1) << part << " at " << scale;
    visitPixels(image, ring, [&](int x, int y, QPointF way) {
        if (std::abs(lengthOf(way) - radius) < ring.pulseLineWidth * growth / 2 - 0.5 / scale) {
            ASSERT_NEAR(qAlpha(pixelAt(image, x, y)), 255 * opacity, 1) << x << ", " << y;
        }
    });
}

} // namespace

TEST(CompletionPulseTest, aRingStartsAtTheProgressRingAsTheOtherIsHalfway)
{
    for (const bool compact : bothForms) {
        EXPECT_EQ(ringGeometry(compact).pulseLineWidth, compact ? 1.8 : 2.5);
        for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
            for (const double seconds : {0.0, period, wholePeriods}) {
                expectRing(compact, scale, seconds, 0);
                expectRing(compact, scale, seconds, 0.5);
            }
        }
    }
}

TEST(CompletionPulseTest, bothRingsGrowAndFadeHalfAPeriodApart)
{
    for (const bool compact : bothForms) {
        for (const double part : {0.1, 0.25, 0.4}) {
            expectRing(compact, 2, wholePeriods + part * period, part);
            expectRing(compact, 2, wholePeriods + part * period, part + 0.5);
            expectRing(compact, 2, wholePeriods + (part + 0.5) * period, part);
            expectRing(compact, 2, wholePeriods + (part + 0.5) * period, part + 0.5);
        }
    }
}

TEST(CompletionPulseTest, thereIsNothingBesideTheTwoRings)
{
    const RingGeometry& ring = ringGeometry(false);
    const QImage image = pulsePicture(false, 1, 0);
    visitPixels(image, ring, [&](int x, int y, QPointF way) {
        const double away = lengthOf(way);
        const double inner = ring.radius();
        const double outer = inner * 1.225;
        if (std::abs(away - inner) > 2.5 && std::abs(away - outer) > 2.5) {
            ASSERT_EQ(pixelAt(image, x, y), 0U) << x << ", " << y;
        }
    });
}

TEST(CompletionPulseTest, itRepeatsAfterEachPeriodWhoseHalvesLookAlike)
{
    for (const double seconds : {0.3, 0.79, 1.5}) {
        const QImage image = pulsePicture(false, 1.5, seconds);
        EXPECT_LE(largestDifference(image, pulsePicture(false, 1.5, seconds + period)), 1);
        EXPECT_LE(largestDifference(image, pulsePicture(false, 1.5, seconds + 1000 * period)), 1);
        // The rings change places after half a period.
        EXPECT_LE(largestDifference(image, pulsePicture(false, 1.5, seconds + period / 2)), 1);
        EXPECT_GT(largestDifference(image, pulsePicture(false, 1.5, seconds + 0.1)), 10);
    }
}

TEST(CompletionPulseTest, aRingIsGoneBeforeItStartsAnew)
{
    const RingGeometry& ring = ringGeometry(false);
    const QImage image = pulsePicture(false, 1, period - 1e-6);
    visitPixels(image, ring, [&](int x, int y, QPointF way) {
        if (lengthOf(way) > ring.radius() * 1.3) {
            ASSERT_EQ(pixelAt(image, x, y), 0U);
        }
    });
}

TEST(CompletionPulseTest, theBoundsHoldAtAllTimes)
{
    for (const bool compact : bothForms) {
        const QRectF card({}, ringPictureSize(compact));
        const QRectF bounds = pulseBounds(ringGeometry(compact)).intersected(card);
        QRectF covered;
        for (int i = 0; i < 200; ++i)
            covered |= inkBox(pulsePicture(compact, 2, i * period / 100));
        EXPECT_TRUE(bounds.adjusted(-0.5, -0.5, 0.5, 0.5).contains(covered)) << textOf(covered);
        EXPECT_LT(bounds.width(), covered.width() + 6) << "needlessly large";
        EXPECT_LT(bounds.height(), covered.height() + 6) << "needlessly large";
    }
}

TEST(CompletionPulseTest, itFadesAsAWhole)
{
    const QImage whole = pulsePicture(false, 1, 0.3);
    const QImage half = pulsePicture(false, 1, 0.3, 0.5);
    for (int y = 0; y < whole.height(); ++y) {
        for (int x = 0; x < whole.width(); ++x)
            ASSERT_NEAR(qAlpha(pixelAt(half, x, y)), qAlpha(pixelAt(whole, x, y)) / 2.0, 1.5);
    }
    EXPECT_EQ(pulsePicture(false, 1, 0.3, 0), blankPicture(fullSize, 1));
}

TEST(CompletionPulseTest, itHasTheColourThatItIsGiven)
{
    const QImage image = painted(fullSize, 1, [](QPainter& painter) {
        paintCompletionPulse(painter, ringGeometry(false), {1, 0.4, 0}, 0, 1, QRectF({}, fullSize));
    });
    bool found = false;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const Levels levels = levelsAt(image, x, y);
            found |= levels[3] > 100;
            ASSERT_EQ(levels[0], levels[3]);
            ASSERT_NEAR(levels[1], levels[3] * 0.4, 1);
            ASSERT_EQ(levels[2], 0);
        }
    }
    EXPECT_TRUE(found);
}

TEST(CompletionPulseTest, paintedInPartsItIsTheSamePicture)
{
    for (const bool compact : bothForms) {
        const auto paintPart = [&](QPainter& painter, const QRectF& exposed) {
            paintCompletionPulse(painter, ringGeometry(compact), {1, 1, 1}, 0.5, 1, exposed);
        };
        for (const double scale : allScales) {
            const QImage whole = pulsePicture(compact, scale, 0.5);
            const QImage parts = paintedInTiles(ringPictureSize(compact), scale, 23, paintPart);
            EXPECT_LE(largestDifference(parts, whole), 1) << scale;
            EXPECT_LT(changedPixels(parts, whole), 20) << scale;
        }
    }
}
