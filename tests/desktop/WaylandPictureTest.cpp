// What the widget looks like on a Wayland compositor with a layer shell, pixel by pixel.

#include "Launcher.h"
#include "Sway.h"
#include "TrayHost.h"
#include "WidgetPlaces.h"
#include "World.h"
#include "support/Pixels.h"
#include "support/Waiting.h"
#include "widget/WidgetPainter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>

namespace {

const QColor desktopColor(0x33, 0x55, 0x77);

/// Compositors round in their own way when they lay the picture over the desktop.
constexpr int roundingError = 2;

/// Parts of the widget that stay the same while it counts, beside the glow of the arc; in logical
/// pixels.
constexpr std::array stillOfFull{QRect(0, 0, 250, 28), QRect(0, 252, 250, 68)};
constexpr std::array stillOfCompact{QRect(90, 0, 126, 30), QRect(90, 62, 126, 14)};

QSize sizeOf(const WidgetModel& model)
{
    return model.compact ? compactSize : fullSize;
}

/// The widget as it should be seen.
QImage painted(const WidgetModel& model, double scale, QSize pixels)
{
    QImage widget(pixels, QImage::Format_ARGB32_Premultiplied);
    widget.setDevicePixelRatio(scale);
    widget.fill(0);
    const QSizeF size = sizeOf(model);
    QPainter painter(&widget);
    paintWidget(painter, WidgetMotion(model, Instant()), Instant(), size, QRectF({}, size));
    painter.end();

    QImage seen(pixels, QImage::Format_RGB32);
    seen.fill(desktopColor);
    widget.setDevicePixelRatio(1);
    QPainter(&seen).drawImage(0, 0, widget);
    return seen;
}

int difference(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

/// The largest difference of a component in these parts.
int difference(const QImage& seen, const QImage& painted, std::span<const QRect> parts,
               double scale)
{
    int most = 0;
    for (const QRect& part : parts) {
        const QRect pixels =
            QTransform::fromScale(scale, scale).mapRect(QRectF(part)).toAlignedRect() & seen.rect();
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                most = std::max(most, difference(seen.pixel(x, y), painted.pixel(x, y)));
        }
    }
    return most;
}

} // namespace

class WaylandPictureTest : public testing::Test
{
protected:
    void startVantora(const QByteArray& swaySettings = {})
    {
        sway.emplace(world, swaySettings);
        world.startVantora();
    }

    /// The picture of the widget, whose box has about the size that it should have at this scale;
    /// null while there is none.
    QImage widgetAt(double scale)
    {
        const QSizeF size = QSizeF(sizeOf(model)) * scale;
        for (const QRect& shape : sway->shapes()) {
            if (std::abs(shape.width() - size.width()) < 1 && shape.height() == size.height())
                return sway->picture().copy(shape);
        }
        return {};
    }

