// The widget on a Wayland compositor with a layer shell.

#include "Desktop.h"
#include "Launcher.h"
#include "Sway.h"
#include "TrayHost.h"
#include "WidgetPlaces.h"
#include "World.h"
#include "support/Pixels.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <linux/input-event-codes.h>
#include <optional>

namespace {

const QColor desktopColor(0x33, 0x55, 0x77);
constexpr QPoint onPanel(200, 210);
constexpr QPoint firstPlace(1280 - 250 - 24, 24);
const QString firstScreen = QStringLiteral("HEADLESS-1");
const QString firstWindow = QStringLiteral("X11-1");
const QString secondWindow = QStringLiteral("X11-2");
const QString panelTitle = QStringLiteral("Vantora");

} // namespace

class WaylandTest : public testing::Test
{
protected:
    void start(const QByteArray& swaySettings = {})
    {
        sway.emplace(world, swaySettings);
        host.start();
        startVantora();
    }

    void startVantora()
    {
        vantora = &world.startVantora({QStringLiteral("--demo")});
        ASSERT_TRUE(waitUntil([this] { return !widget().isNull(); })) << "no widget";
        ASSERT_TRUE(waitUntil([this] { return !host.title().isEmpty(); })) << "no item";
    }

    /// Where the widget is on a screen; nowhere if it is not, or something else covers a part of
    /// it.
    QRect widget(const QString& screen = firstScreen)
    {
        const QList<QRect> shapes = sway->shapes(screen);
        for (const QRect& shape : shapes) {
            if (shape.size() == fullSize || shape.size() == compactSize)
                return shape;
        }
        return {};
    }

    /// Whether something of its own reaches over the widget's edge.
    bool hasMore()
    {
        const QList<QRect> shapes = sway->shapes();
        return std::any_of(shapes.begin(), shapes.end(), [](const QRect& shape) {
            return shape.topLeft() == firstPlace && shape.height() > fullSize.height();
        });
    }
    bool isHidden() { return widget().isNull(); }
    bool widgetBecomes(const QRect& place)
    {
        return waitUntil([&] { return widget() == place; });
    }

    bool titleBegins(const QString& beginning)
    {
        return waitUntil([&] { return host.title().startsWith(beginning); });
    }
    bool pauses()
    {
        return waitUntil([&] { return host.title().contains(u'⏸'); });
    }
    bool goesOn()
    {
        return waitUntil([&] { return !host.title().contains(u'⏸'); });
    }

    void act(const QString& action) { ASSERT_TRUE(::act(world, action)); }

    /// Opens the panel window, which then has the keyboard.
    void openPanel()
    {
        act(QStringLiteral("settings"));
        ASSERT_TRUE(waitUntil([this] { return sway->focused() == panelTitle; }));
    }

    /// Lets what may come of a click come: a second of the countdown passes.
    void letItDecide()
    {
        for (int seconds = 0; seconds < 2; ++seconds) {
            const QString title = host.title();
            ASSERT_TRUE(waitUntil([&] { return host.title() != title; }));
        }
    }

    void drag(QPoint from, QPoint by)
    {
        sway->moveTo(from);
        sway->press();
        for (int step = 1; step <= 10; ++step)
            sway->moveTo(from + by * step / 10);
        sway->release();
    }

    /// Where the buttons of the full form are in the countdown.
    QPoint button(int number) { return widget().topLeft() + buttonAt(number, 6, false); }

    /// With screens that are windows on an X11 display.
    void startInWindows(int count)
    {
        desktop.emplace(world.display());
        sway.emplace(world, Sway::Windows{count});
    }

    /// Closes the window that is a screen.
    void close(const QString& screen)
    {
        QList<xcb_window_t> windows;
        ASSERT_TRUE(waitUntil([&] {
            windows = desktop->shown(QStringLiteral("wlroots - ") + screen);
            return windows.size() == 1;
        }));
        desktop->close(windows.first());
    }

    World world;
    TrayHost host{world.busAddress()};
    std::optional<Desktop> desktop;
    std::optional<Sway> sway;
    QProcess* vantora = nullptr;
};

