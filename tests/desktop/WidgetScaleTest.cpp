// The widget on screens with more than one pixel to a logical one.

#include "DesktopTest.h"
#include "WidgetPlaces.h"

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

    void click(QPoint place) const
    {
        const QPoint at = (QPointF(place) * GetParam()).toPoint();
        desktop.moveTo(desktop.geometry(window()).topLeft() + at + QPoint(0, 3));
        desktop.click(desktop.geometry(window()).topLeft() + at);
    }
};

TEST_P(WidgetScaleTest, afterEachChangeOfFormItsSizeIsExact)
{
    world.setVariable(QStringLiteral("QT_SCALE_FACTOR"), QString::number(GetParam()));
    world.startVantora();
    ASSERT_TRUE(waitUntil([this] { return window() != 0; }));
    ASSERT_TRUE(becomes(fullSize));
    for (const bool toCompact : {true, false, true, false}) {
        click(buttonAt(2, 6, !toCompact));
        ASSERT_TRUE(becomes(toCompact ? compactSize : fullSize))
            << desktop.geometry(window()).width() << " x " << desktop.geometry(window()).height();
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, WidgetScaleTest, testing::Values(1.25, 1.5, 1.75, 2.0));
