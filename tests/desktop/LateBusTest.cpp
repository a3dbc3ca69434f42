// A session bus that says nothing when the program starts, and answers later.

#include "LateBus.h"

#include "DesktopTest.h"
#include "Launcher.h"
#include "SettingsPortal.h"
#include "WidgetPlaces.h"

#include <optional>

namespace {

constexpr quint32 keyReturn = 0xFF0D;
constexpr quint32 keyTab = 0xFF09;
constexpr int gear = 3; ///< the number of the widget's button

} // namespace

class LateBusTest : public DesktopTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.listens());
        useBus(QStringLiteral("unix:path=") + world.path(QStringLiteral("late-bus")));
    }

    /// What is started from now on finds this bus.
    void useBus(const QString& address)
    {
        world.setVariable(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
    }

    /// Waits until the program has painted the widget, and with it has looked for the bus.
    void waitForFrame() const
    {
        const QRect readout = readoutArea.translated(desktop.geometry(widget()).topLeft());
        const QImage first = desktop.picture(readout);
        ASSERT_TRUE(waitUntil([&] { return desktop.picture(readout) != first; }));
    }

    qsizetype widgets() const { return desktop.shown(QStringLiteral("Vantora")).size(); }

    /// Hides the widget of the program that is in the tray.
    void hideWidget()
    {
        const qsizetype before = widgets();
        ASSERT_TRUE(host.clickLine(QStringLiteral("Hide Widget")));
        ASSERT_TRUE(waitUntil([&] { return widgets() == before - 1; }));
    }

    static bool hasEnded(const QProcess& process)
    {
        return waitUntil([&] { return process.state() == QProcess::NotRunning; });
    }

    LateBus bus{world.path(QStringLiteral("late-bus")), world.path(QStringLiteral("bus"))};
};

TEST_F(LateBusTest, whenItAnswersTheProgramIsThereAsAlways)
{
    SettingsPortal portal(world.busAddress());
    portal.start();
    host.start();
    startVantora();
    waitForFrame();
    EXPECT_TRUE(host.item().isEmpty());
    bus.answer();
    ASSERT_TRUE(waitUntil([this] { return !host.item().isEmpty(); })) << "no item in the tray";
    EXPECT_TRUE(host.title().startsWith(QStringLiteral("\U0001FA91 ")));
    EXPECT_TRUE(waitUntil([&] { return !portal.questions().isEmpty(); }))
        << "it does not ask whether things may move";
    hideWidget();
    EXPECT_TRUE(act(world, QStringLiteral("toggle-widget"))) << "nobody has the name";
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    vantora->terminate();
    ASSERT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(vantora->exitCode(), 0);
}

TEST_F(LateBusTest, aSecondStartThenBringsTheFirstOnesWidgetBack)
{
    host.start();
    startVantora();
    bus.answer();
    ASSERT_TRUE(waitUntil([this] { return !host.item().isEmpty(); }));
    hideWidget();
    const QProcess& second = world.startVantora();
    EXPECT_TRUE(hasEnded(second));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_EQ(vantora->state(), QProcess::Running);
}

TEST_F(LateBusTest, whereAnotherOneHasTheNameByThenThisOneEnds)
{
    startVantora();
    waitForFrame();
    useBus(world.busAddress());
    host.start();
    const QProcess& other = world.startVantora();
    ASSERT_TRUE(waitUntil([this] { return !host.item().isEmpty(); }));
    hideWidget();
    bus.answer();
    EXPECT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(vantora->exitCode(), 0);
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_EQ(other.state(), QProcess::Running);
}

TEST_F(LateBusTest, oneThatFallsSilentAgainWhileQtConnectsDoesNotHoldUpTheEnd)
{
    startVantora();
    waitForFrame();
    bus.answer(1); // the thread that waits
    ASSERT_TRUE(waitUntil([this] { return bus.unanswered() > 0; }));
    vantora->terminate();
    ASSERT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(vantora->exitCode(), 0);
}

TEST_F(LateBusTest, whatTheProgramStartsKnowsTheRealBus)
{
    // It takes the place of what opens addresses.
    const QString environment = world.path(QStringLiteral("environment"));
    const QString opener = world.path(QStringLiteral("xdg-open"));
    world.writeFile(opener, "#!/bin/sh\nenv >'" + environment.toUtf8() + ".new' && mv '" +
                                environment.toUtf8() + ".new' '" + environment.toUtf8() + "'\n");
    QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    world.setVariable(QStringLiteral("PATH"),
                      QFileInfo(opener).path() + u':' + qEnvironmentVariable("PATH"));
    startVantora();
    waitForFrame();
    desktop.click(desktop.geometry(widget()).topLeft() + buttonAt(gear, 6, false));
    ASSERT_TRUE(waitUntil([this] { return hasFocus(panelWindow()); }));
    constexpr int fromTheTabsToTheLink = 5;
    for (int i = 0; i < fromTheTabsToTheLink; ++i)
        desktop.type(keyTab);
    desktop.type(keyReturn);
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(environment); }));
    EXPECT_TRUE(World::readFile(environment)
                    .split('\n')
                    .contains("DBUS_SESSION_BUS_ADDRESS=unix:path=" +
                              world.path(QStringLiteral("late-bus")).toUtf8()));
}

TEST(ReplacedBusTest, theNewBusIsFoundAtTheSameAddress)
{
    World world(World::Bus::none);
    const Desktop desktop(world.display());
    const QString path = world.path(QStringLiteral("no-bus"));
    std::optional<SilentServer> silent(path);
    ASSERT_TRUE(silent->listens);
    world.startVantora();
    ASSERT_TRUE(waitUntil([&] { return !desktop.shown(QStringLiteral("Vantora")).isEmpty(); }));
    silent.reset();
    QFile::remove(path);
    QProcess& daemon = world.start(QStringLiteral("dbus-daemon"),
                                   {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                    QStringLiteral("--print-address"),
                                    QStringLiteral("--address=unix:path=") + path});
    ASSERT_TRUE(waitUntil([&] { return daemon.canReadLine(); }));
    TrayHost host(QString::fromUtf8(daemon.readLine()).trimmed());
    host.start();
    EXPECT_TRUE(waitUntil([&] { return !host.item().isEmpty(); })) << "no item in the tray";
}
