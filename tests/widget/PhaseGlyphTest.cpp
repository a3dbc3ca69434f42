#include "widget/PhaseGlyph.h"

#include "widget/ReferenceFigures.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double today = 8.0e8; ///< seconds since 2001

/// Seconds; so that frames are at other points of each period of a motion.
constexpr double oddInterval = 0.041;

constexpr QRgb clear = 0;
constexpr QRgb ground = 0xFF14161F;
constexpr reference::Ink groundInk{0x14 / 255.0, 0x16 / 255.0, 0x1F / 255.0, 1};

QImage picture(QSize pixels, const QRectF& rect, Phase phase, double t, QRgb background = ground,
               double devicePixelRatio = 1)
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(background);
    image.setDevicePixelRatio(devicePixelRatio);
    QPainter painter(&image);
    drawPhaseGlyph(painter, rect, phase, t);
    return image;
}

/// A unit of the design is four pixels.
constexpr int large = 4;
constexpr int largeSide = 100 * large;

QImage largePicture(Phase phase, double t, QRgb background = ground)
{
    return picture({largeSide, largeSide}, QRectF(0, 0, largeSide, largeSide), phase, t,
                   background);
}

/// The pixel of a large picture around a point of the design.
QColor colorAt(const QImage& image, double x, double y)
{
    return image.pixelColor(static_cast<int>(x * large), static_cast<int>(y * large));
}

/// How many units of the design are covered along a part of a row or of a column.
double inkBetween(const QImage& transparent, QPointF from, QPointF to, double fullAlpha)
{
    double sum = 0;
    const auto pixels = static_cast<int>((to - from).manhattanLength() * large);
    const QPointF step = (to - from) / pixels;
    for (int i = 0; i < pixels; ++i) {
        const QPointF at = from + step * (i + 0.5);
        sum += colorAt(transparent, at.x(), at.y()).alphaF() / fullAlpha;
    }
    return sum / large;
}

/// Where two pictures differ.
QRect difference(const QImage& a, const QImage& b)
{
    QRect changed;
    for (int y = 0; y < a.height(); ++y) {
        const auto* lineA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* lineB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        const auto [first, firstB] = std::mismatch(lineA, lineA + a.width(), lineB);
        if (first == lineA + a.width())
            continue;
        int last = a.width() - 1;
        while (lineA[last] == lineB[last])
            --last;
        changed |= QRect(QPoint(static_cast<int>(first - lineA), y), QPoint(last, y));
    }
    return changed;
}

/// How far a picture is from what is expected; in 255ths of a colour component.
struct Deviation
{
    double inside = 0;   ///< the largest in a pixel that no edge runs through
    double onEdge = 0;   ///< the largest of the others
    int farOffEdges = 0; ///< pixels on an edge that deviate by more than `edgeTolerance`

    static constexpr double edgeTolerance = 20;
};

Deviation deviation(const QImage& image, const reference::Picture& expected)
{
    Deviation found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const reference::Picture::Pixel& wanted = expected.at(x, y);
            const double away = std::max({std::abs(qRed(pixel) - 255 * wanted.red),
                                          std::abs(qGreen(pixel) - 255 * wanted.green),
                                          std::abs(qBlue(pixel) - 255 * wanted.blue)});
            double& largest = wanted.onEdge ? found.onEdge : found.inside;
            largest = std::max(largest, away);
            found.farOffEdges += wanted.onEdge && away > Deviation::edgeTolerance;
        }
    }
    return found;
}

void expectAsDesigned(const QImage& image, const reference::Picture& expected)
{
    const Deviation found = deviation(image, expected);
    EXPECT_LE(found.inside, 1.5);
    // Where two lines of a stroke meet, the pixel in the notch between them may be lighter.
    EXPECT_LE(found.farOffEdges, 3);
    EXPECT_LE(found.onEdge, 60);
}

std::string nameOf(const testing::TestParamInfo<Phase>& phase)
{
    return std::array{"sitting", "standing",
                      "pushups"}[static_cast<std::size_t>(rawValue(phase.param))];
}

class PhaseGlyphTest : public testing::TestWithParam<Phase>
{};

INSTANTIATE_TEST_SUITE_P(Phases, PhaseGlyphTest, testing::ValuesIn(allPhases), nameOf);

} // namespace

