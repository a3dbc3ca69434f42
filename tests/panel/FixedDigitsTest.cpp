#include "panel/FixedDigits.h"

#include "panel/PanelStyle.h"
#include "support/Pixels.h"

#include <QFontMetricsF>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

std::vector<QFont> fonts()
{
    QFont italic(QStringLiteral("DejaVu Serif"));
    italic.setPixelSize(17);
    italic.setItalic(true);
    std::vector<QFont> fonts{panelStyle::font(12), panelStyle::roundedFont(17, QFont::Bold),
                             italic};
    for (const char* family : {"DejaVu Sans", "Quicksand", "Nimbus Roman", "monospace"}) {
        fonts.emplace_back(QString::fromLatin1(family));
        fonts.back().setPixelSize(17);
    }
    return fonts;
}

std::string nameOf(const QFont& font)
{
    return font.toString().toStdString();
}

double widthOf(const char* text, const QFont& font)
{
    return fixedDigits::width(QString::fromUtf8(text), font);
}

/// The text drawn 50 pixels from the left edge.
QImage drawn(const QString& text, const QFont& font)
{
    return painted({300, 60}, 1, [&](QPainter& painter) {
        painter.setPen(Qt::black);
        fixedDigits::draw(painter, {50, 40}, text, font);
    });
}

} // namespace

TEST(FixedDigitsTest, allDigitsAreEquallyWide)
{
    for (const QFont& font : fonts()) {
        const double room = widthOf("0", font);
        EXPECT_GT(room, 0) << nameOf(font);
        for (char digit = '1'; digit <= '9'; ++digit)
            EXPECT_DOUBLE_EQ(widthOf(std::string(1, digit).c_str(), font), room) << nameOf(font);
        EXPECT_DOUBLE_EQ(widthOf("111", font), widthOf("999", font)) << nameOf(font);
        EXPECT_DOUBLE_EQ(widthOf("1h 11m", font), widthOf("9h 58m", font)) << nameOf(font);
    }
}

TEST(FixedDigitsTest, widthsAddUp)
{
    for (const QFont& font : fonts()) {
        const double digit = widthOf("0", font);
        EXPECT_NEAR(widthOf("1234567", font), 7 * digit, 1e-9) << nameOf(font);
        EXPECT_NEAR(widthOf("40 min", font),
                    2 * digit + QFontMetricsF(font).horizontalAdvance(QStringLiteral(" min")), 1e-9)
            << nameOf(font);
        EXPECT_NEAR(widthOf("1h 5m", font),
                    widthOf("1", font) + widthOf("h ", font) + widthOf("5", font) +
                        widthOf("m", font),
                    1e-9)
            << nameOf(font);
    }
    EXPECT_EQ(widthOf("", panelStyle::font(12)), 0);
}

TEST(FixedDigitsTest, otherLettersHaveTheirOwnWidth)
{
    for (const QFont& font : fonts()) {
        EXPECT_DOUBLE_EQ(widthOf("No digit", font),
                         QFontMetricsF(font).horizontalAdvance(QStringLiteral("No digit")));
    }
}

TEST(FixedDigitsTest, whatIsDrawnLiesWithinTheWidth)
{
    for (const QFont& font : fonts()) {
        for (const char* text : {"111", "999", "0", "7", "40 min", "123h 45m", "-300"}) {
            const QString words = QString::fromLatin1(text);
            const QRectF ink = inkBox(drawn(words, font));
            ASSERT_GT(ink.width(), 0);
            // A letter may touch the pixel beside its room, and a slanted one leans over it.
            const double leaning = std::max(0.0, -QFontMetricsF(font).rightBearing(words.back()));
            EXPECT_GE(ink.left(), 50 - 1) << text << ' ' << nameOf(font);
            EXPECT_LE(ink.right(), 50 + fixedDigits::width(words, font) + 1 + leaning)
                << text << ' ' << nameOf(font);
        }
    }
}

TEST(FixedDigitsTest, whatFollowsADigitStaysWhenTheDigitChanges)
{
    for (const QFont& font : fonts()) {
        const int from = 50 + static_cast<int>(std::ceil(widthOf("0", font))) + 2;
        const QRect rest(from, 0, 300 - from, 60);
        EXPECT_EQ(drawn(QStringLiteral("1   min"), font).copy(rest),
                  drawn(QStringLiteral("8   min"), font).copy(rest))
            << nameOf(font);
    }
}

TEST(FixedDigitsTest, everyDigitIsDrawn)
{
    for (const QFont& font : fonts()) {
        const double room = widthOf("0", font);
        const QImage digits = drawn(QStringLiteral("0123456789"), font);
        for (int i = 0; i < 10; ++i) {
            const QRect place(qRound(50 + i * room) + 1, 0, qRound(room) - 2, 60);
            EXPECT_GT(inkBox(digits.copy(place)).width(), 0) << i << ' ' << nameOf(font);
        }
    }
}
