// Whatever is wrong with the machine, the program starts, counts, and ends when it is told to.

#include "Desktop.h"
#include "World.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Something at a path that takes connections and never answers.
class SilentServer
{
public:
    explicit SilentServer(const QString& path)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.toLocal8Bit().constData(), sizeof address.sun_path - 1);
        listens =
            ::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
            ::listen(m_socket, 16) == 0;
    }
    ~SilentServer() { ::close(m_socket); }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    bool listens = false;

private:
    int m_socket;
};

} // namespace

class EnvironmentFaultsTest : public testing::Test
{
protected:
    /// Starts the program, sees it count, has it quit, and expects good order all the way.
    void expectToWork(const QStringList& arguments = {QStringLiteral("--demo")})
    {
        const Desktop desktop(world.display());
        QProcess& vantora = world.startVantora(arguments);
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

    World world{World::Bus::none};
};

TEST_F(EnvironmentFaultsTest, aBusThatAcceptsAndNeverAnswers)
{
    const SilentServer silent(world.path(QStringLiteral("no-bus")));
    ASSERT_TRUE(silent.listens);
    expectToWork();
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
    world.writeFile(world.path(QStringLiteral("fonts.conf")),
                    "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
                    "<fontconfig></fontconfig>");
    world.setVariable(QStringLiteral("FONTCONFIG_FILE"), world.path(QStringLiteral("fonts.conf")));
    expectToWork();
}
