#include "widget/ProgressRing.h"

#include "widget/RingPictures.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

constexpr std::array bothForms{false, true};
constexpr std::array someProgresses{0.004, 0.1, 0.25, 0.5, 0.6, 0.75, 0.97, 0.99, 1.0};

QImage trackPicture(bool compact, double scale)
{
    return painted(ringPictureSize(compact), scale, [&](QPainter& painter) {
        paintTrack(painter, ringGeometry(compact), QRectF({}, fullSize));
    });
}

QImage arcPicture(bool compact, double scale, double progress, const Tones& tones = redToBlue,
                  double opacity = 1)
{
    return painted(ringPictureSize(compact), scale, [&](QPainter& painter) {
        paintArc(painter, ringGeometry(compact), tones, progress, opacity, QRectF({}, fullSize));
    });
}

QImage turningPicture(bool compact, double scale, double seconds, const Tones& tones = redToBlue)
{
    return painted(ringPictureSize(compact), scale, [&](QPainter& painter) {
        paintTurningRing(painter, ringGeometry(compact), tones, seconds, 1, QRectF({}, fullSize));
    });
}

QImage turningGlowPicture(bool compact, double scale)
{
    return painted(ringPictureSize(compact), scale, [&](QPainter& painter) {
        paintTurningGlow(painter, ringGeometry(compact), redToBlue, 1, QRectF({}, fullSize));
    });
}

/// The colour of the ring where its gradient has gone `turn` of the way around: dark, light, dark.
Levels ringColorAt(const Tones& tones, double turn)
{
    const double light = 1 - std::abs(2 * turn - 1);
    const auto mix = [light](double dark, double lit) { return dark + (lit - dark) * light; };
    return levelsOf(Color{mix(tones.dark.red, tones.light.red),
                          mix(tones.dark.green, tones.light.green),
                          mix(tones.dark.blue, tones.light.blue), 1});
}

QPointF endOf(const RingGeometry& ring, double progress)
{
    const double angle = 2 * std::numbers::pi * progress;
    return ring.radius() * QPointF(std::sin(angle), -std::cos(angle));
}

/// How far a pixel is from the middle of the arc's line.
double fromArc(const RingGeometry& ring, double progress, QPointF way)
{
    if (turnOf(way) <= progress)
        return std::abs(lengthOf(way) - ring.radius());
    return std::min(lengthOf(way - endOf(ring, 0)), lengthOf(way - endOf(ring, progress)));
}

/// One value for each pixel of a picture.
using Field = std::vector<double>;

/// How much of each pixel the arc's line covers, counted out in 64ths.
Field arcMask(const QImage& image, const RingGeometry& ring, double progress)
{
    constexpr int side = 8;
    const double scale = image.devicePixelRatio();
    Field mask;
    visitPixels(image, ring, [&](int, int, QPointF way) {
        const auto inLine = [&](QPointF point) {
            return fromArc(ring, progress, point) < ring.lineWidth / 2;
        };
        const double away = fromArc(ring, progress, way) - ring.lineWidth / 2;
        if (std::abs(away) * scale > 1) {
            mask.push_back(away < 0);
            return;
        }
        int covered = 0;
        for (int i = 0; i < side * side; ++i) {
            const QPoint part(i % side, i / side);
            const QPointF fromMiddle = QPointF(part) - QPointF(side - 1, side - 1) / 2;
            covered += inLine(way + fromMiddle / (side * scale));
        }
        mask.push_back(covered / double(side * side));
    });
    return mask;
}

/// Where a pixel of a picture this wide is in a field.
std::size_t indexOf(int x, int y, int width)
{
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
}

/// Blurred along the rows by a Gaussian of `sigma` pixels, and turned on its side.
Field blurredRows(const Field& field, int width, double sigma)
{
    const int reach = static_cast<int>(std::ceil(4 * sigma));
    std::vector<double> kernel;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        kernel.push_back(std::exp(-i * i / (2 * sigma * sigma)));
        sum += kernel.back();
    }
    const int height = static_cast<int>(field.size()) / width;
    Field result(field.size());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double& value = result[indexOf(y, x, height)];
            for (int i = std::max(-reach, -x); i <= std::min(reach, width - 1 - x); ++i) {
                const double weight = kernel[static_cast<std::size_t>(i + reach)] / sum;
                value += field[indexOf(x + i, y, width)] * weight;
            }
        }
    }
    return result;
}

