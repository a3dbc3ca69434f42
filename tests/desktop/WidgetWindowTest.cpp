#include "DesktopTest.h"

namespace {

constexpr quint32 allDesktops = 0xFFFFFFFF;

/// Whether a window is above the others, on all desktops, and not in the task bar.
bool floats(const Desktop& desktop, xcb_window_t window)
{
    const QList<quint32> states = desktop.property(window, "_NET_WM_STATE");
    return states.contains(desktop.atom("_NET_WM_STATE_ABOVE")) &&
           states.contains(desktop.atom("_NET_WM_STATE_SKIP_TASKBAR")) &&
           desktop.property(window, "_NET_WM_DESKTOP") == QList<quint32>{allDesktops};
}

} // namespace

TEST_F(DesktopTest, theFirstWidgetStandsInTheTopRightCorner)
{
    startVantora();
    EXPECT_EQ(desktop.geometry(widget()), QRect(1646, 24, 250, 320));
}

TEST_F(DesktopTest, theWidgetFloatsAboveAllWindowsOnAllDesktopsAndOutOfTheTaskBar)
{
    startVantora();
    const xcb_window_t window = widget();
    const auto hasState = [&](const char* state) {
        return desktop.property(window, "_NET_WM_STATE").contains(desktop.atom(state));
    };
    EXPECT_TRUE(waitUntil([&] { return hasState("_NET_WM_STATE_ABOVE"); }));
    EXPECT_TRUE(hasState("_NET_WM_STATE_SKIP_TASKBAR"));
    EXPECT_TRUE(hasState("_NET_WM_STATE_SKIP_PAGER"));
    EXPECT_FALSE(hasState("_NET_WM_STATE_DEMANDS_ATTENTION"));
    EXPECT_EQ(desktop.property(window, "_NET_WM_DESKTOP"), (QList<quint32>{allDesktops}));
    EXPECT_TRUE(desktop.property(window, "_NET_WM_WINDOW_TYPE")
                    .contains(desktop.atom("_NET_WM_WINDOW_TYPE_UTILITY")));

    const xcb_window_t other = desktop.openOtherWindow({1500, 10, 400, 400});
    desktop.raise(other);
    EXPECT_TRUE(waitUntil([&] { return desktop.windows().last() == window; }));
}

TEST_F(DesktopTest, theWidgetIsAsItWasAfterItWasHidden)
{
    startWithHost({});
    const xcb_window_t before = widget();
    const QRect area = desktop.geometry(before);
    ASSERT_TRUE(host.clickLine(QStringLiteral("Hide Widget")));
    ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Show Widget")));
    ASSERT_TRUE(waitUntil([this] { return widget() != 0; }));
    const xcb_window_t window = widget();
    EXPECT_EQ(desktop.geometry(window), area);
    EXPECT_TRUE(waitUntil([&] { return floats(desktop, window); }));
}

TEST_F(DesktopTest, theWidgetIsAsItWasAlsoForASlowWindowManager)
{
    startWithHost({});
    const QRect area = desktop.geometry(widget());
    for (int i = 0; i < 3; ++i) {
        // It hears of the end of the first show after the beginning of the next one.
        world.stopWindowManager();
        ASSERT_TRUE(host.clickLine(QStringLiteral("Hide Widget")));
        ASSERT_TRUE(host.clickLine(QStringLiteral("Show Widget")));
        EXPECT_FALSE(host.clickLine(QStringLiteral("Show Widget"))) << "it is shown";
        world.continueWindowManager();
        ASSERT_TRUE(waitUntil([this] { return widget() != 0; }));
        EXPECT_TRUE(waitUntil([&] { return floats(desktop, widget()); }));
        EXPECT_TRUE(waitUntil([&] { return desktop.geometry(widget()) == area; }));
    }
}

TEST_F(DesktopTest, theFocusStaysWhereItIsWhenTheWidgetComesIsClickedAndGoes)
{
    const xcb_window_t other = openFocusedWindow();
    startWithHost({});
    EXPECT_TRUE(hasFocus(other));
    desktop.click(desktop.geometry(widget()).center());
    ASSERT_TRUE(host.clickLine(QStringLiteral("Hide Widget")));
    ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
    EXPECT_TRUE(hasFocus(other));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Show Widget")));
    ASSERT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_TRUE(hasFocus(other));
}

TEST_F(DesktopTest, theFocusStaysWhereItIsWhenTheWidgetIsDragged)
{
    startVantora();
    const xcb_window_t other = openFocusedWindow();
    const QPoint middle = desktop.geometry(widget()).center();
    desktop.press(middle);
    desktop.moveTo(middle - QPoint(50, 0));
    desktop.moveTo(middle - QPoint(200, 0));
    desktop.release();
    ASSERT_TRUE(
        waitUntil([&] { return desktop.geometry(widget()).center() == middle - QPoint(200, 0); }));
    EXPECT_TRUE(hasFocus(other));
}