TEST_F(WaylandTest, itFloatsAtItsFirstPlace)
{
    start();
    EXPECT_EQ(widget(), QRect(firstPlace, fullSize));
    EXPECT_TRUE(sway->windows().isEmpty()) << "it is no window among others";
    const QImage picture = sway->picture();
    EXPECT_EQ(picture.pixelColor(firstPlace), desktopColor) << "outside its corner";
}

TEST_F(WaylandTest, thePanelsOfTheDesktopAreLeftFree)
{
    start("bar {\n position top\n tray_output none\n}\n");
    ASSERT_TRUE(waitUntil([this] { return widget().y() > 30; })) << "below the bar";
    EXPECT_EQ(widget().size(), fullSize);
    EXPECT_EQ(widget().x(), firstPlace.x());
}

TEST_F(WaylandTest, aDragMovesItExactlyAndIsRemembered)
{
    start();
    const QPoint ring = firstPlace + ringCenter;
    drag(ring, {-333, 211});
    const QRect place(firstPlace + QPoint(-333, 211), fullSize);
    EXPECT_TRUE(widgetBecomes(place));
    drag(place.topLeft() + ringCenter, {-100, 0});
    const QRect last = place.translated(-100, 0);
    EXPECT_TRUE(widgetBecomes(last));
    EXPECT_TRUE(waitUntil([this] {
        return World::readFile(world.settingsPath()).contains("VantoraWidget=573 235 HEADLESS-1");
    }));
    ::kill(static_cast<pid_t>(vantora->processId()), SIGTERM);
    ASSERT_TRUE(waitUntil([this] { return vantora->state() == QProcess::NotRunning; }));
    EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
    startVantora();
    EXPECT_EQ(widget(), last);
}

TEST_F(WaylandTest, aPointerThatComesBackDragsIt)
{
    start();
    drag(firstPlace + ringCenter, {-333, 211});
    const QRect place(firstPlace + QPoint(-333, 211), fullSize);
    ASSERT_TRUE(widgetBecomes(place));
    sway->unplugPointer();
    sway->plugPointer();
    sway->click(place.topLeft() + ringCenter);
    letItDecide();
    EXPECT_EQ(widget(), place);
    drag(place.topLeft() + ringCenter, {-100, 50});
    EXPECT_TRUE(widgetBecomes(place.translated(-100, 50)));
}

TEST_F(WaylandTest, itStaysWithAPointerThatStandsAtTheEdge)
{
    start();
    sway->moveTo(firstPlace + ringCenter);
    sway->press();
    sway->moveBy({-100, 100});
    ASSERT_TRUE(widgetBecomes(QRect(firstPlace + QPoint(-100, 100), fullSize)));
    for (int i = 0; i < 10; ++i)
        sway->moveBy({300, 300});
    // The pointer is in the corner now, and goes back from there.
    sway->moveBy({-500, -300});
    sway->release();
    const QPoint dropped = QPoint(1279 - 500, 799 - 300) - ringCenter;
    EXPECT_TRUE(widgetBecomes(QRect(dropped, fullSize)));
}

TEST_F(WaylandTest, aShortWayIsNoDragAndAButtonIsNone)
{
    start();
    drag(firstPlace + ringCenter, {3, 0});
    drag(button(0), {-200, 100});
    letItDecide();
    EXPECT_EQ(widget().topLeft(), firstPlace);
}

TEST_F(WaylandTest, itsButtonsWorkAndLeaveTheKeyboardWhereItIs)
{
    start();
    openPanel();
    sway->click(button(0));
    EXPECT_TRUE(pauses());
    sway->click(button(0));
    EXPECT_TRUE(goesOn());
    drag(firstPlace + ringCenter, {-40, 40});
    letItDecide();
    EXPECT_EQ(sway->focused(), panelTitle);
}

TEST_F(WaylandTest, theOtherFormHangsFromTheSameCorner)
{
    start();
    sway->click(button(2));
    EXPECT_TRUE(widgetBecomes({firstPlace, compactSize}));
    // Three quarters of the strip's buttons away from the middle is where the other form begins.
    sway->moveTo(firstPlace + QPoint(108, 38));
    sway->click(firstPlace + buttonAt(2, 6, true));
    EXPECT_TRUE(widgetBecomes({firstPlace, fullSize}));
}

