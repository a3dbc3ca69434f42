// The widget's buttons on a real desktop, under a real pointer.

#include "DesktopTest.h"
#include "WidgetPlaces.h"

#include <QSet>

namespace {

constexpr QPoint farAway(900, 900);

} // namespace

class WidgetControlsTest : public DesktopTest
{
protected:
    QPoint onScreen(QPoint place) const { return desktop.geometry(widget()).topLeft() + place; }

    int gray(QPoint place) const
    {
        return qGray(desktop.picture(QRect(onScreen(place), QSize(1, 1))).pixel(0, 0));
    }

    /// Whether the first of `count` buttons is seen, by its disc.
    bool controlsAreShown(int count, bool compact) const
    {
        const QPoint disc = buttonAt(0, count, compact) - QPoint(10, 0);
        return gray(disc) > gray(gapAfter(0, count, compact)) + 10;
    }

    /// Waits for the button, which may still be on its way to its place.
    void clickButton(int number, int count, bool compact) const
    {
        const QPoint at = onScreen(buttonAt(number, count, compact));
        desktop.moveTo(at);
        EXPECT_TRUE(waitUntil([&] { return controlsAreShown(count, compact); }));
        desktop.click(at);
    }

    bool titleBegins(const QString& beginning)
    {
        return waitUntil([&] { return host.title().startsWith(beginning); });
    }

    bool widgetBecomes(const QRect& geometry)
    {
        return waitUntil([&] { return desktop.geometry(widget()) == geometry; });
    }
};

TEST_F(WidgetControlsTest, theControlsAreSeenUnderThePointerOnly)
{
    startVantora();
    EXPECT_TRUE(waitUntil([this] { return !controlsAreShown(6, false); }));
    desktop.moveTo(onScreen(ringCenter));
    EXPECT_TRUE(waitUntil([this] { return controlsAreShown(6, false); }));
    desktop.moveTo(onScreen(buttonAt(2, 6, false)));
    EXPECT_TRUE(controlsAreShown(6, false));
    desktop.moveTo(farAway);
    EXPECT_TRUE(waitUntil([this] { return !controlsAreShown(6, false); }));
}

TEST_F(WidgetControlsTest, theControlsGoWithAPointerThatLeftWhileTheMenuWasOpen)
{
    startVantora();
    desktop.moveTo(onScreen(ringCenter));
    ASSERT_TRUE(waitUntil([this] { return controlsAreShown(6, false); }));
    desktop.click(onScreen(ringCenter), 3);
    ASSERT_TRUE(waitUntil([this] { return !desktop.popups().isEmpty(); }));
    // A menu that is not painted does not have the pointer yet.
    const QRect menu = desktop.geometry(desktop.popups().first());
    ASSERT_TRUE(waitUntil([&] {
        const QImage seen = desktop.picture(menu);
        QSet<QRgb> colors;
        for (int y = 0; y < seen.height(); ++y)
            colors.insert(seen.pixel(seen.width() / 4, y));
        return colors.size() > 3;
    }));
    desktop.moveTo(farAway);
    ASSERT_TRUE(waitUntil([this] {
        desktop.click(farAway);
        return desktop.popups().isEmpty();
    }));
    EXPECT_TRUE(waitUntil([this] { return !controlsAreShown(6, false); }));
}

TEST_F(WidgetControlsTest, theStripShowsItsBandUnderThePointerOnly)
{
    world.writeFile(world.settingsPath(), "[General]\ncompactMode=true\n");
    startVantora();
    // The ring reaches beyond the band: at twelve o'clock, but not at nine.
    const auto bandIsShown = [this] { return gray({14, 38}) < 80 && gray({38, 12}) > 80; };
    EXPECT_TRUE(waitUntil([this] { return gray({14, 38}) > 80 && gray({38, 12}) > 80; }));
    desktop.moveTo(onScreen({108, 70}));
    EXPECT_TRUE(waitUntil(bandIsShown));
    EXPECT_TRUE(waitUntil([this] { return controlsAreShown(6, true); }));
    desktop.moveTo(farAway);
    EXPECT_TRUE(waitUntil([&] { return !bandIsShown(); }));
}

TEST_F(WidgetControlsTest, everyButtonWorksAndTheKeyboardStaysWhereItIs)
{
    const xcb_window_t other = openFocusedWindow();
    startWithHost({});
    const int before = desktop.focusLosses();
    const QPoint corner = desktop.geometry(widget()).topLeft();

    clickButton(0, 6, false);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 ⏸")));
    clickButton(0, 6, false);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 39:")));
    clickButton(1, 6, false);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD 1")));
    clickButton(2, 6, false);
    EXPECT_TRUE(widgetBecomes({corner, compactSize}));
    clickButton(0, 6, true);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD ⏸")));
    clickButton(2, 6, true);
    EXPECT_TRUE(widgetBecomes({corner, fullSize}));
    clickButton(4, 6, false);
    ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
    EXPECT_TRUE(hasFocus(other));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Show Widget")));
    ASSERT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_TRUE(hasFocus(other));
    EXPECT_EQ(desktop.focusLosses(), before);

    clickButton(3, 6, false);
    EXPECT_TRUE(waitUntil([this] { return panelWindow() != 0; }));
    clickButton(5, 6, false);
    EXPECT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(vantora->exitCode(), 0);
}