// --- the whole picture ----------------------------------------------------------------------

TEST_P(PhaseGlyphTest, everyPixelIsAsDesigned)
{
    for (const double t : {0.0, 0.31, 0.62, 0.97, 1.208, 1.55, 2.2, 3.05, today, today + 0.55,
                           today + 1.13, today + 1.9}) {
        SCOPED_TRACE(t);
        reference::Picture expected(largeSide, large, {}, groundInk);
        reference::draw(expected, GetParam(), t);
        expectAsDesigned(largePicture(GetParam(), t), expected);
    }
}

TEST_P(PhaseGlyphTest, itIsAsDesignedBetweenPixelsAndOnEveryScreen)
{
    const QRectF rect(3.3, 2.2, 92, 92);
    for (const double ratio : {1.0, 1.25, 2.0}) {
        SCOPED_TRACE(ratio);
        const int side = static_cast<int>(96 * ratio);
        reference::Picture expected(side, 0.92 * ratio, rect.topLeft() * ratio, groundInk);
        reference::draw(expected, GetParam(), today + 1.2);
        expectAsDesigned(picture({side, side}, rect, GetParam(), today + 1.2, ground, ratio),
                         expected);
    }
}

TEST_P(PhaseGlyphTest, theSameMomentIsTheSamePicture)
{
    EXPECT_EQ(largePicture(GetParam(), today), largePicture(GetParam(), today));
    EXPECT_NE(largePicture(GetParam(), today), largePicture(GetParam(), today + 0.5));
}

TEST_P(PhaseGlyphTest, itStandsInTheTopLeftCornerOfARectangleThatIsNoSquare)
{
    const QImage square = picture({100, 100}, QRectF(0, 0, 100, 100), GetParam(), 1);
    QImage nothing(100, 100, square.format());
    nothing.fill(ground);
    const QImage wide = picture({200, 100}, QRectF(0, 0, 200, 100), GetParam(), 1);
    EXPECT_EQ(wide.copy(0, 0, 100, 100), square);
    EXPECT_EQ(wide.copy(100, 0, 100, 100), nothing);
    const QImage high = picture({100, 200}, QRectF(0, 0, 100, 200), GetParam(), 1);
    EXPECT_EQ(high.copy(0, 0, 100, 100), square);
    EXPECT_EQ(high.copy(0, 100, 100, 100), nothing);
}

TEST_P(PhaseGlyphTest, itFollowsAPainterThatIsMovedAndScaled)
{
    const QImage expected = picture({120, 120}, QRectF(11.5, 7.25, 90, 90), GetParam(), today);
    QImage moved(expected.size(), expected.format());
    moved.fill(ground);
    QPainter painter(&moved);
    painter.translate(2.5, 4.25);
    painter.scale(1.5, 1.5);
    drawPhaseGlyph(painter, QRectF(6, 2, 60, 60), GetParam(), today);
    painter.end();
    EXPECT_EQ(moved, expected);
}

TEST_P(PhaseGlyphTest, inARectangleWithoutRoomItIsNotThere)
{
    const QImage untouched = picture({20, 20}, QRectF(), GetParam(), 1);
    EXPECT_EQ(untouched, picture({20, 20}, QRectF(5, 5, 10, 0), GetParam(), 1));
    EXPECT_EQ(untouched.pixel(10, 10), ground);
}

TEST_P(PhaseGlyphTest, aClippedPartLooksAsItDoesInTheWhole)
{
    constexpr double ratio = 1.5;
    const QRectF rect(2, 3, 92, 92);
    const QImage whole = picture({150, 150}, rect, GetParam(), today, ground, ratio);
    QImage mended(whole.size(), whole.format());
    mended.fill(ground);
    mended.setDevicePixelRatio(ratio);
    QPainter painter(&mended);
    for (const QRect& part : {QRect(0, 0, 41, 100), QRect(41, 0, 59, 57), QRect(41, 57, 59, 43)}) {
        painter.setClipRect(part);
        drawPhaseGlyph(painter, rect, GetParam(), today);
    }
    painter.end();
    EXPECT_EQ(difference(mended, whole), QRect());
}

