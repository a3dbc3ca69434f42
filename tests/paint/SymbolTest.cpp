#include "paint/Symbol.h"

#include <QGradient>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr auto names = {
    u"pause.fill",
    u"play.fill",
    u"forward.end.fill",
    u"arrow.down.right.and.arrow.up.left",
    u"arrow.up.left.and.arrow.down.right",
    u"gearshape.fill",
    u"menubar.arrow.up.rectangle",
    u"power",
    u"checkmark",
    u"gearshape",
    u"chart.bar.xaxis",
    u"clock.badge.questionmark",
    u"rectangle.compress.vertical",
    u"chair.lounge",
    u"figure.stand",
    u"figure.strengthtraining.traditional",
};
constexpr auto scales = {1.0, 1.25, 1.5, 2.0, 3.0};
constexpr QRectF usualBox(4, 4, 16, 16);

/// An image of 24 by 24 logical pixels with nothing but the symbol.
QImage drawn(QStringView name, const QRectF& box = usualBox, double scale = 1,
             const QBrush& brush = Qt::white)
{
    const int side = qRound(24 * scale);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawSymbol(painter, name, box, brush);
    return image;
}

int alphaAt(const QImage& image, int x, int y)
{
    return qAlpha(image.pixel(x, y));
}

/// How many pixels are covered, partly covered ones counted in part.
double coverage(const QImage& image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += alphaAt(image, x, y) / 255.0;
    }
    return sum;
}

/// Whether the symbol covers the point of the grid, and the point opposite to it.
bool coversBoth(QStringView name, double x, double y)
{
    const QPainterPath path = symbolPath(name);
    return path.contains(QPointF(x, y)) && path.contains(QPointF(16 - x, 16 - y));
}

bool coversNeither(QStringView name, double x, double y)
{
    const QPainterPath path = symbolPath(name);
    return !path.contains(QPointF(x, y)) && !path.contains(QPointF(16 - x, 16 - y));
}

/// The alphas of the pixels of a row, each run of equal ones once.
QList<int> runsInRow(const QImage& image, int y)
{
    QList<int> runs;
    for (int x = 0; x < image.width(); ++x) {
        if (runs.isEmpty() || alphaAt(image, x, y) != runs.last())
            runs << alphaAt(image, x, y);
    }
    return runs;
}

} // namespace

TEST(SymbolTest, everySymbolFillsTheMiddleOfTheGrid)
{
    for (const char16_t* name : names) {
        SCOPED_TRACE(QString::fromUtf16(name).toStdString());
        const QRectF bounds = symbolPath(name).boundingRect();
        EXPECT_TRUE(QRectF(0, 0, 16, 16).contains(bounds));
        EXPECT_GE(std::max(bounds.width(), bounds.height()), 10);
        EXPECT_NEAR(bounds.center().x(), 8, 1);
        EXPECT_NEAR(bounds.center().y(), 8, 1);
    }
}

TEST(SymbolTest, anUnknownNameDrawsNothing)
{
    for (const char16_t* name : {u"", u"pause", u"pause.fill.fill", u"Power"}) {
        EXPECT_TRUE(symbolPath(name).isEmpty());
        EXPECT_EQ(coverage(drawn(name)), 0);
    }
}

TEST(SymbolTest, theBarsOfPauseAreWholePixels)
{
    const QImage image = drawn(u"pause.fill");
    for (int x = 0; x < image.width(); ++x) {
        const int column = x - 4;
        const bool inBar = (column >= 4 && column < 7) || (column >= 9 && column < 12);
        EXPECT_EQ(alphaAt(image, x, 12), inBar ? 255 : 0) << "column " << column;
    }
}

TEST(SymbolTest, straightEdgesAreSharpInEverySizeAndAtEveryPlace)
{
    for (const double scale : scales) {
        for (const double side : {14.0, 16.0, 13.87}) {
            for (const double place : {4.0, 4.3, 4.5}) {
                SCOPED_TRACE(testing::Message() << side << " at " << place << " times " << scale);
                const QImage image = drawn(u"pause.fill", {place, place, side, side}, scale);
                EXPECT_EQ(runsInRow(image, image.height() / 2), QList<int>({0, 255, 0, 255, 0}));
            }
        }
    }
}

TEST(SymbolTest, bothSidesOfASymmetricSymbolAreEqual)
{
    for (const char16_t* name : {u"pause.fill", u"menubar.arrow.up.rectangle", u"chair.lounge"}) {
        for (const double scale : scales) {
            const QRectF whole(0, 0, 24, 24);
            const QImage image = drawn(name, whole, scale);
            const QImage other = image.mirrored(true, false);
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    ASSERT_NEAR(alphaAt(image, x, y), alphaAt(other, x, y), 4);
            }
        }
    }
}