TEST_F(WaylandTest, hiddenItIsGoneAndThenBackAtItsPlace)
{
    start();
    drag(firstPlace + ringCenter, {-200, 100});
    const QRect place(firstPlace + QPoint(-200, 100), fullSize);
    ASSERT_TRUE(widgetBecomes(place));
    for (int round = 0; round < 3; ++round) {
        act(QStringLiteral("toggle-widget"));
        EXPECT_TRUE(waitUntil([this] { return isHidden(); }));
        act(QStringLiteral("toggle-widget"));
        EXPECT_TRUE(widgetBecomes(place));
    }
    drag(place.topLeft() + ringCenter, {50, 0});
    EXPECT_TRUE(widgetBecomes(place.translated(50, 0)));
}

TEST_F(WaylandTest, onRequestItTakesTheKeyboardUntilAnotherWindowDoes)
{
    start();
    openPanel();
    act(QStringLiteral("focus-widget"));
    ASSERT_TRUE(waitUntil([this] { return sway->focused().isEmpty(); }));
    letItDecide(); // Qt may take a key that comes together with the keyboard for the last window's.
    sway->type(KEY_TAB);
    sway->type(KEY_SPACE);
    EXPECT_TRUE(pauses()) << "the first button was pressed";
    sway->type(KEY_SPACE);
    EXPECT_TRUE(goesOn());
    sway->click(onPanel);
    EXPECT_TRUE(waitUntil([this] { return sway->focused() == panelTitle; }));
    sway->click(firstPlace + ringCenter);
    letItDecide();
    EXPECT_EQ(sway->focused(), panelTitle) << "a click does not bring it back";

    act(QStringLiteral("toggle-widget"));
    ASSERT_TRUE(waitUntil([this] { return isHidden(); }));
    act(QStringLiteral("focus-widget"));
    EXPECT_TRUE(waitUntil([this] { return !isHidden() && sway->focused().isEmpty(); }));
}

TEST_F(WaylandTest, theMenuOpensAtThePointerAndItsLinesWork)
{
    start();
    // Low on the widget, so that most of the menu is below it.
    const QPoint at = firstPlace + QPoint(20, 270);
    sway->click(at, Sway::rightButton);
    ASSERT_TRUE(waitUntil([this] { return hasMore(); })) << "no menu";
    const QRect both = sway->shapes().value(0);
    EXPECT_EQ(both.topLeft(), firstPlace);
    EXPECT_GT(both.bottom(), at.y() + 150);
    const int below = firstPlace.y() + fullSize.height() + 5;
    const QImage picture = sway->picture();
    int left = both.left();
    while (picture.pixelColor(left, below) == desktopColor)
        ++left;
    EXPECT_NEAR(left, at.x(), 2);

    // "Hide Widget", then "Pause".
    for (const int key : {KEY_DOWN, KEY_DOWN, KEY_ENTER})
        sway->type(key);
    EXPECT_TRUE(pauses());
    EXPECT_TRUE(waitUntil([this] { return !hasMore(); }));

    // Elsewhere, so that it is no second click of a double one.
    sway->click(at + QPoint(60, 0), Sway::rightButton);
    ASSERT_TRUE(waitUntil([this] { return hasMore(); })) << "no second menu";
    sway->type(KEY_ESC);
    EXPECT_TRUE(waitUntil([this] { return !hasMore(); }));
}

TEST_F(WaylandTest, theButtonsGoWithAPointerThatLeftWhileTheMenuWasOpen)
{
    start();
    const auto showsButtons = [this] {
        const QImage seen = sway->picture();
        const QPoint disc = button(0) - QPoint(10, 0);
        return qGray(seen.pixel(disc)) >
               qGray(seen.pixel(widget().topLeft() + gapAfter(0, 6, false))) + 10;
    };
    // The menu hangs over none of the buttons looked at.
    sway->moveTo(firstPlace + QPoint(200, 270));
    ASSERT_TRUE(waitUntil(showsButtons));
    sway->click(firstPlace + QPoint(200, 270), Sway::rightButton);
    ASSERT_TRUE(waitUntil([this] { return hasMore(); })) << "no menu";
    sway->moveTo({300, 700});
    sway->type(KEY_ESC);
    ASSERT_TRUE(waitUntil([this] { return !hasMore(); }));
    EXPECT_TRUE(waitUntil([&] { return !widget().isNull() && !showsButtons(); }));
}