/// How strong the glow of an arc is in each pixel, by a real blur.
Field arcGlow(const QImage& image, const RingGeometry& ring, double progress)
{
    const double sigma = 0.4 * ring.lineWidth * image.devicePixelRatio();
    return blurredRows(blurredRows(arcMask(image, ring, progress), image.width(), sigma),
                       image.height(), sigma);
}

} // namespace

TEST(ProgressRingTest, theTrackIsAFaintWhiteCircleOnThePath)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        EXPECT_EQ(ring.diameter, compact ? 48 : 148);
        EXPECT_EQ(ring.lineWidth, compact ? 5 : 9);
        for (const double scale : allScales) {
            const QImage image = trackPicture(compact, scale);
            const LineCut cut = cutAtThreeOClock(image, ring, 0, 100, 3, 0.08 * 255);
            EXPECT_NEAR(cut.width, ring.lineWidth, 0.2) << scale;
            EXPECT_NEAR(cut.radius, ring.radius(), 0.05) << scale;
            visitPixels(image, ring, [&](int x, int y, QPointF way) {
                const double away = std::abs(lengthOf(way) - ring.radius()) - ring.lineWidth / 2;
                if (away < -0.75 / scale) {
                    ASSERT_LE(difference(levelsAt(image, x, y), levelsOf({1, 1, 1, 0.08})), 1);
                } else if (away > 0.75 / scale) {
                    ASSERT_EQ(pixelAt(image, x, y), 0U) << x << ", " << y;
                }
            });
        }
    }
}

TEST(ProgressRingTest, theLinesLieHalfInsideAndHalfOutsideTheirPath)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        for (const double scale : allScales) {
            // At three o'clock half of the colour is light.
            const LineCut arc =
                cutAtThreeOClock(arcPicture(compact, scale, 0.6), ring, 0, 100, 2, 127.5);
            EXPECT_NEAR(arc.width, ring.lineWidth, 0.1) << scale;
            EXPECT_NEAR(arc.radius, ring.radius(), 0.05) << scale;
            const LineCut turning =
                cutAtThreeOClock(turningPicture(compact, scale, 0), ring, 0, 100, 3, 255);
            EXPECT_NEAR(turning.width, ring.lineWidth, 0.1) << scale;
            EXPECT_NEAR(turning.radius, ring.radius(), 0.05) << scale;
        }
    }
}

TEST(ProgressRingTest, theArcRunsClockwiseFromTwelve)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        for (const double progress : {0.25, 0.5, 0.75}) {
            const QImage image = arcPicture(compact, 2, progress);
            visitPixels(image, ring, [&](int x, int y, QPointF way) {
                if (std::abs(lengthOf(way) - ring.radius()) > ring.lineWidth / 2 - 1)
                    return;
                const double capLength = ring.lineWidth / ring.radius() / 2 / std::numbers::pi;
                const double turn = turnOf(way);
                if (turn < progress) {
                    ASSERT_EQ(qAlpha(pixelAt(image, x, y)), 255) << turn;
                } else if (turn > progress + capLength && turn < 1 - capLength) {
                    ASSERT_LT(qAlpha(pixelAt(image, x, y)), 200) << turn;
                }
            });
        }
    }
}

TEST(ProgressRingTest, bothEndsAreRoundHalfALineWidthBeyond)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        for (const double progress : someProgresses) {
            const QImage image = arcPicture(compact, 2, progress);
            visitPixels(image, ring, [&](int x, int y, QPointF way) {
                const double away = fromArc(ring, progress, way) - ring.lineWidth / 2;
                if (away < -0.5) {
                    ASSERT_EQ(qAlpha(pixelAt(image, x, y)), 255) << progress;
                } else if (away > 0.5) {
                    ASSERT_LT(qAlpha(pixelAt(image, x, y)), 0.55 * 255) << progress;
                }
            });
        }
    }
}

TEST(ProgressRingTest, withoutProgressThereIsNoArcAndNoDot)
{
    for (const bool compact : bothForms) {
        EXPECT_EQ(arcPicture(compact, 2, 0), blankPicture(ringPictureSize(compact), 2));
        EXPECT_NE(arcPicture(compact, 2, 1e-6), blankPicture(ringPictureSize(compact), 2))
            << "a dot of two round ends";
    }
}

