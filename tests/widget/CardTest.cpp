#include "widget/Card.h"

#include "support/Pixels.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

namespace {

/// A form of the card, by its numbers.
struct Form
{
    QSizeF size;
    double compactness;
    double radius;
    QPointF glowCenter;
    double glowEnd;
};

constexpr Form fullForm{{250, 320}, 0, 28, {0.5 * 250, -0.15 * 320}, 260};
constexpr Form compactForm{{216, 76}, 1, 20, {-0.05 * 216, 0.5 * 76}, 170};
constexpr std::array bothForms{fullForm, compactForm};

constexpr Color violet{0.45, 0.3, 0.9, 0.32};

QImage cardPicture(const Form& form, double scale, const Color& glow = violet)
{
    const CardLook look{form.size, form.compactness, glow};
    return painted(form.size, scale,
                   [&](QPainter& painter) { paintCard(painter, look, QRectF({}, form.size)); });
}

/// The card's gradient at a height.
Levels gradientAt(const Form& form, double y)
{
    const double part = y / form.size.height();
    const auto between = [part](double top, double bottom) { return top + (bottom - top) * part; };
    return levelsOf(
        Color{between(0.09, 0.04), between(0.10, 0.04), between(0.15, 0.07), between(0.82, 0.9)});
}

/// What stands for the frosted glass below the gradient, as it shows through near the top: the
/// choice of it is free, but it is the same everywhere.
const Levels& material()
{
    static const Levels levels = [] {
        const QRect pixels(64, 2, 128, 8);
        Levels seen = meanLevels(cardPicture(fullForm, 1, {0, 0, 0, 0}), pixels);
        const Levels gradient = gradientAt(fullForm, QRectF(pixels).center().y());
        for (std::size_t i = 0; i < seen.size(); ++i)
            seen[i] = (seen[i] - gradient[i]) / (1 - gradient[3] / 255);
        return seen;
    }();
    return levels;
}

/// The card's colour at a point, without the border: the glow over the gradient.
Levels surfaceAt(const Form& form, const Color& glow, QPointF point)
{
    const QPointF away = point - form.glowCenter;
    const double way = (std::hypot(away.x(), away.y()) - 10) / (form.glowEnd - 10);
    Color light = glow;
    light.opacity *= 1 - std::clamp(way, 0.0, 1.0);
    return composed(levelsOf(light), composed(gradientAt(form, point.y()), material()));
}

Levels surfaceAt(const Form& form, const Color& glow, const QRect& pixels, double scale)
{
    return surfaceAt(form, glow, QRectF(pixels).center() / scale);
}

/// The opacity of the border's white at a point of the card.
double borderOpacityAt(const Form& form, QPointF point)
{
    const double width = form.size.width();
    const double height = form.size.height();
    const double part =
        (point.x() * width + point.y() * height) / (width * width + height * height);
    return 0.28 + (0.05 - 0.28) * part;
}

} // namespace

TEST(CardTest, theGlowLiesOverTheGradient)
{
    for (const Form& form : bothForms) {
        for (const double opacity : {0.32, 0.5}) {
            Color glow = violet;
            glow.opacity = opacity;
            const QImage image = cardPicture(form, 1, glow);
            Levels error{};
            int tiles = 0;
            for (int y = 3; y + 11 < form.size.height(); y += 8) {
                // Beside the corners.
                for (int x = 48; x + 56 < form.size.width(); x += 8) {
                    const QRect tile(x, y, 8, 8);
                    const Levels seen = meanLevels(image, tile);
                    const Levels expected = surfaceAt(form, glow, tile, 1);
                    ASSERT_LE(difference(seen, expected), 0.6) << x << ", " << y;
                    for (std::size_t i = 0; i < error.size(); ++i)
                        error[i] += seen[i] - expected[i];
                    ++tiles;
                }
            }
            // The dither gives and takes alike.
            for (const double sum : error)
                EXPECT_NEAR(sum / tiles, 0, 0.1);
        }
    }
}

TEST(CardTest, theDesktopShowsThrough)
{
    EXPECT_GE(material()[3], -1);
    EXPECT_LT(material()[3], 250);
}

TEST(CardTest, theGradientRunsFromTopToBottom)
{
    const QImage image = cardPicture(fullForm, 1, {0, 0, 0, 0});
    for (const int y : {1, 78, 158, 238, 310}) {
        const QRect pixels(64, y, 64, 8);
        const Levels expected =
            composed(gradientAt(fullForm, QRectF(pixels).center().y()), material());
        EXPECT_LE(difference(meanLevels(image, pixels), expected), 0.3) << y;
    }
}