TEST_F(WidgetControlsTest, thePushupsAreReportedDone)
{
    startWithHost({});
    clickButton(1, 6, false);
    ASSERT_TRUE(titleBegins(QStringLiteral("\U0001F9CD")));
    clickButton(1, 6, false);
    ASSERT_TRUE(titleBegins(QStringLiteral("\U0001F4AA")));
    EXPECT_FALSE(QFile::exists(world.historyPath()));
    desktop.click(onScreen({125, 293}));
    ASSERT_TRUE(titleBegins(QStringLiteral("\U0001FA91")));
    EXPECT_TRUE(
        World::readFile(world.historyPath()).contains(R"("phaseRaw":2,"seconds":0,"reps":50)"));
}

TEST_F(WidgetControlsTest, aClickBesideARoundedCornerGoesToTheWindowBehind)
{
    for (const bool compact : {false, true}) {
        if (compact) {
            World::kill(*vantora);
            ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
            world.writeFile(world.settingsPath(), "[General]\ncompactMode=true\n");
        }
        startWithHost({});
        const QRect area = desktop.geometry(widget());
        const xcb_window_t behind = desktop.openOtherWindow(area.adjusted(-50, -10, 20, 50));
        const xcb_window_t other = openFocusedWindow();
        for (const QPoint at :
             {area.topLeft() + QPoint(1, 1), area.topRight() + QPoint(-1, 1),
              area.bottomLeft() + QPoint(1, -1), area.bottomRight() - QPoint(1, 1)}) {
            desktop.click(at);
            EXPECT_TRUE(waitUntil([&] { return hasFocus(behind); })) << at.x() << " " << at.y();
            desktop.activate(other);
            ASSERT_TRUE(waitUntil([&] { return hasFocus(other); }));
        }
        // Just inside it is the widget that is clicked.
        const int before = desktop.focusLosses();
        for (const QPoint at :
             {area.topLeft() + QPoint(11, 11), area.bottomRight() - QPoint(11, 11),
              QPoint(area.center().x(), area.top() + 1)})
            desktop.click(at);
        letItDecide();
        EXPECT_TRUE(hasFocus(other));
        EXPECT_EQ(desktop.focusLosses(), before);
    }
}

TEST_F(WidgetControlsTest, theInputFollowsTheOutlineThroughAChangeOfTheForm)
{
    startWithHost({});
    const QRect full = desktop.geometry(widget());
    const xcb_window_t behind = desktop.openOtherWindow(full.adjusted(-50, -10, 20, 50));
    const xcb_window_t other = openFocusedWindow();
    clickButton(2, 6, false);
    ASSERT_TRUE(widgetBecomes({full.topLeft(), compactSize}));
    EXPECT_TRUE(hasFocus(other));
    desktop.click(full.topLeft() + QPoint(100, 74));
    desktop.click(full.topLeft() + QPoint(100, 2));
    EXPECT_TRUE(hasFocus(other));
    desktop.click(full.topLeft() + QPoint(100, 78));
    EXPECT_TRUE(waitUntil([&] { return hasFocus(behind); }));
    clickButton(2, 6, true);
    ASSERT_TRUE(widgetBecomes(full));
    desktop.activate(other);
    ASSERT_TRUE(waitUntil([&] { return hasFocus(other); }));
    const int before = desktop.focusLosses();
    desktop.click(full.topLeft() + QPoint(100, 200));
    desktop.click(full.center());
    letItDecide();
    EXPECT_TRUE(hasFocus(other));
    EXPECT_EQ(desktop.focusLosses(), before);
}

TEST_F(WidgetControlsTest, aDragThatBeginsOnAButtonMovesAndPressesNothing)
{
    startWithHost({});
    const QRect area = desktop.geometry(widget());
    const QPoint pause = onScreen(buttonAt(0, 6, false));
    desktop.press(pause);
    desktop.moveTo(pause - QPoint(0, 60));
    desktop.moveTo(pause - QPoint(100, 160));
    desktop.release();
    // The skip that comes after it is seen first.
    clickButton(1, 6, false);
    ASSERT_TRUE(titleBegins(QStringLiteral("\U0001F9CD")));
    EXPECT_FALSE(host.title().contains(QStringLiteral("⏸")));
    EXPECT_EQ(desktop.geometry(widget()), area);
}

TEST_F(WidgetControlsTest, aHiddenWidgetComesBackWithoutItsControls)
{
    startWithHost({});
    clickButton(0, 6, false); // paused, so that no frame comes by itself
    ASSERT_TRUE(titleBegins(QStringLiteral("\U0001FA91 ⏸")));
    ASSERT_TRUE(waitUntil([this] { return controlsAreShown(6, false); }));
    clickButton(4, 6, false);
    ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
    desktop.moveTo(farAway);
    ASSERT_TRUE(host.clickLine(QStringLiteral("Show Widget")));
    ASSERT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_TRUE(waitUntil([this] {
        return gray({125, 160}) < 100 && !controlsAreShown(6, false);
    }));
}