    /// Whether it comes to look like the model.
    testing::AssertionResult isExactAt(double scale)
    {
        const auto parts = model.compact ? std::span<const QRect>(stillOfCompact) : stillOfFull;
        int last = 255;
        if (waitUntil([&] {
                const QImage seen = widgetAt(scale);
                if (!seen.isNull())
                    last = difference(seen, painted(model, scale, seen.size()), parts, scale);
                return last <= roundingError;
            }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "at scale " << scale << " it differs by " << last;
    }

    static WidgetModel countdown()
    {
        WidgetModel model;
        model.timeString = QStringLiteral("39:59");
        model.progress = 1;
        return model;
    }

    WidgetModel model = countdown();
    World world;
    std::optional<Sway> sway;
};

TEST_F(WaylandPictureTest, itIsExactAtEveryScaleOfItsScreen)
{
    startVantora(QByteArrayLiteral("output HEADLESS-1 resolution 1680x1050 scale 1.5\n"));
    EXPECT_TRUE(isExactAt(1.5));
    for (const double scale : {2.0, 1.25, 1.0, 1.75}) {
        sway->command(QStringLiteral("output HEADLESS-1 scale %1").arg(scale));
        EXPECT_TRUE(isExactAt(scale));
    }
}

TEST_F(WaylandPictureTest, itIsExactInBothFormsAndBackFromHiding)
{
    startVantora(QByteArrayLiteral("output HEADLESS-1 resolution 1680x1050 scale 1.5\n"));
    ASSERT_TRUE(isExactAt(1.5));
    sway->setLayoutSize({1120, 700});
    const QPoint place(1120 - 250 - 24, 24);
    const QPoint away(100, 400);
    sway->click(place + buttonAt(2, 6, false));
    sway->moveTo(away);
    model.compact = true;
    EXPECT_TRUE(isExactAt(1.5));
    ASSERT_TRUE(act(world, QStringLiteral("toggle-widget")));
    ASSERT_TRUE(waitUntil([this] { return widgetAt(1.5).isNull(); }));
    ASSERT_TRUE(act(world, QStringLiteral("toggle-widget")));
    EXPECT_TRUE(isExactAt(1.5));
    sway->click(place + buttonAt(2, 6, true));
    sway->moveTo(away);
    model.compact = false;
    EXPECT_TRUE(isExactAt(1.5));
}

TEST_F(WaylandPictureTest, itIsLargerWhereTheUserWantsAllOfQtLarger)
{
    world.setVariable(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("1.5"));
    startVantora();
    EXPECT_TRUE(isExactAt(1.5));
    const auto box = [this] {
        const QList<QRect> shapes = sway->shapes();
        const auto found = std::ranges::find(shapes, QSize(375, 480), &QRect::size);
        return found == shapes.end() ? QRect() : *found;
    };
    const QPoint first = box().topLeft();
    EXPECT_EQ(first, QPoint(1280 - 375 - 36, 36));
    const QPoint card(60, 40);
    sway->moveTo(first + card);
    sway->press();
    sway->moveTo(first + card + QPoint(-100, 50));
    sway->moveTo(first + card + QPoint(-300, 150));
    sway->release();
    EXPECT_TRUE(waitUntil([&] { return box().topLeft() == first + QPoint(-300, 150); }));
}

TEST_F(WaylandPictureTest, itsButtonsComeAndGoWithThePointer)
{
    startVantora();
    ASSERT_TRUE(isExactAt(1));
    const QPoint place(1280 - 250 - 24, 24);
    const QPoint away(300, 700);
    const auto showsButton = [&](int number) {
        const QRect button(buttonAt(number, 6, model.compact) - QPoint(8, 8), QSize(17, 17));
        const QImage seen = widgetAt(1).copy(button);
        const QImage empty = painted(model, 1, sizeOf(model)).copy(button);
        return difference(seen, empty, std::array{seen.rect()}, 1) > 60;
    };
    const auto showsAllButtons = [&] {
        const std::array numbers{0, 1, 2, 3, 4, 5};
        return std::ranges::all_of(numbers, showsButton);
    };
    for (const bool compact : {false, true}) {
        model.compact = compact;
        EXPECT_TRUE(isExactAt(1));
        sway->moveTo(place + buttonAt(4, 6, compact));
        EXPECT_TRUE(waitUntil(showsAllButtons));
        sway->moveTo(away);
        EXPECT_TRUE(waitUntil([&] { return !showsAllButtons(); }));
        EXPECT_TRUE(isExactAt(1));
        sway->click(place + buttonAt(2, 6, compact));
        sway->moveTo(away);
    }
}

TEST_F(WaylandPictureTest, theButtonsGoWhenTheSmallerFormLeavesThePointerOutside)
{
    startVantora();
    ASSERT_TRUE(isExactAt(1));
    sway->click(QPoint(1280 - 250 - 24, 24) + buttonAt(2, 6, false));
    model.compact = true;
    EXPECT_TRUE(isExactAt(1));
}

TEST_F(WaylandPictureTest, itIsRightAgainWhenTheCompositorHasNotAnsweredForLong)
{
    TrayHost host(world.busAddress());
    host.start();
    startVantora();
    ASSERT_TRUE(isExactAt(1));
    sway->stop();
    QStringList titles;
    ASSERT_TRUE(waitUntil([&] {
        if (!titles.contains(host.title()))
            titles.append(host.title());
        return titles.size() == 4;
    }));
    EXPECT_TRUE(act(world, QStringLiteral("pause")));
    sway->goOn();
    model.state = TimerEngine::State::paused;
    EXPECT_TRUE(isExactAt(1));
}