TEST(SymbolTest, theDrawingKeepsToItsBoxAndGrowsWithTheScale)
{
    for (const char16_t* name : names) {
        const double atOne = coverage(drawn(name));
        for (const double scale : scales) {
            SCOPED_TRACE(testing::Message()
                         << QString::fromUtf16(name).toStdString() << " times " << scale);
            QImage image = drawn(name, usualBox, scale);
            EXPECT_NEAR(coverage(image) / atOne, scale * scale, 0.2 * scale * scale);

            QPainter painter(&image);
            painter.setCompositionMode(QPainter::CompositionMode_Clear);
            painter.fillRect(usualBox, Qt::black);
            painter.end();
            EXPECT_EQ(coverage(image), 0) << "something is outside of the box";
        }
    }
}

TEST(SymbolTest, holesAreHoles)
{
    const QImage cog = drawn(u"gearshape.fill");
    EXPECT_EQ(alphaAt(cog, 11, 11), 0);
    EXPECT_EQ(alphaAt(cog, 12, 12), 0);
    EXPECT_EQ(alphaAt(cog, 8, 12), 255);

    const QImage power = drawn(u"power");
    EXPECT_EQ(alphaAt(power, 11, 15), 0);
    EXPECT_EQ(alphaAt(power, 12, 15), 0);
    EXPECT_EQ(alphaAt(power, 10, 6), 0) << "the circle is open at the top";
    EXPECT_GT(alphaAt(power, 11, 18), 200) << "and closed at the bottom";

    EXPECT_FALSE(symbolPath(u"gearshape").contains(QPointF(8, 8)));
    EXPECT_TRUE(symbolPath(u"gearshape").contains(QPointF(8, 6)));
    EXPECT_FALSE(symbolPath(u"gearshape").contains(QPointF(8, 4.5)));
}

TEST(SymbolTest, oneOfTheTwoArrowPairsPointsInwardAndTheOtherOutward)
{
    constexpr auto inward = u"arrow.down.right.and.arrow.up.left";
    constexpr auto outward = u"arrow.up.left.and.arrow.down.right";
    // The sides of the heads.
    EXPECT_TRUE(coversBoth(inward, 6.2, 3));
    EXPECT_TRUE(coversBoth(inward, 3, 6.2));
    EXPECT_TRUE(coversNeither(outward, 6.2, 3));
    EXPECT_TRUE(coversNeither(outward, 3, 6.2));
    EXPECT_TRUE(coversBoth(outward, 5, 1.8));
    EXPECT_TRUE(coversBoth(outward, 1.8, 5));
    EXPECT_TRUE(coversNeither(inward, 5, 1.8));
    EXPECT_TRUE(coversNeither(inward, 1.8, 5));
    // Both pairs stand on the same diagonal, with shafts.
    for (const auto* pair : {inward, outward}) {
        EXPECT_TRUE(coversBoth(pair, 3.5, 3.5));
        EXPECT_TRUE(coversNeither(pair, 3.5, 12.5));
    }
}

TEST(SymbolTest, playAndSkipPointToTheRight)
{
    for (const auto* name : {u"play.fill", u"forward.end.fill"}) {
        const QPainterPath path = symbolPath(name);
        EXPECT_TRUE(path.contains(QPointF(4.5, 4.5)));
        EXPECT_TRUE(path.contains(QPointF(4.5, 11.5)));
        EXPECT_FALSE(path.contains(QPointF(10, 4.5)));
        EXPECT_FALSE(path.contains(QPointF(10, 11.5)));
        EXPECT_TRUE(path.contains(QPointF(10, 8)));
    }
    EXPECT_TRUE(symbolPath(u"forward.end.fill").contains(QRectF(13.5, 4, 1, 8)));
}

TEST(SymbolTest, theColourIsTheBrushs)
{
    const QColor color(12, 200, 99);
    const QImage image = drawn(u"pause.fill", usualBox, 1, color);
    EXPECT_EQ(image.pixelColor(9, 12), color);

    const QColor translucent(255, 255, 255, 191);
    EXPECT_EQ(drawn(u"pause.fill", usualBox, 1, translucent).pixelColor(9, 12), translucent);
}

TEST(SymbolTest, aGradientLiesWhereThePainterHasIt)
{
    QLinearGradient gradient(0, 4, 0, 20);
    gradient.setColorAt(0, Qt::black);
    gradient.setColorAt(1, Qt::white);
    const QImage image = drawn(u"pause.fill", usualBox, 3, gradient);
    EXPECT_NEAR(image.pixelColor(3 * 9, 3 * 8).red(), 255 / 4.0, 4);
    EXPECT_NEAR(image.pixelColor(3 * 9, 3 * 16).red(), 255 * 3 / 4.0, 4);
}

TEST(SymbolTest, thePainterIsAsBefore)
{
    QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, false);
    drawSymbol(painter, u"power", usualBox, Qt::white);
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}