TEST(ProgressRingTest, aWholeCircleHasNoSeam)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        const QImage image = arcPicture(compact, 2, 1);
        const QImage turning = turningPicture(compact, 2, 0);
        visitPixels(image, ring, [&](int x, int y, QPointF way) {
            // The same a quarter of a turn further, where there is no seam.
            const QPointF turned = (ring.center + QPointF(-way.y(), way.x())) * 2;
            const int otherX = int(std::floor(turned.x()));
            const int otherY = int(std::floor(turned.y()));
            if (image.rect().contains(otherX, otherY)) {
                ASSERT_NEAR(qAlpha(pixelAt(image, x, y)), qAlpha(pixelAt(image, otherX, otherY)), 1)
                    << x << ", " << y;
            }
        });
        EXPECT_FALSE(inkBox(turning).isEmpty());
    }
}

TEST(ProgressRingTest, theColoursStayWhereTheyAreWhateverTheProgress)
{
    const Tones sitting{.light = {0.62, 0.78, 1.0}, .dark = {0.45, 0.55, 1.0}};
    for (const Tones& tones : {redToBlue, sitting}) {
        for (const bool compact : bothForms) {
            const RingGeometry& ring = ringGeometry(compact);
            for (const double progress : someProgresses) {
                const QImage image = arcPicture(compact, 1.5, progress, tones);
                visitPixels(image, ring, [&](int x, int y, QPointF way) {
                    if (fromArc(ring, progress, way) > ring.lineWidth / 2 - 1)
                        return;
                    ASSERT_LE(difference(levelsAt(image, x, y), ringColorAt(tones, turnOf(way))),
                              1.1)
                        << turnOf(way) << " of a turn, progress " << progress;
                });
            }
        }
    }
}

TEST(ProgressRingTest, theGlowIsABlurOfTheArc)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        for (const double progress : someProgresses) {
            const QImage image = arcPicture(compact, 1, progress);
            const Field glow = arcGlow(image, ring, progress);
            visitPixels(image, ring, [&](int x, int y, QPointF way) {
                if (fromArc(ring, progress, way) < ring.lineWidth / 2 + 0.5)
                    return;
                const Levels seen = levelsAt(image, x, y);
                const double expected = 0.55 * glow[indexOf(x, y, image.width())];
                ASSERT_NEAR(seen[3] / 255, expected, 0.03)
                    << x << ", " << y << " with progress " << progress;
                ASSERT_NEAR(seen[0], seen[3], 1) << "in the dark tone";
                ASSERT_EQ(seen[2], 0);
            });
        }
    }
}

TEST(ProgressRingTest, theLineLiesOverTheGlow)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        for (const double progress : {0.1, 0.6, 1.0}) {
            const QImage image = arcPicture(compact, 1, progress);
            const Field glow = arcGlow(image, ring, progress);
            const Field mask = arcMask(image, ring, progress);
            for (std::size_t i = 0; i < mask.size(); ++i) {
                const int x = int(i) % image.width();
                const int y = int(i) / image.width();
                const double expected = mask[i] + 0.55 * glow[i] * (1 - mask[i]);
                ASSERT_NEAR(qAlpha(pixelAt(image, x, y)) / 255.0, expected, 0.055)
                    << x << ", " << y << " with progress " << progress;
            }
        }
    }
}

TEST(ProgressRingTest, theTurningRingGlowsLikeAWholeCircle)
{
    for (const bool compact : bothForms) {
        const QImage image = turningGlowPicture(compact, 1);
        const Field glow = arcGlow(image, ringGeometry(compact), 1);
        for (std::size_t i = 0; i < glow.size(); ++i) {
            const Levels seen = levelsAt(image, int(i) % image.width(), int(i) / image.width());
            ASSERT_NEAR(seen[3] / 255, 0.55 * glow[i], 0.008);
            ASSERT_EQ(seen[0], seen[3]) << "in the dark tone";
        }
    }
}

TEST(ProgressRingTest, theTurningRingMakesFortyDegreesASecond)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        // Every nine seconds it begins at three o'clock.
        for (const double seconds : {0.0, 1.0, 4.5, 8.9, 763637211.0, 763637213.75}) {
            const QImage image = turningPicture(compact, 1.5, seconds);
            const double start = 0.25 + std::fmod(seconds, 9.0) / 9;
            visitPixels(image, ring, [&](int x, int y, QPointF way) {
                if (std::abs(lengthOf(way) - ring.radius()) > ring.lineWidth / 2 - 1)
                    return;
                const double turn = turnOf(way) - start;
                const Levels expected = ringColorAt(redToBlue, turn - std::floor(turn));
                ASSERT_LE(difference(levelsAt(image, x, y), expected), 1.1)
                    << turnOf(way) << " of a turn after " << seconds << " s";
            });
        }
    }
}

