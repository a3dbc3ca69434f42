// Whatever is wrong with the machine, the program starts, counts, and ends when it is told to.

#include "DesktopTest.h"
#include "SilentServer.h"

class EnvironmentFaultsTest : public testing::Test
{
protected:
    /// Starts the program, sees it count, has it quit, and expects good order all the way.
    void expectToWork() { expectToWork(world.startVantora({QStringLiteral("--demo")})); }

    void expectToWork(QProcess& vantora)
    {
        const auto widgets = [&] { return desktop.shown(QStringLiteral("Vantora")); };
        ASSERT_TRUE(waitUntil([&] { return !widgets().isEmpty(); })) << "no widget";
        const QRect readout =
            QRect(desktop.geometry(widgets().first()).topLeft() + QPoint(20, 205), QSize(210, 48));
        const QImage unpainted = desktop.picture(readout);
        ASSERT_TRUE(waitUntil([&] { return desktop.picture(readout) != unpainted; }));
        const QImage painted = desktop.picture(readout);
        EXPECT_TRUE(waitUntil([&] { return desktop.picture(readout) != painted; }))
            << "nothing counts";
        ASSERT_EQ(vantora.state(), QProcess::Running);
        vantora.terminate();
        ASSERT_TRUE(waitUntil([&] { return vantora.state() == QProcess::NotRunning; }));
        EXPECT_EQ(vantora.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(vantora.exitCode(), 0);
    }

    /// The same with all of the user's folders on a file system that is mounted by these commands
    /// at %1, and that only the program sees.
    void expectToWorkOn(const QString& commands)
    {
        const QString disk = world.path(QStringLiteral("disk"));
        ASSERT_TRUE(QDir().mkpath(disk));
        const QString mount = commands.arg(disk);
        const auto alone = [&](const QString& script) -> QProcess& {
            return world.start(
                QStringLiteral("unshare"),
                {QStringLiteral("-rm"), QStringLiteral("sh"), QStringLiteral("-c"), script});
        };
        QProcess& trial = alone(mount);
        ASSERT_TRUE(trial.waitForFinished());
        if (trial.exitCode() != 0)
            GTEST_SKIP() << "file systems cannot be mounted here";
        for (const char* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
            world.setVariable(QLatin1String(name), disk);
        expectToWork(alone(
            mount + QStringLiteral(" && exec '%1' --demo").arg(QStringLiteral(VANTORA_PROGRAM))));
    }

    /// The machine has the fonts of these folders only, as fontconfig is told of them.
    void useFonts(const QByteArray& folders)
    {
        const QString settings = world.path(QStringLiteral("fonts.conf"));
        world.writeFile(settings,
                        "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
                        "<fontconfig>" +
                            folders + "</fontconfig>");
        world.setVariable(QStringLiteral("FONTCONFIG_FILE"), settings);
    }

    World world{World::Bus::none};
    Desktop desktop{world.display()};
};

TEST_F(EnvironmentFaultsTest, aBusThatAcceptsAndNeverAnswers)
{
    const SilentServer silent(world.path(QStringLiteral("no-bus")));
    ASSERT_TRUE(silent.listens);
    expectToWork();
}

/// There Qt asks the bus by itself: for the desktop's settings as soon as there is an application,
/// and for assistive technology when the first window is shown.
TEST_F(EnvironmentFaultsTest, aSilentBusOnDesktopsThatQtAsksItAbout)
{
    const SilentServer silent(world.path(QStringLiteral("no-bus")));
    ASSERT_TRUE(silent.listens);
    world.setVariable(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    for (const char* name : {"GNOME", "KDE", "XFCE"}) {
        world.setVariable(QStringLiteral("XDG_CURRENT_DESKTOP"), QLatin1String(name));
        expectToWork();
    }
}

TEST_F(EnvironmentFaultsTest, aBusAddressThatIsNonsense)
{
    world.setVariable(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("nonsense"));
    expectToWork();
}

TEST_F(EnvironmentFaultsTest, foldersThatAreNotSetOrRelative)
{
    world.setVariable(QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("relative/config"));
    world.setVariable(QStringLiteral("XDG_DATA_HOME"), QString());
    world.setVariable(QStringLiteral("XDG_CACHE_HOME"), QStringLiteral("./cache"));
    world.setVariable(QStringLiteral("XDG_RUNTIME_DIR"), QString());
    expectToWork();
}

TEST_F(EnvironmentFaultsTest, aHomeThatIsNotThere)
{
    for (const QString& name : {QStringLiteral("HOME"), QStringLiteral("XDG_CONFIG_HOME"),
                                QStringLiteral("XDG_DATA_HOME"), QStringLiteral("XDG_CACHE_HOME")})
        world.setVariable(name, QStringLiteral("/proc/nowhere"));
    expectToWork();
}

TEST_F(EnvironmentFaultsTest, aLocaleThatDoesNotExist)
{
    world.setVariable(QStringLiteral("LC_ALL"), QStringLiteral("xx_YY.UTF-8"));
    expectToWork();
}

TEST_F(EnvironmentFaultsTest, noFontsAtAll)
{
    useFonts({});
    expectToWork();
}

TEST_F(EnvironmentFaultsTest, noFontWithEmoji)
{
    useFonts("<dir>/usr/share/fonts/truetype/quicksand</dir>"
             "<dir>/usr/share/fonts/truetype/dejavu</dir>");
    expectToWork();
}

TEST_F(EnvironmentFaultsTest, aFullDisk)
{
    expectToWorkOn(QStringLiteral("mount -t tmpfs -o size=8k none '%1' && "
                                  "{ head -c 100000 /dev/zero >'%1/all' 2>/dev/null; true; }"));
}

TEST_F(EnvironmentFaultsTest, aHomeThatCanOnlyBeRead)
{
    expectToWorkOn(QStringLiteral("mount -t tmpfs -o ro none '%1'"));
}

/// What is wrong with the sound shows when a phase ends.
class SoundFaultsTest : public DesktopTest
{
protected:
    void useServer(const QString& address)
    {
        world.setVariable(QStringLiteral("CANBERRA_DRIVER"), QStringLiteral("pulse"));
        world.setVariable(QStringLiteral("PULSE_SERVER"), QStringLiteral("unix:") + address);
    }

    /// Lets a phase end, and goes on.
    void expectToWork()
    {
        startWithHost();
        EXPECT_TRUE(titleBecomes(QStringLiteral("\U0001FA91 ✓")));
        EXPECT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
        EXPECT_TRUE(waitUntil(
            [this] { return host.title().startsWith(QStringLiteral("\U0001F9CD 0:0")); }));
        vantora->terminate();
        EXPECT_TRUE(endsByItself());
        EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(vantora->exitCode(), 0);
    }
};

TEST_F(SoundFaultsTest, noSoundServer)
{
    useServer(world.path(QStringLiteral("no-server")));
    expectToWork();
}

TEST_F(SoundFaultsTest, aSoundServerThatAcceptsAndNeverAnswers)
{
    const SilentServer silent(world.path(QStringLiteral("silent")));
    ASSERT_TRUE(silent.listens);
    useServer(world.path(QStringLiteral("silent")));
    expectToWork();
}
