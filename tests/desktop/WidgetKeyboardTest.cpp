// The keyboard comes to the widget when the user asks the window manager for it, and not before.

#include "DesktopTest.h"
#include "Launcher.h"
#include "WidgetPlaces.h"

namespace {

constexpr quint32 keyTab = 0xFF09;
constexpr quint32 keyReturn = 0xFF0D;
constexpr quint32 keySpace = 0x0020;
constexpr quint32 keyL = 0x006C;
constexpr quint32 keyQ = 0x0071;

} // namespace

class WidgetKeyboardTest : public DesktopTest
{
protected:
    bool titleBegins(const QString& beginning)
    {
        return waitUntil([&] { return host.title().startsWith(beginning); });
    }

    /// Asks again after a while: a window that is coming up may have been given it since.
    void giveKeyboard()
    {
        ASSERT_TRUE(waitUntil([this] {
            desktop.activate(widget());
            return waitUntil([this] { return desktop.focused() == widget(); },
                             std::chrono::seconds(2));
        }));
    }
};

TEST_F(WidgetKeyboardTest, whoAsksTheWindowManagerForItCanUseItByKeys)
{
    const xcb_window_t other = openFocusedWindow();
    startWithHost({});
    giveKeyboard();
    desktop.type(keyTab); // from the card
    desktop.type(keySpace);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 ⏸")));
    desktop.type(keyReturn);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 39:")));
    desktop.type(keyTab);
    desktop.type(keyReturn);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD 1")));
    desktop.type(keyTab);
    desktop.type(keySpace);
    EXPECT_TRUE(waitUntil([this] { return desktop.geometry(widget()).size() == compactSize; }));
    EXPECT_EQ(desktop.focused(), widget());
    desktop.type(keySpace);
    EXPECT_TRUE(waitUntil([this] { return desktop.geometry(widget()).size() == fullSize; }));

    desktop.activate(other);
    EXPECT_TRUE(waitUntil([&] { return hasFocus(other); }));
    desktop.type(keySpace);
    giveKeyboard(); // again
    desktop.type(keyTab);
    desktop.type(keyTab);
    desktop.type(keyTab);
    desktop.type(keyTab);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD 1")));
    EXPECT_EQ(desktop.geometry(widget()).size(), fullSize);
}

TEST_F(WidgetKeyboardTest, aClickDoesNotGiveItTheKeyboard)
{
    const xcb_window_t other = openFocusedWindow();
    startWithHost({});
    const int before = desktop.focusLosses();
    const QPoint corner = desktop.geometry(widget()).topLeft();
    desktop.click(corner + ringCenter);
    desktop.click(corner + buttonAt(0, 6, false));
    ASSERT_TRUE(titleBegins(QStringLiteral("\U0001FA91 ⏸")));
    desktop.type(keyTab);
    desktop.type(keySpace);
    desktop.click(corner + buttonAt(1, 6, false));
    ASSERT_TRUE(titleBegins(QStringLiteral("\U0001F9CD 1"))) << "a key had an effect";
    EXPECT_TRUE(hasFocus(other));
    EXPECT_EQ(desktop.focusLosses(), before);
}

TEST_F(WidgetKeyboardTest, clicksInQuickSuccessionDoNotGiveItTheKeyboard)
{
    const xcb_window_t other = openFocusedWindow();
    startWithHost({});
    const int before = desktop.focusLosses();
    const QPoint corner = desktop.geometry(widget()).topLeft();
    for (const QPoint at : {ringCenter, ringCenter, QPoint(40, 230), QPoint(200, 230)})
        desktop.click(corner + at);
    letItDecide();
    EXPECT_TRUE(hasFocus(other));
    EXPECT_EQ(desktop.focusLosses(), before);
    giveKeyboard(); // where it is asked for it comes, also soon after a click
}