TEST_P(PhaseGlyphTest, thePaintersStateStaysAsItIs)
{
    QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::red, 3, Qt::DotLine));
    painter.setBrush(Qt::green);
    painter.setTransform(QTransform(0.5, 0, 0, 0.5, 7, 9));
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, false);
    painter.setClipRect(QRect(10, 10, 50, 50));
    painter.setOpacity(0.5);
    drawPhaseGlyph(painter, QRectF(0, 0, 100, 100), GetParam(), today);
    EXPECT_EQ(painter.pen(), QPen(Qt::red, 3, Qt::DotLine));
    EXPECT_EQ(painter.brush(), QBrush(Qt::green));
    EXPECT_EQ(painter.transform(), QTransform(0.5, 0, 0, 0.5, 7, 9));
    EXPECT_EQ(painter.renderHints() & QPainter::Antialiasing, QPainter::RenderHints());
    EXPECT_EQ(painter.clipBoundingRect(), QRectF(10, 10, 50, 50));
    EXPECT_EQ(painter.opacity(), 0.5);
}

// --- motion ---------------------------------------------------------------------------------

TEST_P(PhaseGlyphTest, nothingMovesOutsideTheMotionBoundsAndTheyAreTight)
{
    const QRectF rect(0, 0, largeSide, largeSide);
    const QRect bounds = phaseGlyphMotionBounds(rect, GetParam()).toAlignedRect();
    QRect moved;
    const QImage first = largePicture(GetParam(), 0);
    for (int frame = 1; frame < 1500; ++frame)
        moved |= difference(first, largePicture(GetParam(), frame * oddInterval));
    EXPECT_EQ(moved | bounds, bounds);
    constexpr int loose = large; // one unit
    EXPECT_LT(moved.left() - bounds.left(), loose);
    EXPECT_LT(moved.top() - bounds.top(), loose);
    EXPECT_LT(bounds.right() - moved.right(), loose);
    EXPECT_LT(bounds.bottom() - moved.bottom(), loose);
}

TEST_P(PhaseGlyphTest, nothingMovesOutsideTheMotionBoundsOfSmallFiguresEither)
{
    for (const double ratio : {1.0, 1.25, 2.0}) {
        for (const QRectF& rect : {QRectF(2, 1, 32, 32), QRectF(1.4, 0.7, 92, 97)}) {
            const QSize pixels(static_cast<int>(100 * ratio), static_cast<int>(100 * ratio));
            const QRectF bounds = phaseGlyphMotionBounds(rect, GetParam());
            const QRect inPixels =
                QRectF(bounds.topLeft() * ratio, bounds.size() * ratio).toAlignedRect();
            QRect moved;
            const QImage first = picture(pixels, rect, GetParam(), 0, ground, ratio);
            for (int frame = 1; frame < 750; ++frame) {
                const double t = frame * oddInterval;
                moved |= difference(first, picture(pixels, rect, GetParam(), t, ground, ratio));
            }
            EXPECT_EQ(moved | inPixels, inPixels) << rect.width() << " at " << ratio;
        }
    }
}

TEST_P(PhaseGlyphTest, itMovesInSmallStepsOnAnyDay)
{
    // Along a vertical line through the head: how far it is to the head's top.
    const double x = GetParam() == Phase::sitting ? 29 : GetParam() == Phase::standing ? 26 : 14.5;
    const auto headTop = [&](double t) {
        const QImage image = largePicture(GetParam(), t, clear);
        double y = 12;
        while (colorAt(image, x, y).alpha() < 230)
            y += 1.0 / large;
        return y - colorAt(image, x, y - 1.0 / large).alphaF() / 0.92 / large;
    };
    // The fastest is the head in push-ups, a bit faster than the shoulder.
    const double fastest = 1.15 * 16 * 0.5 * 2.6;
    double last = headTop(today);
    double lowest = last;
    double highest = last;
    for (int frame = 1; frame < 180; ++frame) {
        const double top = headTop(today + frame / 30.0);
        EXPECT_LE(std::abs(top - last), fastest / 30 + 0.1) << frame;
        lowest = std::max(lowest, top);
        highest = std::min(highest, top);
        last = top;
    }
    EXPECT_GT(lowest - highest, 1.5);
}

// --- sitting --------------------------------------------------------------------------------