TEST_F(DesktopTest, theWidgetIsDraggedExactlyAndComesBackToItsPlace)
{
    startVantora();
    const QPoint middle = desktop.geometry(widget()).center();
    const QPoint way(-613, 207);
    desktop.press(middle);
    for (int step = 1; step <= 20; ++step)
        desktop.moveTo(middle + way * step / 20);
    desktop.release();
    const QPoint place = QPoint(1646, 24) + way;
    ASSERT_TRUE(waitUntil([&] { return desktop.geometry(widget()).topLeft() == place; }));
    const QByteArray saved =
        QStringLiteral("VantoraWidget=%1 %2 ").arg(place.x()).arg(place.y()).toUtf8();
    ASSERT_TRUE(waitUntil([&] { return World::readFile(world.settingsPath()).contains(saved); }));

    World::kill(*vantora);
    ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
    startVantora();
    EXPECT_EQ(desktop.geometry(widget()).topLeft(), place);
}

TEST_F(DesktopTest, aPlaceGivenByTheWindowManagerIsKeptToo)
{
    startVantora();
    for (const QPoint place : {QPoint(400, 200), QPoint(0, 0)}) {
        desktop.place(widget(), place);
        ASSERT_TRUE(waitUntil([&] { return desktop.geometry(widget()).topLeft() == place; }));
        const QByteArray saved =
            QStringLiteral("VantoraWidget=%1 %2 ").arg(place.x()).arg(place.y()).toUtf8();
        EXPECT_TRUE(
            waitUntil([&] { return World::readFile(world.settingsPath()).contains(saved); }));
    }
    // A drag goes on from there.
    const QPoint middle = desktop.geometry(widget()).center();
    desktop.press(middle);
    desktop.moveTo(middle + QPoint(100, 100));
    desktop.moveTo(middle + QPoint(300, 300));
    desktop.release();
    EXPECT_TRUE(
        waitUntil([&] { return desktop.geometry(widget()).topLeft() == QPoint(300, 300); }));
}

TEST_F(DesktopTest, aDragThatTheWindowManagerStopsIsSavedWhereItEnded)
{
    startVantora();
    const QPoint middle = desktop.geometry(widget()).center();
    desktop.press(middle);
    desktop.moveTo(middle + QPoint(0, 500));
    desktop.moveTo(middle + QPoint(140, 890));
    desktop.release();
    EXPECT_TRUE(waitUntil([&] {
        const QPoint at = desktop.geometry(widget()).topLeft();
        const QByteArray saved =
            QStringLiteral("VantoraWidget=%1 %2 ").arg(at.x()).arg(at.y()).toUtf8();
        return at != QPoint(1646, 24) && World::readFile(world.settingsPath()).contains(saved);
    }));
}

TEST_F(DesktopTest, aClickWithAShakyHandMovesNothing)
{
    startVantora();
    const QRect area = desktop.geometry(widget());
    desktop.press(area.center());
    desktop.moveTo(area.center() + QPoint(2, 1));
    desktop.release();
    desktop.click({10, 10});
    EXPECT_EQ(desktop.geometry(widget()), area);
}

TEST_F(DesktopTest, theCompactWidgetHangsFromTheRememberedCorner)
{
    world.writeFile(world.settingsPath(),
                    "[General]\nVantoraWidget=500 300 screen\ncompactMode=true\n");
    startVantora();
    EXPECT_EQ(desktop.geometry(widget()), QRect(500, 300, 216, 76));
}

TEST_F(DesktopTest, aPlaceOnNoScreenIsBroughtBackOntoTheNearest)
{
    world.writeFile(world.settingsPath(), "[General]\nVantoraWidget=5000 -700 gone\n");
    startVantora();
    EXPECT_EQ(desktop.geometry(widget()), QRect(1920 - 250, 0, 250, 320));
}

TEST_F(DesktopTest, settingsOfAnyKindDoNotKeepTheProgramFromStarting)
{
    world.writeFile(world.settingsPath(),
                    "[General]\nVantoraWidget=junk\nsittingMinutes=-5\nstandingMinutes=@Invalid()\n"
                    "pushupCount=1, 2\ncompactMode=perhaps\n\xff\xfe\x00[[");
    startVantora();
    EXPECT_EQ(desktop.geometry(widget()), QRect(1646, 24, 250, 320));
}

TEST_F(DesktopTest, itsCornersAreCutOnlyWhileNothingMakesThemTranslucent)
{
    startVantora();
    EXPECT_TRUE(waitUntil([this] { return desktop.isCut(widget()); }));
    desktop.becomeCompositor(true);
    EXPECT_TRUE(waitUntil([this] { return !desktop.isCut(widget()); }));
    desktop.becomeCompositor(false);
    EXPECT_TRUE(waitUntil([this] { return desktop.isCut(widget()); }));
}
