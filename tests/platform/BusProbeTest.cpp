#include "platform/BusProbe.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

class BusProbeTest : public testing::Test
{
protected:
    ~BusProbeTest() override { ::close(server); }

    /// Takes connections from now on.
    void listen()
    {
        sockaddr_un to{};
        to.sun_family = AF_UNIX;
        std::strncpy(to.sun_path, path.constData(), sizeof to.sun_path - 1);
        ASSERT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&to), sizeof to), 0);
        ASSERT_EQ(::listen(server, 4), 0);
    }

    /// Takes one connection and answers as a bus does: with a line to the first words, with the
    /// rest to what comes then.
    void serve(const QByteArray& answer)
    {
        const int connection = ::accept(server, nullptr, nullptr);
        const qsizetype lineEnd = answer.indexOf("\r\n");
        greeting = hear(connection);
        say(connection, lineEnd < 0 ? answer : answer.left(lineEnd + 2));
        question = lineEnd < 0 ? QByteArray() : hear(connection);
        if (!question.isEmpty())
            say(connection, answer.mid(lineEnd + 2));
        ::close(connection);
    }

    static QByteArray hear(int connection)
    {
        char buffer[1024];
        return {buffer, std::max(::read(connection, buffer, sizeof buffer), ssize_t{0})};
    }

    static void say(int connection, const QByteArray& words)
    {
        const auto size = static_cast<std::size_t>(words.size());
        EXPECT_EQ(::send(connection, words.constData(), size, MSG_NOSIGNAL), words.size());
    }

    QByteArray greeting; ///< the first words of the connection
    QByteArray question; ///< and what came then
    QTemporaryDir folder;
    QByteArray path = folder.filePath(QStringLiteral("bus socket")).toLocal8Bit();
    QByteArray address = "unix:path=" + path.toPercentEncoding("/") + ",guid=0123";
    int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
};

} // namespace

/// Answers of a bus, as they come over the wire: to the greeting, and whether a name is owned. The
/// first is followed by a signal.
QByteArray answersOfBus(char isOwned)
{
    const QByteArray hello("l\2\1\1\x9\0\0\0\1\0\0\0\x8\0\0\0\5\1u\0\1\0\0\0\4\0\0\0:1.2\0", 33);
    const QByteArray signal("l\4\1\1\0\0\0\0\2\0\0\0\x8\0\0\0\3\1s\0\1\0\0\0", 24);
    QByteArray reply("l\2\1\1\4\0\0\0\3\0\0\0\x8\0\0\0\5\1u\0\2\0\0\0\0\0\0\0", 28);
    reply[24] = isOwned;
    return "OK 0123\r\n" + hello + signal + reply;
}

TEST_F(BusProbeTest, itHearsWhetherTheNameIsOwned)
{
    listen();
    for (const bool isOwned : {false, true}) {
        std::thread bus([&] { serve(answersOfBus(isOwned ? 1 : 0)); });
        EXPECT_EQ(askBusFor("org.example.Name", address, 20s),
                  isOwned ? NameOnBus::taken : NameOnBus::free);
        bus.join();
        EXPECT_EQ(greeting, '\0' + QByteArray("AUTH EXTERNAL ") +
                                QByteArray::number(::getuid()).toHex() + "\r\n");
        EXPECT_TRUE(question.startsWith("BEGIN\r\nl"));
        EXPECT_TRUE(question.endsWith(QByteArray("\x10\0\0\0org.example.Name\0", 21)));
    }
}

TEST_F(BusProbeTest, whateverTheBusSaysItComesToAnEnd)
{
    listen();
    const QByteArray right = answersOfBus(1);
    for (qsizetype length = 0; length <= right.size(); ++length) {
        std::thread bus([&] { serve(right.left(length)); });
        const NameOnBus said = askBusFor("org.example.Name", address, 20s);
        EXPECT_EQ(said == NameOnBus::taken, length == right.size()) << length;
        bus.join();
    }
    for (const QByteArray& nonsense :
         {QByteArray("REJECTED EXTERNAL\r\n"), QByteArray("\r\n\r\n"),
          "OK 0\r\n" + QByteArray(100, '\xFF'), "OK 0\r\n" + QByteArray(100, 'l')}) {
        std::thread bus([&] { serve(nonsense); });
        EXPECT_NE(askBusFor("org.example.Name", address, 20s), NameOnBus::taken);
        bus.join();
    }
}

TEST_F(BusProbeTest, oneThatOnlyTakesTheConnectionSaysNothing)
{
    listen();
    EXPECT_EQ(askBusFor("a.b", address, 1ms), NameOnBus::unsaid);
    EXPECT_EQ(askBusFor("a.b", "unix:path=/nobody/there;" + address, 1ms), NameOnBus::unsaid);
}

TEST_F(BusProbeTest, whereNobodyListensTheNameIsFree)
{
    for (const QByteArray& other :
         {QByteArray(), QByteArray("unix:path=/nobody/there"), QByteArray("nonsense"),
          QByteArray("tcp:host=localhost"), QByteArray("unix:"), QByteArray(";;"),
          "unix:path=" + QByteArray(500, 'x'), QByteArray("unix:abstract=nobody%")})
        EXPECT_EQ(askBusFor("a.b", other, 1ms), NameOnBus::free) << other.toStdString();
}

TEST(SessionBusAddressTest, itIsTheEnvironmentsOrThatOfTheUsersFolder)
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:abstract=x");
    qputenv("XDG_RUNTIME_DIR", "/run/a user");
    EXPECT_EQ(sessionBusAddress(), "unix:abstract=x");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_EQ(sessionBusAddress(), "unix:path=/run/a%20user/bus");
    qunsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(sessionBusAddress(), "");
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    qputenv("XDG_RUNTIME_DIR", folder);
}