TEST(SittingGlyphTest, atTimeZeroTheUpperBodyIsInTheMiddleOfItsBob)
{
    const QImage image = largePicture(Phase::sitting, 0, clear);
    const double person = 0.92;
    EXPECT_NEAR(inkBetween(image, {15, 26.1}, {43, 26.1}, person), 14, 0.1);
    EXPECT_NEAR(inkBetween(image, {29.1, 10}, {29.1, 33.25}, person), 14, 0.1);
    // The torso ends 2.5 above (30, 38).
    EXPECT_NEAR(inkBetween(image, {30.1, 33.25}, {30.1, 37}, person), 37 - 35.5, 0.1);
}

TEST(SittingGlyphTest, steamFadesAwayOverTheCup)
{
    // Whatever is above the cup and right of the head.
    const QRect above(45 * large, 0, 55 * large, 38 * large);
    const auto mostAlpha = [&](double t) {
        const QImage image = largePicture(Phase::sitting, t, clear).copy(above);
        int most = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                most = std::max(most, qAlpha(image.pixel(x, y)));
        }
        return most;
    };
    EXPECT_NEAR(mostAlpha(0), 0.55 * 255, 2);
    // Between 1.21 s, when the first has risen by 12.1, and 1.28 s, when the second comes again,
    // there is none.
    EXPECT_NEAR(mostAlpha(1.1), (0.55 - 11 / 22.0) * 255, 1.5);
    EXPECT_GT(mostAlpha(1.19), 0);
    for (const double t : {1.2101, 1.25, 1.2799})
        EXPECT_EQ(mostAlpha(t), 0) << t;
    EXPECT_NEAR(mostAlpha(1.2801), 0.55 * 255, 2);
    // The second alone, until the first comes again over it.
    EXPECT_NEAR(mostAlpha(1.3999), (0.55 - 1.2 / 22) * 255, 2);
    EXPECT_GT(mostAlpha(1.4001), 0.55 * 255 - 2);
}

TEST(SittingGlyphTest, strokesThatCrossShowThroughInTheirOrder)
{
    const QImage image = largePicture(Phase::sitting, 0, clear);
    const auto expectNear = [](const QColor& color, double red, double green, double blue,
                               double alpha) {
        EXPECT_NEAR(color.redF(), red, 0.01);
        EXPECT_NEAR(color.greenF(), green, 0.01);
        EXPECT_NEAR(color.blueF(), blue, 0.01);
        EXPECT_NEAR(color.alphaF(), alpha, 0.005);
    };
    expectNear(colorAt(image, 76, 48), 0.45, 0.55, 1, 0.9);    // desk
    expectNear(colorAt(image, 84, 48), 0.45, 0.55, 1, 0.99);   // desk on its leg
    expectNear(colorAt(image, 67, 46.2), 0.45, 0.55, 1, 0.99); // cup on desk
    expectNear(colorAt(image, 67, 41), 0.45, 0.55, 1, 0.9);    // cup
    expectNear(colorAt(image, 54, 75), 1, 1, 1, 0.92);         // shin
    expectNear(colorAt(image, 54, 62), 1, 1, 1, 0.9936);       // knee
    // The hand lies on the desk: white over the tint.
    const double alpha = 0.92 + 0.08 * 0.9;
    const auto seen = [alpha](double tint) { return (0.92 + 0.08 * 0.9 * tint) / alpha; };
    expectNear(colorAt(image, 54, 48), seen(0.45), seen(0.55), 1, alpha);
}

TEST(SittingGlyphTest, theCupHasRoundedCorners)
{
    const QImage image = largePicture(Phase::sitting, 0, clear);
    EXPECT_NEAR(inkBetween(image, {58, 43.1}, {76, 43.1}, 0.9), 10, 0.1);
    EXPECT_NEAR(inkBetween(image, {67.1, 38}, {67.1, 45}, 0.9), 6, 0.1);
    EXPECT_EQ(colorAt(image, 62.1, 39.1).alpha(), 0);
    EXPECT_EQ(colorAt(image, 71.9, 39.1).alpha(), 0);
    EXPECT_NEAR(colorAt(image, 63.1, 40.1).alphaF(), 0.9, 0.01);
}

// --- standing -------------------------------------------------------------------------------

