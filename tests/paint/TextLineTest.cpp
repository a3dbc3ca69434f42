#include "paint/TextLine.h"

#include "support/Pixels.h"

#include <QFontDatabase>

#include <gtest/gtest.h>

namespace {

constexpr TextStyle plainStyle{.size = 20, .weight = QFont::DemiBold};
constexpr TextStyle countdown{.size = 44, .weight = QFont::DemiBold, .fixedDigits = true};

constexpr QSizeF size(240, 80);
constexpr QPointF origin(10, 60);

QImage pictureOf(const TextLine& line, double scale = 1, const QBrush& brush = Qt::white)
{
    return painted(size, scale, [&](QPainter& painter) { line.draw(painter, origin, brush); });
}

QImage pictureOf(const QString& text, const TextStyle& style, double scale = 1)
{
    return pictureOf(TextLine(text, style), scale);
}

/// How much is covered, in logical pixels.
double inkOf(const QImage& image)
{
    return meanLevels(image, image.rect())[3] / 255 * size.width() * size.height();
}

} // namespace

TEST(TextLineTest, trackingIsBetweenTheLettersAndNotBehindTheLast)
{
    const QString text = QStringLiteral("DEEP WORK");
    TextStyle style{.size = 12, .weight = QFont::Bold};
    const double tight = TextLine(text, style).width();
    style.tracking = 2.2;
    EXPECT_NEAR(TextLine(text, style).width(), tight + 8 * 2.2, 9 / 64.0)
        << "letters stand on 64ths of a pixel";
    EXPECT_NEAR(TextLine(QStringLiteral("D"), style).width(),
                TextLine(QStringLiteral("D"), {.size = 12, .weight = QFont::Bold}).width(),
                1 / 64.0);
}

TEST(TextLineTest, theInkIsWithinTheWidthAndTheMetrics)
{
    const TextLine line(QStringLiteral("Ågjx Done!"), plainStyle);
    const QRectF ink = inkBox(pictureOf(line, 2));
    EXPECT_NEAR(ink.left(), origin.x(), 3);
    EXPECT_NEAR(ink.right(), origin.x() + line.width(), 3);
    const LineMetrics metrics = metricsOf(plainStyle);
    EXPECT_GE(ink.top(), origin.y() - metrics.ascent - 1);
    EXPECT_LE(ink.bottom(), origin.y() + metrics.descent + 1);
    EXPECT_GT(ink.bottom(), origin.y() + 2) << "descenders are below the baseline";
    EXPECT_EQ(metrics.height(), metrics.ascent + metrics.descent);
}

TEST(TextLineTest, allCountdownsOfTheSameLengthAreEquallyWide)
{
    const double width = TextLine(QStringLiteral("00:00"), countdown).width();
    for (const char* text : {"11:11", "40:00", "39:59", "18:47", "77:26"})
        EXPECT_NEAR(TextLine(QLatin1String(text), countdown).width(), width, 1e-9) << text;
    EXPECT_LT(TextLine(QStringLiteral("0:00"), countdown).width(), width);
}

TEST(TextLineTest, aDigitThatChangesMovesNoOther)
{
    const TextLine first(QStringLiteral("18:47"), countdown);
    const QImage before = pictureOf(first, 2);
    const double digit = first.width() - TextLine(QStringLiteral("8:47"), countdown).width();
    for (const char* text : {"18:40", "18:41", "18:48", "18:44"}) {
        const QRectF changed = changedBox(before, pictureOf(QLatin1String(text), countdown, 2));
        EXPECT_GT(changed.left(), origin.x() + first.width() - digit - 1) << text;
        EXPECT_FALSE(changed.isEmpty());
    }
    const QRectF changed = changedBox(before, pictureOf(QStringLiteral("28:47"), countdown, 2));
    EXPECT_LT(changed.right(), origin.x() + digit + 1);
}

TEST(TextLineTest, aCountdownIsEvenlySpaced)
{
    // The ink of neighbouring digits never touches, and leaves no hole as wide as a digit.
    const double digit = TextLine(QStringLiteral("0"), countdown).width();
    for (const char* text : {"00", "11", "44", "17", "71", "80"}) {
        const QImage image = pictureOf(QLatin1String(text), countdown, 2);
        const QRectF ink = inkBox(image);
        int empty = 0;
        for (int x = int(ink.left() * 2); x < int(ink.right() * 2); ++x)
            empty += inkBox(image.copy(x, 0, 1, image.height())).isEmpty();
        EXPECT_GT(empty, 0) << text;
        EXPECT_LT(empty, digit * 2 * 0.8) << text;
    }
}