TEST_F(WaylandTest, theMenuClosesWhenAnotherWindowIsClicked)
{
    start();
    openPanel();
    sway->click(firstPlace + QPoint(20, 270), Sway::rightButton);
    ASSERT_TRUE(waitUntil([this] { return hasMore(); })) << "no menu";
    sway->click(onPanel);
    EXPECT_TRUE(waitUntil([this] { return !hasMore(); }));
    EXPECT_TRUE(waitUntil([this] { return sway->focused() == panelTitle; }));
}

TEST_F(WaylandTest, aButtonHasItsToolTipBesideIt)
{
    start();
    sway->moveTo(firstPlace + ringCenter);
    sway->moveTo(button(3));
    ASSERT_TRUE(waitUntil([this] { return hasMore(); })) << "no tool tip";
    const QRect both = sway->shapes().value(0);
    EXPECT_EQ(both.topLeft(), firstPlace);
    EXPECT_LT(both.bottom(), firstPlace.y() + fullSize.height() + 60);
    EXPECT_TRUE(sway->windows().isEmpty()) << "it is no window among others";
    sway->moveTo({300, 700});
    EXPECT_TRUE(waitUntil([this] { return !hasMore(); }));
}

TEST_F(WaylandTest, droppedOnAnotherScreenItStaysThere)
{
    startInWindows(2);
    host.start();
    // Which screen sway names first, and so is the first one's, differs.
    world.writeFile(world.settingsPath(), "[General]\nVantoraWidget=750 24 X11-1 @0:0\n");
    vantora = &world.startVantora({QStringLiteral("--demo")});
    const QPoint corner(750, 24);
    ASSERT_TRUE(waitUntil([&] { return widget(firstWindow) == QRect(corner, fullSize); }));
    drag(corner + ringCenter, {400, 100});
    const QRect place(corner + QPoint(400 - 1024, 100), fullSize);
    EXPECT_TRUE(waitUntil([&] { return widget(secondWindow) == place; }));
    EXPECT_TRUE(widget(firstWindow).isNull());
    EXPECT_TRUE(waitUntil([this] {
        return World::readFile(world.settingsPath()).contains("1150 124 X11-2 @1024:0");
    }));
}

TEST_F(WaylandTest, aScreenThatGoesLeavesItOnAnother)
{
    startInWindows(2);
    world.writeFile(world.settingsPath(), "[General]\nVantoraWidget=1150 124 X11-2 @1024:0\n");
    vantora = &world.startVantora({QStringLiteral("--demo")});
    ASSERT_TRUE(
        waitUntil([this] { return widget(secondWindow) == QRect(QPoint(126, 124), fullSize); }));
    close(secondWindow);
    const QRect place(QPoint(1024 - 250, 124), fullSize);
    EXPECT_TRUE(waitUntil([&] { return widget(firstWindow) == place; }));
    EXPECT_TRUE(World::readFile(world.settingsPath()).contains("1150 124 X11-2"))
        << "its own screen may come back";
}

TEST_F(WaylandTest, itIsBackWhenAllScreensWereGone)
{
    startInWindows(1);
    vantora = &world.startVantora({QStringLiteral("--demo")});
    const QRect place(QPoint(1024 - 250 - 24, 24), fullSize);
    ASSERT_TRUE(waitUntil([&] { return widget(firstWindow) == place; }));
    close(firstWindow);
    ASSERT_TRUE(waitUntil([this] { return sway->screens().isEmpty(); }));
    sway->command(QStringLiteral("create_output"));
    ASSERT_TRUE(waitUntil([this] { return sway->screens().contains(secondWindow); }));
    EXPECT_TRUE(waitUntil([&] { return widget(secondWindow) == place; }));
    EXPECT_EQ(vantora->state(), QProcess::Running);
}

TEST_F(WaylandTest, whatTheUserChoseIsUsed)
{
    sway.emplace(world);
    host.start();
    world.setVariable(QStringLiteral("DISPLAY"), world.display());
    world.setVariable(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    world.startVantora({QStringLiteral("--demo")});
    ASSERT_TRUE(waitUntil([this] { return !host.title().isEmpty(); }));
    EXPECT_TRUE(isHidden());
    EXPECT_TRUE(sway->windows().isEmpty());
}
