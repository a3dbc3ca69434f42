#include "paint/StatusIcon.h"

#include "paint/Colors.h"

#include <gtest/gtest.h>

namespace {

/// Pixels that are nearer to `color` than its components differ by 12 %.
int pixelsLike(const QImage& image, const QColor& color)
{
    constexpr int tolerance = 30;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            count += pixel.alpha() > 200 && std::abs(pixel.red() - color.red()) < tolerance &&
                     std::abs(pixel.green() - color.green()) < tolerance &&
                     std::abs(pixel.blue() - color.blue()) < tolerance;
        }
    }
    return count;
}

int ringPixels(const StatusIcon& icon)
{
    return pixelsLike(drawStatusIcon(icon, 48), toQColor(factsOf(icon.phase).lightTone));
}

} // namespace

TEST(StatusIconTest, theIconIsASquareOfEachSizeWithTransparentCorners)
{
    for (const QImage& image : drawStatusIcon(StatusIcon{.number = 39, .ringSteps = 48})) {
        EXPECT_EQ(image.width(), image.height());
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
        EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1).alpha(), 0);
        EXPECT_GT(pixelsLike(image, Qt::white), 4) << "the number is missing";
    }
}

TEST(StatusIconTest, theRingIsInThePhasesColourAndAsLongAsThePhaseStillIs)
{
    for (const Phase phase : allPhases) {
        const int full = ringPixels({.phase = phase, .number = 1, .ringSteps = 48});
        const int half = ringPixels({.phase = phase, .number = 1, .ringSteps = 24});
        EXPECT_GT(full, 300);
        EXPECT_NEAR(half, full / 2.0, full / 10.0);
        EXPECT_LT(ringPixels({.phase = phase, .number = 1, .ringSteps = 0}), full / 20);
    }
}

TEST(StatusIconTest, theRingRunsClockwiseFromTheTop)
{
    const QImage image = drawStatusIcon(StatusIcon{.number = 1, .ringSteps = 12}, 48);
    const QColor tone = toQColor(factsOf(Phase::sitting).lightTone);
    EXPECT_GT(pixelsLike(image.copy(24, 0, 24, 24), tone), 60);
    EXPECT_LT(pixelsLike(image.copy(0, 0, 23, 48), tone), 5);
    EXPECT_LT(pixelsLike(image.copy(0, 26, 48, 22), tone), 5);
}

TEST(StatusIconTest, everyStateLooksDifferent)
{
    QList<QImage> images;
    for (const StatusIcon& icon : {StatusIcon{.number = 39}, StatusIcon{.number = 38},
                                   StatusIcon{.mark = StatusIcon::Mark::paused},
                                   StatusIcon{.mark = StatusIcon::Mark::complete},
                                   StatusIcon{.phase = Phase::pushups, .number = 39}}) {
        const QImage image = drawStatusIcon(icon, 22);
        EXPECT_FALSE(images.contains(image));
        images.append(image);
    }
}

TEST(StatusIconTest, longNumbersStayInsideTheRing)
{
    const QImage image = drawStatusIcon(StatusIcon{.number = 9'000'000'000, .ringSteps = 0}, 48);
    for (int y = 0; y < 48; ++y) {
        EXPECT_LT(pixelsLike(image.copy(0, y, 6, 1), Qt::white), 1);
        EXPECT_LT(pixelsLike(image.copy(42, y, 6, 1), Qt::white), 1);
    }
}
