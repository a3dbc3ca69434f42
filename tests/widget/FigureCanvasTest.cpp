#include "widget/FigureCanvas.h"

#include <QPainter>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <numbers>

namespace {

constexpr Color halfWhite{1, 1, 1, 0.5};
constexpr int halfAlpha = 128;

/// What is drawn on 40 by 40 pixels, each of them one unit.
QImage picture(const std::function<void(FigureCanvas&)>& draw,
               const QRectF& exposed = QRectF(0, 0, 40, 40))
{
    QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    QPainter painter(&image);
    FigureCanvas canvas(painter, {}, 1, exposed);
    draw(canvas);
    canvas.drawOnto(painter);
    return image;
}

/// The sum of all pixels' opacities.
double inkOf(const QImage& image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y)) / 255.0;
    }
    return sum;
}

} // namespace

TEST(FigureCanvasTest, aShapeHasAsMuchInkAsItsAreaWhereverItLies)
{
    for (const double shift : {0.0, 0.2, 0.5, 0.7}) {
        const QPointF center(20 + shift, 20 + 2 * shift);
        for (const double radius : {0.45, 0.9, 4.3, 12.0}) {
            const double area = std::numbers::pi * radius * radius;
            EXPECT_NEAR(inkOf(picture([&](auto& it) { it.disc(center, radius, halfWhite); })),
                        0.5 * area, 0.02 * area + 0.05)
                << radius;
        }
        for (const double width : {0.3, 0.8, 1.0, 5.0}) {
            const QPointF half(9, 2.5);
            const double area =
                width * 2 * std::hypot(9, 2.5) + std::numbers::pi * width * width / 4;
            EXPECT_NEAR(inkOf(picture([&](auto& it) {
                            it.line(center - half, center + half, width, halfWhite);
                        })),
                        0.5 * area, 0.05 * area)
                << width;
        }
    }
}

TEST(FigureCanvasTest, aStrokeIsOneShapeAndTwoStrokesAreTwo)
{
    const std::array corner{QPointF(5, 20.5), QPointF(20.5, 20.5), QPointF(20.5, 5)};
    const QImage one = picture([&](auto& it) { it.stroke(corner, 5, halfWhite); });
    EXPECT_EQ(qAlpha(one.pixel(20, 20)), halfAlpha);
    const QImage two = picture([&](auto& it) {
        it.line(corner[0], corner[1], 5, halfWhite);
        it.line(corner[1], corner[2], 5, halfWhite);
    });
    EXPECT_NEAR(qAlpha(two.pixel(20, 20)), 0.75 * 255, 1);
    EXPECT_EQ(qAlpha(two.pixel(10, 20)), halfAlpha);
}

TEST(FigureCanvasTest, aLineIsTheSameInBothDirections)
{
    for (const QPointF to : {QPointF(33, 9), QPointF(8, 35), QPointF(9, 9.5), QPointF(10, 8)}) {
        EXPECT_EQ(picture([&](auto& it) {
                      it.line({9, 8}, to, 3.5, halfWhite);
                  }),
                  picture([&](auto& it) {
                      it.line(to, {9, 8}, 3.5, halfWhite);
                  }));
    }
}

TEST(FigureCanvasTest, onlyWhatIsExposedIsDrawn)
{
    const auto draw = [](FigureCanvas& canvas) {
        canvas.line({-30, 12}, {70, 30}, 4, halfWhite);
        canvas.line({20, -50}, {26, 90}, 4, halfWhite);
        canvas.disc({20, 20}, 9, halfWhite);
        canvas.disc({50, 20}, 9, halfWhite);
        canvas.disc({-9, 20}, 9, halfWhite);
        canvas.disc({20, 60}, 9, halfWhite);
        canvas.line({-5, -5}, {-5, 45}, 4, halfWhite);
        QPainterPath square;
        square.addRect(10, 10, 20, 20);
        canvas.fill(square, halfWhite);
    };
    const QRect part(13, 17, 11, 8);
    const QImage whole = picture(draw);
    const QImage exposed = picture(draw, part);
    EXPECT_EQ(exposed.copy(part), whole.copy(part));
    EXPECT_NEAR(inkOf(exposed), inkOf(exposed.copy(part)), 1e-9);
}