TEST(StandingGlyphTest, withoutLeanTheLegIsVerticalOnTheFoot)
{
    // s1 is 0 here; a quarter of its period later the hip is furthest aside.
    const QImage upright = largePicture(Phase::standing, pi / 1.2, clear);
    const auto middle = [](const QImage& image, double y) {
        double left = 15;
        while (colorAt(image, left, y).alphaF() < 0.46F)
            left += 1.0 / large;
        return left + inkBetween(image, {left, y}, {40, y}, 0.92) / 2;
    };
    for (const double y : {62.0, 70.0, 80.0})
        EXPECT_NEAR(middle(upright, y), 26, 0.15) << y;
    const QImage leaning = largePicture(Phase::standing, pi / 2.4, clear);
    EXPECT_NEAR(middle(leaning, 62), 26 + 0.03 * 24, 0.15);
    EXPECT_NEAR(middle(leaning, 80), 26 + 0.03 * 6, 0.15);
}

TEST(StandingGlyphTest, sparksGrowAndShine)
{
    // The first spark at its largest and at its smallest.
    const QImage bright = largePicture(Phase::standing, pi / 2 / 2.8, clear);
    EXPECT_NEAR(colorAt(bright, 10, 18).alphaF(), 0.85, 0.005);
    EXPECT_NEAR(inkBetween(bright, {5, 18}, {15, 18}, 0.85), 5.6, 0.1);
    const QImage faint = largePicture(Phase::standing, 3 * pi / 2 / 2.8, clear);
    EXPECT_NEAR(colorAt(faint, 10, 18).alphaF(), 0.25, 0.005);
    EXPECT_NEAR(inkBetween(faint, {5, 18}, {15, 18}, 0.25), 2.8, 0.1);
    EXPECT_NEAR(colorAt(bright, 10, 18).greenF(), 0.82, 0.01);
    EXPECT_NEAR(colorAt(bright, 10, 18).blueF(), 0.45, 0.01);
}

// --- push-ups -------------------------------------------------------------------------------

namespace {

/// The moment on the way down at which the push-up is at `p`: from 0, the top, to 1.
double momentAt(double p)
{
    return std::acos(1 - 2 * p) / 2.6;
}

} // namespace

TEST(PushupsGlyphTest, sweatComesOnlyNearTheBottom)
{
    const auto drop = [](double p) {
        return colorAt(largePicture(Phase::pushups, momentAt(p), clear), 12, 52);
    };
    EXPECT_EQ(drop(0.8).alpha(), 0);
    EXPECT_EQ(drop(0.8199).alpha(), 0);
    EXPECT_NEAR(drop(0.85).alphaF(), 0.7 * 0.03 / 0.18, 0.005);
    const QImage bottom = largePicture(Phase::pushups, momentAt(1), clear);
    for (const QPointF center : {QPointF(12, 52), QPointF(20, 46)}) {
        const QColor color = colorAt(bottom, center.x(), center.y());
        EXPECT_NEAR(color.alphaF(), 0.7, 0.005);
        EXPECT_NEAR(color.greenF(), 0.55, 0.01);
        EXPECT_NEAR(inkBetween(bottom, center - QPointF(4, 0), center + QPointF(4, 0), 0.7), 6,
                    0.1);
    }
}

TEST(PushupsGlyphTest, theHeadIsInLineWithTheBack)
{
    for (const double p : {0.0, 1.0}) {
        const QImage image = largePicture(Phase::pushups, momentAt(p), clear);
        const double shoulder = p == 0 ? 50 : 66;
        const double hip = p == 0 ? 62.6 : 73.4;
        const double length = std::hypot(30, shoulder - hip);
        const QPointF center(26 - 12 * 30 / length, shoulder + 12 * (shoulder - hip) / length);
        for (const QPointF direction : {QPointF(-1, 0), QPointF(0, -1), QPointF(-0.6, 0.8)}) {
            const QPointF inside = center + 6.1 * direction;
            const QPointF outside = center + 6.9 * direction;
            EXPECT_NEAR(colorAt(image, inside.x(), inside.y()).alphaF(), 0.92, 0.01);
            EXPECT_EQ(colorAt(image, outside.x(), outside.y()).alpha(), 0);
        }
    }
}
