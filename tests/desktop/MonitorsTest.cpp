// The widget on a desktop of several monitors, which come and go.

#include "DesktopTest.h"
#include "WidgetPlaces.h"

class MonitorsTest : public DesktopTest
{
protected:
    void SetUp() override
    {
        // The left half of the screen is the real monitor's.
        setMonitor(QStringLiteral("left"), QStringLiteral("960/1x1080/1+0+0"), true);
        setMonitor(QStringLiteral("right"), onTheRight);
    }

    void setMonitor(const QString& name, const QString& geometry, bool isReal = false)
    {
        xrandr({QStringLiteral("--setmonitor"), name, geometry,
                isReal ? QStringLiteral("screen") : QStringLiteral("none")});
    }

    void removeMonitor(const QString& name) { xrandr({QStringLiteral("--delmonitor"), name}); }

    testing::AssertionResult widgetComesTo(QPoint topLeft)
    {
        QPoint at;
        if (waitUntil([&] { return (at = desktop.geometry(widget()).topLeft()) == topLeft; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "it is at " << at.x() << ' ' << at.y() << ", and has remembered\n"
               << World::readFile(world.settingsPath()).toStdString();
    }

    void remember(const QByteArray& place)
    {
        world.writeFile(world.settingsPath(), "[General]\nVantoraWidget=" + place + "\n");
    }

    inline static const QString onTheRight = QStringLiteral("960/1x1080/1+960+0");

private:
    void xrandr(const QStringList& arguments)
    {
        QProcess& process = world.start(QStringLiteral("xrandr"), arguments);
        ASSERT_TRUE(process.waitForFinished());
        ASSERT_EQ(process.exitCode(), 0);
    }
};

TEST_F(MonitorsTest, theFirstPlaceIsBesideThePanelsOfTheFirstMonitor)
{
    desktop.openPanel(40);
    startVantora();
    EXPECT_TRUE(widgetComesTo({960 - 250 - 24, 40 + 24}));
}

TEST_F(MonitorsTest, itWaitsOnAnotherMonitorUntilItsOwnIsBack)
{
    remember("1200 200 right @960:0");
    startVantora();
    EXPECT_TRUE(widgetComesTo({1200, 200}));
    removeMonitor(QStringLiteral("right"));
    EXPECT_TRUE(widgetComesTo({960 - 250, 200}));
    const QByteArray remembered = World::readFile(world.settingsPath());
    EXPECT_TRUE(remembered.contains("1200 200 right @960:0")) << remembered.toStdString();
    setMonitor(QStringLiteral("right"), onTheRight);
    EXPECT_TRUE(widgetComesTo({1200, 200}));
}

TEST_F(MonitorsTest, itIsWhereItWasOnAMonitorThatIsElsewhereNow)
{
    remember("240 200 right");
    startVantora();
    EXPECT_TRUE(widgetComesTo({960 + 240, 200}));
}

TEST_F(MonitorsTest, aDragOntoAnotherMonitorIsRemembered)
{
    remember("100 200 left");
    startVantora();
    ASSERT_TRUE(widgetComesTo({100, 200}));
    desktop.press(QPoint(100, 200) + ringCenter);
    desktop.moveTo(QPoint(400, 250) + ringCenter);
    desktop.moveTo(QPoint(1300, 300) + ringCenter);
    desktop.release();
    EXPECT_TRUE(widgetComesTo({1300, 300}));
    EXPECT_TRUE(waitUntil([this] {
        return World::readFile(world.settingsPath()).contains("1300 300 right @960:0");
    }));
}