TEST(CardTest, theGlowIsClearBeyondItsEnd)
{
    const Color noGlow{0, 0, 0, 0};
    for (const Form& form : bothForms) {
        const QImage lit = cardPicture(form, 2);
        const QImage dark = cardPicture(form, 2, noGlow);
        bool foundGlow = false;
        bool foundNone = false;
        for (int y = 0; y < lit.height(); ++y) {
            for (int x = 0; x < lit.width(); ++x) {
                const QPointF away = QPointF(x + 0.5, y + 0.5) / 2 - form.glowCenter;
                const double radius = std::hypot(away.x(), away.y());
                if (radius > form.glowEnd) {
                    foundNone = true;
                    ASSERT_EQ(pixelAt(lit, x, y), pixelAt(dark, x, y)) << x << ", " << y;
                } else if (radius < form.glowEnd - 10 && qAlpha(pixelAt(lit, x, y)) > 200) {
                    foundGlow = true;
                    ASSERT_GE(qBlue(pixelAt(lit, x, y)), qBlue(pixelAt(dark, x, y)));
                }
            }
        }
        EXPECT_TRUE(foundGlow && foundNone);
    }
}

TEST(CardTest, theDitherIsOffByLessThanALevel)
{
    for (const Form& form : bothForms) {
        for (const double scale : allScales) {
            const QImage image = cardPicture(form, scale);
            int roundedUp = 0;
            int roundedDown = 0;
            for (int y = 3; y < image.height() - 3; ++y) {
                for (int x = int(45 * scale); x < image.width() - 45 * scale; ++x) {
                    const Levels exact = surfaceAt(form, violet, QRect(x, y, 1, 1), scale);
                    const QRgb pixel = pixelAt(image, x, y);
                    ASSERT_LT(difference(levelsOf(pixel), exact), 1.1) << x << ", " << y;
                    ASSERT_LE(qRed(pixel), qAlpha(pixel));
                    ASSERT_LE(qBlue(pixel), qAlpha(pixel));
                    roundedUp += qBlue(pixel) > exact[2];
                    roundedDown += qBlue(pixel) < exact[2];
                }
            }
            EXPECT_NEAR(roundedUp, roundedDown, 0.05 * (roundedUp + roundedDown));
        }
    }
}

TEST(CardTest, nothingIsOutsideTheOutlineAndNoHoleInside)
{
    for (const Form& form : bothForms) {
        const QPainterPath shape = cardShape(form.size, form.compactness);
        for (const double scale : allScales) {
            const QImage image = cardPicture(form, scale);
            EXPECT_EQ(pixelAt(image, 0, 0), 0U);
            EXPECT_EQ(pixelAt(image, image.width() - 1, image.height() - 1), 0U);
            for (int y = 0; y < image.height(); y += 2) {
                for (int x = 0; x < image.width(); x += 2) {
                    const QPointF middle = QPointF(x + 0.5, y + 0.5) / scale;
                    const double pixel = 1.5 / scale;
                    const QRectF around(middle.x() - pixel, middle.y() - pixel, 2 * pixel,
                                        2 * pixel);
                    const int alpha = qAlpha(pixelAt(image, x, y));
                    if (shape.contains(around)) {
                        ASSERT_GE(alpha, int(0.81 * 255)) << x << ", " << y;
                    } else if (!shape.intersects(around)) {
                        ASSERT_EQ(alpha, 0) << x << ", " << y;
                    }
                }
            }
        }
    }
}

TEST(CardTest, theCornersAreCutAsDeepAsByAnArc)
{
    for (const Form& form : bothForms) {
        for (const double scale : allScales) {
            const QImage image = cardPicture(form, scale);
            const double depth = form.radius * (std::numbers::sqrt2 - 1);
            const auto depthFrom = [&](int column, int row, int stepX, int stepY) {
                const int length = int(20 * scale);
                const double inside =
                    qAlpha(pixelAt(image, column + length * stepX, row + length * stepY));
                double uncovered = 0;
                for (int i = 0; i < length; ++i) {
                    const int alpha = qAlpha(pixelAt(image, column + i * stepX, row + i * stepY));
                    uncovered += std::max(1 - alpha / inside, 0.0);
                }
                return uncovered * std::numbers::sqrt2 / scale;
            };
            const int right = image.width() - 1;
            const int bottom = image.height() - 1;
            EXPECT_NEAR(depthFrom(0, 0, 1, 1), depth, 0.3);
            EXPECT_NEAR(depthFrom(right, 0, -1, 1), depth, 0.3);
            EXPECT_NEAR(depthFrom(0, bottom, 1, -1), depth, 0.3);
            EXPECT_NEAR(depthFrom(right, bottom, -1, -1), depth, 0.3);
        }
    }
}