TEST(ProgressRingTest, whatFadesIsFainterByItsOpacity)
{
    const RingGeometry& ring = ringGeometry(false);
    const auto faded = [&](double opacity, auto paint) {
        return painted(fullSize, 1, [&](QPainter& painter) { paint(painter, opacity); });
    };
    const auto turningRing = [&](QPainter& painter, double opacity) {
        paintTurningRing(painter, ring, redToBlue, 3, opacity, QRectF({}, fullSize));
    };
    const auto turningGlow = [&](QPainter& painter, double opacity) {
        paintTurningGlow(painter, ring, redToBlue, opacity, QRectF({}, fullSize));
    };
    const auto expectFaded = [&](auto paint) {
        const QImage whole = faded(1, paint);
        const QImage half = faded(0.5, paint);
        for (int y = 0; y < whole.height(); ++y) {
            for (int x = 0; x < whole.width(); ++x)
                ASSERT_NEAR(qAlpha(pixelAt(half, x, y)), qAlpha(pixelAt(whole, x, y)) / 2.0, 1.1);
        }
        EXPECT_EQ(faded(0, paint), blankPicture(fullSize, 1));
    };
    expectFaded(turningRing);
    expectFaded(turningGlow);
    EXPECT_EQ(arcPicture(false, 1, 0.6, redToBlue, 0), blankPicture(fullSize, 1));
}

TEST(ProgressRingTest, paintedInPartsItIsTheSamePicture)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        const QSizeF size = ringPictureSize(compact);
        const auto paintAll = [&](QPainter& painter, const QRectF& exposed) {
            paintTrack(painter, ring, exposed);
            paintArc(painter, ring, redToBlue, 0.7, 1, exposed);
            paintTurningGlow(painter, ring, redToBlue, 0.5, exposed);
            paintTurningRing(painter, ring, redToBlue, 2.2, 0.5, exposed);
        };
        for (const double scale : allScales) {
            const QImage whole = painted(
                size, scale, [&](QPainter& painter) { paintAll(painter, QRectF({}, size)); });
            for (const int side : {5, 31, 90}) {
                const QImage parts = paintedInTiles(size, scale, side, paintAll);
                EXPECT_LE(largestDifference(parts, whole), 1) << side << " at " << scale;
                EXPECT_LT(changedPixels(parts, whole), 20) << side << " at " << scale;
            }
        }
    }
}

TEST(ProgressRingTest, nothingIsPaintedBeyondTheRingsBounds)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        const QRectF bounds = ringBounds(ring).adjusted(-0.5, -0.5, 0.5, 0.5);
        EXPECT_EQ(ringBounds(ring).center(), ring.center);
        for (const QImage& image : {trackPicture(compact, 2), arcPicture(compact, 2, 1),
                                    turningPicture(compact, 2, 1), turningGlowPicture(compact, 2)})
            EXPECT_TRUE(bounds.contains(inkBox(image))) << textOf(inkBox(image));
        EXPECT_TRUE(QRectF({}, ringPictureSize(compact)).contains(ringBounds(ring)));
    }
}

TEST(ProgressRingTest, whatChangesWithTheProgressIsWithinTheDifference)
{
    std::mt19937 random(314);
    std::uniform_real_distribution<double> anyProgress(0, 1);
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        for (int i = 0; i < 200; ++i) {
            const double progress = i % 20 == 0 ? 1 : anyProgress(random);
            double other = anyProgress(random);
            if (i % 3 == 0)
                other = std::max(progress - other / 300, 0.0);
            else if (i % 7 == 0)
                other = 0;
            const QRectF promised = arcDifference(ring, progress, other);
            EXPECT_EQ(arcDifference(ring, other, progress), promised);
            const QRectF changed =
                changedBox(arcPicture(compact, 1, progress), arcPicture(compact, 1, other));
            ASSERT_TRUE(changed.isEmpty() || QRectF(promised.toAlignedRect()).contains(changed))
                << "from " << progress << " to " << other << ": " << textOf(changed)
                << " is not within " << textOf(promised);
            // An end with its glow, and a little more.
            const double margin = 5 * ring.lineWidth;
            EXPECT_LE(promised.width(), changed.width() + margin) << progress << " to " << other;
            EXPECT_LE(promised.height(), changed.height() + margin) << progress << " to " << other;
        }
    }
}