TEST(TextLineTest, theColonStandsBetweenTheDigitsInBothDirections)
{
    const QImage digits = pictureOf(QStringLiteral("00"), countdown, 2);
    const QImage colon = pictureOf(QStringLiteral(":"), countdown, 2);
    EXPECT_NEAR(inkBox(colon).center().y(), inkBox(digits).center().y(), 1);
    EXPECT_NEAR(inkBox(colon).center().x(),
                origin.x() + TextLine(QStringLiteral(":"), countdown).width() / 2, 0.5);
    EXPECT_GT(inkBox(colon).top(), inkBox(digits).top());
}

TEST(TextLineTest, aLineThatFitsIsLeftAlone)
{
    TextLine line(QStringLiteral("Done!"), plainStyle);
    const QImage before = pictureOf(line);
    const double width = line.width();
    line.fitInto(width + 0.01);
    EXPECT_EQ(line.width(), width);
    EXPECT_EQ(pictureOf(line), before);
}

TEST(TextLineTest, aLineThatIsTooWideIsMadeSmallerInBothDirections)
{
    for (const TextStyle& style : {plainStyle, countdown}) {
        TextLine line(QStringLiteral("10000000:00"), style);
        const QRectF before = inkBox(pictureOf(line, 2));
        line.fitInto(line.width() / 2);
        const QRectF after = inkBox(pictureOf(line, 2));
        EXPECT_LE(after.right(), origin.x() + line.width() + 0.5);
        EXPECT_NEAR(after.height(), before.height() / 2, 1);
        EXPECT_NEAR(after.bottom(), origin.y(), 2) << "the baseline stays";
    }
}

TEST(TextLineTest, aLineLooksTheSameAtEveryScale)
{
    const TextLine line(QStringLiteral("Drop and give me 50"), {.size = 12});
    const QImage once = pictureOf(line, 1);
    for (const double scale : {1.5, 2.0, 3.0}) {
        const QImage larger = pictureOf(line, scale);
        EXPECT_NEAR(inkOf(larger), inkOf(once), inkOf(once) * 0.04) << scale;
        EXPECT_NEAR(inkBox(larger).left(), inkBox(once).left(), 1) << scale;
        EXPECT_NEAR(inkBox(larger).right(), inkBox(once).right(), 1) << scale;
    }
}

TEST(TextLineTest, theSizeIsInPixels)
{
    const QString text = QStringLiteral("H");
    const double small = inkBox(pictureOf(text, {.size = 20}, 2)).height();
    const double large = inkBox(pictureOf(text, {.size = 40}, 2)).height();
    EXPECT_NEAR(small, 14, 2) << "a capital letter is some 0.7 of the size";
    EXPECT_NEAR(large, 2 * small, 1);
}

TEST(TextLineTest, heavierWeightsAreHeavier)
{
    const auto inkAt = [](QFont::Weight weight, TextStyle::Design design) {
        return inkOf(pictureOf(QStringLiteral("Hamburg"),
                               {.size = 30, .weight = weight, .design = design}, 2));
    };
    using Design = TextStyle::Design;
    EXPECT_GT(inkAt(QFont::DemiBold, Design::rounded), 1.1 * inkAt(QFont::Medium, Design::rounded));
    EXPECT_GE(inkAt(QFont::Bold, Design::rounded), inkAt(QFont::DemiBold, Design::rounded));
    if (!QFontDatabase::hasFamily(QStringLiteral("Quicksand Medium")))
        GTEST_SKIP() << "no medium is installed";
    EXPECT_GT(inkAt(QFont::Medium, Design::rounded), 1.05 * inkAt(QFont::Normal, Design::rounded));
}

TEST(TextLineTest, theRoundedDesignIsAFontOfItsOwn)
{
    if (!QFontDatabase::hasFamily(QStringLiteral("Quicksand")))
        GTEST_SKIP() << "no rounded font is installed";
    const QString text = QStringLiteral("reps");
    EXPECT_NE(pictureOf(text, {.size = 15, .design = TextStyle::Design::plain}),
              pictureOf(text, {.size = 15, .design = TextStyle::Design::rounded}));
}

TEST(TextLineTest, aLineTakesTheBrushItIsGiven)
{
    QLinearGradient gradient(0, 20, 0, 60);
    gradient.setColorAt(0, Qt::red);
    gradient.setColorAt(1, Qt::blue);
    const QImage image = pictureOf(
        TextLine(QStringLiteral("HHH"), {.size = 50, .weight = QFont::Bold}), 2, gradient);
    const QRectF ink = inkBox(image);
    const auto rowOf = [&](double y) {
        return meanLevels(image, QRect(0, int(y * 2), image.width(), 1));
    };
    EXPECT_GT(rowOf(ink.top() + 2)[0], rowOf(ink.bottom() - 3)[0]);
    EXPECT_LT(rowOf(ink.top() + 2)[2], rowOf(ink.bottom() - 3)[2]);
}