TEST(CardTest, theCornersOfTheOutlineGrowSmallerOnTheWayToTheStrip)
{
    const auto depthOf = [](double compactness) {
        const QPainterPath shape = cardShape({230, 200}, compactness);
        double depth = 0;
        while (!shape.contains(QPointF(depth, depth)))
            depth += 0.01;
        return depth * std::numbers::sqrt2;
    };
    EXPECT_NEAR(depthOf(0), 28 * (std::numbers::sqrt2 - 1), 0.05);
    EXPECT_NEAR(depthOf(0.5), 24 * (std::numbers::sqrt2 - 1), 0.05);
    EXPECT_NEAR(depthOf(1), 20 * (std::numbers::sqrt2 - 1), 0.05);
}

TEST(CardTest, theBorderIsOnePixelInsideTheEdge)
{
    for (const Form& form : bothForms) {
        for (const double scale : allScales) {
            const QImage image = cardPicture(form, scale);
            const auto expectBorder = [&](int column, int row, double away) {
                const QPointF point = QPointF(column + 0.5, row + 0.5) / scale;
                // The part of the pixel that is less than a logical pixel from the edge.
                const double covered = std::clamp(scale - away, 0.0, 1.0);
                const double opacity = borderOpacityAt(form, point) * covered;
                const Levels expected =
                    composed(levelsOf({1, 1, 1, opacity}), surfaceAt(form, violet, point));
                EXPECT_LE(difference(levelsAt(image, column, row), expected), 3)
                    << column << ", " << row << " at " << scale;
            };
            const int right = image.width() - 1;
            const int bottom = image.height() - 1;
            for (int away = 0; away < 4; ++away) {
                expectBorder(away, image.height() / 2, away);
                expectBorder(right - away, image.height() / 2, away);
                expectBorder(image.width() / 2, away, away);
                expectBorder(image.width() / 2, bottom - away, away);
            }
        }
    }
}

TEST(CardTest, theBorderIsBrightAtTheTopLeftAndFaintAtTheBottomRight)
{
    // A border over next to nothing, along the diagonals of the corners.
    const QImage image = cardPicture(fullForm, 2, {0, 0, 0, 0});
    const auto brightest = [&](int column, int row, int stepX, int stepY) {
        int best = 0;
        for (int i = 0; i < 60; ++i)
            best = std::max(best, qRed(pixelAt(image, column + i * stepX, row + i * stepY)));
        return best;
    };
    const auto borderOver = [](double opacity, QPointF point) {
        return composed(levelsOf({1, 1, 1, opacity}), surfaceAt(fullForm, {0, 0, 0, 0}, point))[0];
    };
    EXPECT_NEAR(brightest(0, 0, 1, 1), borderOver(0.27, {8, 8}), 4);
    EXPECT_NEAR(brightest(499, 639, -1, -1), borderOver(0.06, {242, 312}), 4);
}

TEST(CardTest, paintedInPartsItIsTheSamePicture)
{
    for (const Form& form : bothForms) {
        const CardLook look{form.size, form.compactness, violet};
        for (const double scale : allScales) {
            const QImage whole = cardPicture(form, scale);
            for (const int side : {7, 32, 100}) {
                const QImage parts = paintedInTiles(form.size, scale, side,
                                                    [&](QPainter& painter, const QRectF& exposed) {
                                                        paintCard(painter, look, exposed);
                                                    });
                // Between two levels of the dither the last bit of a float may decide.
                EXPECT_LE(largestDifference(parts, whole), 1);
                EXPECT_LT(changedPixels(parts, whole), whole.width() * whole.height() / 1000)
                    << "tiles of " << side << " at " << scale;
            }
        }
    }
}

TEST(CardTest, nothingIsPaintedBeyondWhatIsExposed)
{
    for (const Form& form : bothForms) {
        for (const QRectF exposed : {QRectF(0, 0, 20, 20), QRectF(60, 30, 40, 20),
                                     QRectF(190, 0, 16, 30), QRectF(400, 400, 9, 9)}) {
            const QImage part = painted(form.size, 2, [&](QPainter& painter) {
                paintCard(painter, {form.size, form.compactness, violet}, exposed);
            });
            EXPECT_TRUE(inkBox(part).isEmpty() || exposed.contains(inkBox(part)));
            EXPECT_LE(
                largestDifference(partOf(part, exposed), partOf(cardPicture(form, 2), exposed)), 1);
        }
    }
}

TEST(CardTest, betweenTheFormsTheCardIsPaintedWhole)
{
    const QSizeF size(233, 198);
    const CardLook look{size, 0.5, violet};
    const QImage image =
        painted(size, 1.5, [&](QPainter& painter) { paintCard(painter, look, QRectF({}, size)); });
    EXPECT_GT(qAlpha(pixelAt(image, image.width() / 2, 1)), 200);
    EXPECT_GT(qAlpha(pixelAt(image, image.width() / 2, image.height() - 2)), 200);
    EXPECT_EQ(qAlpha(pixelAt(image, 0, 0)), 0);
}
