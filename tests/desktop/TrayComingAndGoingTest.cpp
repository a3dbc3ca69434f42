#include "DesktopTest.h"

#include <QDir>

TEST_F(DesktopTest, aTrayThatStartsLaterGetsTheItem)
{
    startVantora({QStringLiteral("--demo")});
    host.start();
    ASSERT_TRUE(waitUntil([this] { return !host.item().isEmpty(); }));
    EXPECT_TRUE(host.title().startsWith(QStringLiteral("\U0001FA91 ")));
}

TEST_F(DesktopTest, aTrayGetsTheItemWhenItIsReady)
{
    startVantora({QStringLiteral("--demo")});
    host.start(false);
    ASSERT_TRUE(waitUntil([this] { return host.wasAsked(); }));
    EXPECT_TRUE(host.item().isEmpty());
    host.becomeReady();
    ASSERT_TRUE(waitUntil([this] { return !host.item().isEmpty(); }));
    EXPECT_TRUE(host.title().startsWith(QStringLiteral("\U0001FA91 ")));
}

TEST_F(DesktopTest, aTrayThatNeverSaysThatItIsReadyGetsTheItem)
{
    startVantora({QStringLiteral("--demo")});
    host.start(false);
    EXPECT_TRUE(waitUntil([this] { return !host.item().isEmpty(); }));
}

TEST_F(DesktopTest, aTrayThatComesBackGetsTheItemAgain)
{
    startWithHost({});
    for (int i = 0; i < 3; ++i) {
        host.stop();
        host.start();
        ASSERT_TRUE(waitUntil([this] { return !host.item().isEmpty(); }));
        EXPECT_TRUE(host.title().startsWith(QStringLiteral("\U0001FA91 ")));
    }
    EXPECT_EQ(host.items().size(), 1) << "there was another one for a moment";
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    EXPECT_TRUE(titleBecomes(QStringLiteral("\U0001F9CD 15:00")) ||
                titleBecomes(QStringLiteral("\U0001F9CD 14:59")));
}

TEST_F(DesktopTest, theProgramCountsOnWhenTheBusIsGone)
{
    startWithHost();
    const QString folder = world.path(QStringLiteral("runtime/vantora"));
    world.killBus();
    const QRect area = desktop.geometry(widget());
    const QImage before = desktop.picture(area);
    ASSERT_TRUE(waitUntil([&] { return desktop.picture(area) != before; }));
    const QStringList files = QDir(folder).entryList(QDir::Files);
    const QImage second = desktop.picture(area);
    ASSERT_TRUE(waitUntil([&] { return desktop.picture(area) != second; }));
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), files) << "icons that nobody sees";
    vantora->terminate();
    EXPECT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitCode(), 0);
}

TEST_F(DesktopTest, withoutATrayTheSameMenuOpensOnTheWidget)
{
    startVantora({QStringLiteral("--demo")});
    const QRect area = desktop.geometry(widget());
    desktop.click(area.center(), 3);
    ASSERT_TRUE(waitUntil([this] { return !desktop.popups().isEmpty(); }));
    const QRect menu = desktop.geometry(desktop.popups().first());
    EXPECT_EQ(menu.top(), area.center().y());
    EXPECT_LE(menu.right(), 1920) << "moved away from the edge of the screen";
}

TEST(DesktopWithoutBusTest, theProgramCountsAndItsMenuOpens)
{
    World world(World::Bus::none);
    const Desktop desktop(world.display());
    QProcess& vantora = world.startVantora({QStringLiteral("--demo")});
    const auto widgets = [&] { return desktop.shown(QStringLiteral("Vantora")); };
    ASSERT_TRUE(waitUntil([&] { return !widgets().isEmpty(); }));
    const QRect area = desktop.geometry(widgets().first());
    const QImage unpainted = desktop.picture(area);
    ASSERT_TRUE(waitUntil([&] { return desktop.picture(area) != unpainted; }));
    const QImage painted = desktop.picture(area);
    EXPECT_TRUE(waitUntil([&] { return desktop.picture(area) != painted; })) << "nothing counts";
    desktop.click(area.center(), 3);
    ASSERT_TRUE(waitUntil([&] { return !desktop.popups().isEmpty(); }));
    // The last line of the menu ends the program.
    const QRect menu = desktop.geometry(desktop.popups().first());
    desktop.click({menu.center().x(), menu.bottom() - 12});
    EXPECT_TRUE(waitUntil([&] { return vantora.state() == QProcess::NotRunning; }));
    EXPECT_EQ(vantora.exitCode(), 0);
}