TEST_F(WidgetKeyboardTest, returnOnTheCardAcknowledges)
{
    startWithHost();
    ASSERT_TRUE(titleBecomes(QStringLiteral("\U0001FA91 ✓")));
    giveKeyboard();
    desktop.type(keyReturn);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD 0:0")));
}

TEST_F(WidgetKeyboardTest, theRingAroundTheCardStaysWhileThePulseGoesOnUnderIt)
{
    world.writeFile(world.settingsPath(), "[General]\ncompactMode=true\n");
    startWithHost();
    ASSERT_TRUE(titleBecomes(QStringLiteral("\U0001FA91 ✓")));
    giveKeyboard();
    const QPoint corner = desktop.geometry(widget()).topLeft();
    const auto ringIsSeen = [&] {
        const QImage edge = desktop.picture(QRect(corner + QPoint(2, 30), QSize(1, 16)));
        for (int y = 0; y < edge.height(); ++y) {
            if (qGray(edge.pixel(0, y)) < 150)
                return false;
        }
        return true;
    };
    ASSERT_TRUE(waitUntil(ringIsSeen));
    for (int frame = 0; frame < 20; ++frame) {
        const QRect pulse(corner + QPoint(4, 4), QSize(60, 68));
        const QImage before = desktop.picture(pulse);
        ASSERT_TRUE(waitUntil([&] { return desktop.picture(pulse) != before; }));
        EXPECT_TRUE(ringIsSeen()) << frame;
    }
}

TEST_F(WidgetKeyboardTest, aWidgetThatEndsWithTheKeyboardInItEndsInGoodOrder)
{
    startWithHost({});
    giveKeyboard();
    for (int i = 0; i < 6; ++i)
        desktop.type(keyTab);
    desktop.type(keySpace);
    ASSERT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(vantora->exitCode(), 0);
}

TEST_F(WidgetKeyboardTest, theKeyboardGoesBackWhenTheWidgetIsHidden)
{
    const xcb_window_t other = openFocusedWindow();
    startWithHost({});
    giveKeyboard();
    for (int i = 0; i < 5; ++i)
        desktop.type(keyTab);
    desktop.type(keySpace);
    ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
    EXPECT_TRUE(waitUntil([&] { return hasFocus(other); }));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Show Widget")));
    ASSERT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_TRUE(hasFocus(other)) << "it does not come back with the widget";
}

TEST_F(WidgetKeyboardTest, askedForWhileItIsHiddenItComesWithTheKeyboard)
{
    openFocusedWindow();
    startWithHost({});
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(host.clickLine(QStringLiteral("Hide Widget")));
        ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
        ASSERT_TRUE(act(world, QStringLiteral("focus-widget")));
        ASSERT_TRUE(waitUntil([this] { return widget() != 0; }));
        EXPECT_TRUE(waitUntil([this] { return desktop.focused() == widget(); }));
    }
}

TEST_F(WidgetKeyboardTest, askedForWhileItIsHiddenItWaitsForASlowWindowManager)
{
    openFocusedWindow();
    startWithHost({});
    world.stopWindowManager();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Hide Widget")));
    ASSERT_TRUE(act(world, QStringLiteral("focus-widget")));
    EXPECT_FALSE(host.clickLine(QStringLiteral("Show Widget"))) << "it is shown";
    world.continueWindowManager();
    EXPECT_TRUE(waitUntil([this] { return widget() != 0 && desktop.focused() == widget(); }));
}

TEST_F(WidgetKeyboardTest, theKeysOfTheMenuWorkInIt)
{
    startWithHost({});
    giveKeyboard();
    desktop.typeWithControl(keyL);
    ASSERT_TRUE(waitUntil([this] { return hasFocus(panelWindow()); }));
    EXPECT_TRUE(waitUntil([this] { return desktop.geometry(panelWindow()).height() > 300; }));
    giveKeyboard();
    desktop.typeWithControl(keyQ);
    EXPECT_TRUE(endsByItself());
}
