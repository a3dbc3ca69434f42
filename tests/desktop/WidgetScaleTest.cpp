// The widget on screens with more than one pixel to a logical one.

#include "DesktopTest.h"
#include "WidgetPlaces.h"
#include "support/SettingsData.h"

#include <cmath>

class WidgetScaleTest : public DesktopTest, public testing::WithParamInterface<double>
{
protected:
    xcb_window_t window() const { return desktop.shown(QStringLiteral("Vantora")).value(0); }

    /// Whether the window gets this size in logical pixels, to the last device pixel.
    bool becomes(QSize size) const
    {
        const QSizeF wanted = QSizeF(size) * GetParam();
        return waitUntil([&] {
            const QSize now = desktop.geometry(window()).size();
            return std::abs(now.width() - wanted.width()) <= 0.5 &&
                   std::abs(now.height() - wanted.height()) <= 0.5;
        });
    }

    QPoint onScreen(QPoint place) const
    {
        return desktop.geometry(window()).topLeft() + (QPointF(place) * GetParam()).toPoint();
    }

    int gray(QPoint place) const
    {
        return qGray(desktop.picture(QRect(onScreen(place), QSize(1, 1))).pixel(0, 0));
    }

    /// Waits for the button, which may still be on its way to its place.
    void clickFormButton(bool compact) const
    {
        const QPoint button = buttonAt(2, 6, compact);
        desktop.moveTo(onScreen(button));
        EXPECT_TRUE(waitUntil(
            [&] { return gray(button - QPoint(10, 0)) > gray(gapAfter(2, 6, compact)) + 10; }));
        desktop.click(onScreen(button));
    }
};

TEST_P(WidgetScaleTest, afterEachChangeOfFormItsSizeIsExact)
{
    world.setVariable(QStringLiteral("QT_SCALE_FACTOR"), QString::number(GetParam()));
    world.startVantora();
    ASSERT_TRUE(waitUntil([this] { return window() != 0; }));
    ASSERT_TRUE(becomes(fullSize));
    for (const bool toCompact : {true, false, true, false}) {
        clickFormButton(!toCompact);
        ASSERT_TRUE(becomes(toCompact ? compactSize : fullSize))
            << desktop.geometry(window()).width() << " x " << desktop.geometry(window()).height();
    }
}

using DesktopScaleTest = DesktopTest;

// As GNOME does for the programs on its XWayland.
TEST_F(DesktopScaleTest, theWindowFollowsAScaleThatChangesWhileItIsShown)
{
    const auto window = [this] { return desktop.shown(QStringLiteral("Vantora")).value(0); };
    auto tell = [this, serial = 0U](qint32 scale) mutable {
        SettingsData settings(false, ++serial);
        settings.add("Xft/DPI", scale * 96 * 1024);
        desktop.manageSettings(settings.bytes());
    };
    tell(1);
    world.startVantora();
    ASSERT_TRUE(waitUntil([&] { return window() != 0; }));
    for (const int scale : {2, 1, 3, 2}) {
        tell(scale);
        EXPECT_TRUE(waitUntil([&] {
            return desktop.geometry(window()).size() == scale * fullSize;
        })) << desktop.geometry(window()).width();
        const QRect seen = desktop.geometry(window());
        EXPECT_TRUE(waitUntil([&] {
            const QImage corner = desktop.picture(
                QRect(seen.topLeft() + scale * QPoint(125, 316), QSize(scale, scale)));
            return qGray(corner.pixel(0, 0)) < 60;
        })) << "the card reaches as far as the window";
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, WidgetScaleTest, testing::Values(1.25, 1.5, 1.75, 2.0));
