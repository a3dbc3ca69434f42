#include "panel/StatTile.h"

#include "support/Pixels.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace {

constexpr QColor orange(200, 100, 0);

/// The tile as it is seen at the width that four of them have in the panel.
QImage shown(const QString& value)
{
    StatTile tile(QStringLiteral("Seated"), QStringLiteral("Seated"), orange);
    tile.setValue(value);
    tile.resize(79, tile.sizeHint().height());
    return tile.grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// What a tenth of the colour makes of the window.
QColor groundColor()
{
    const QColor window = QApplication::palette().color(QPalette::Window);
    const auto mixed = [](int below, int above) { return qRound(below + 0.1 * (above - below)); };
    return {mixed(window.red(), orange.red()), mixed(window.green(), orange.green()),
            mixed(window.blue(), orange.blue())};
}

bool alike(const QColor& a, const QColor& b)
{
    return difference(levelsOf(a.rgb()), levelsOf(b.rgb())) <= 1;
}

/// The box of the value's figures.
QRectF figures(const QImage& tile)
{
    return boxOf(tile, [&](int x, int y) {
        return y < tile.height() * 0.6 && qBlue(pixelAt(tile, x, y)) < groundColor().blue() - 20 &&
               x > 0 && x < tile.width() - 1;
    });
}

} // namespace

TEST(StatTileTest, theGroundIsATenthOfTheColour)
{
    const QImage tile = shown(QString());
    for (const QPoint at : {QPoint(39, 2), QPoint(2, 30), QPoint(76, 30), QPoint(39, 20)})
        EXPECT_TRUE(alike(tile.pixelColor(at), groundColor())) << at.x() << ", " << at.y();
    EXPECT_TRUE(alike(tile.pixelColor(0, 0), QApplication::palette().color(QPalette::Window)))
        << "beyond the round corner";
}

TEST(StatTileTest, theValueHasTheColourItself)
{
    const QImage tile = shown(QStringLiteral("40m"));
    int exact = 0;
    for (int y = 0; y < tile.height(); ++y) {
        for (int x = 0; x < tile.width(); ++x)
            exact += tile.pixelColor(x, y) == orange;
    }
    EXPECT_GT(exact, 10);
}

TEST(StatTileTest, theValueStandsInTheMiddle)
{
    for (const char* value : {"0m", "40m", "12h 5m"}) {
        const QRectF box = figures(shown(QString::fromLatin1(value)));
        ASSERT_GT(box.width(), 0) << value;
        EXPECT_NEAR(box.center().x(), 79 / 2.0, 2) << value;
    }
}

TEST(StatTileTest, aLongValueIsMadeSmallerAndStaysWithin)
{
    const double height = figures(shown(QStringLiteral("0"))).height();
    for (const char* value : {"1234h 59m", "123456789h 59m", "9223372036854775807"}) {
        const QRectF box = figures(shown(QString::fromLatin1(value)));
        EXPECT_GT(box.width(), 50) << value;
        EXPECT_GE(box.left(), 4) << value;
        EXPECT_LE(box.right(), 79 - 4) << value;
        EXPECT_GE(box.height(), 0.5 * height) << value;
    }
}

TEST(StatTileTest, aShortValueKeepsItsSize)
{
    EXPECT_EQ(figures(shown(QStringLiteral("808"))).height(),
              figures(shown(QStringLiteral("80808"))).height());
}

TEST(StatTileTest, itSaysWhatItShows)
{
    StatTile tile(QStringLiteral("Seated"), QStringLiteral("Seated"), orange);
    tile.setValue(QStringLiteral("40m"));
    EXPECT_EQ(tile.value(), QStringLiteral("40m"));
    EXPECT_EQ(tile.accessibleName(), QStringLiteral("Seated 40m"));
}
