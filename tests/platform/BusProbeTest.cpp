#include "platform/BusProbe.h"

#include "FakeBus.h"

#include <thread>

using namespace std::chrono_literals;

TEST(BusProbeTest, itHearsWhetherTheNameIsOwned)
{
    FakeBus bus;
    bus.listen();
    for (const bool isOwned : {false, true}) {
        std::thread thread([&] { bus.serve(FakeBus::answers(isOwned)); });
        EXPECT_EQ(askBusFor("org.example.Name", bus.address(), 20s),
                  isOwned ? NameOnBus::taken : NameOnBus::free);
        thread.join();
        EXPECT_EQ(bus.greeting, '\0' + QByteArray("AUTH EXTERNAL ") +
                                    QByteArray::number(::getuid()).toHex() + "\r\n");
        EXPECT_TRUE(bus.question.startsWith("BEGIN\r\nl"));
        EXPECT_TRUE(bus.question.endsWith(QByteArray("\x10\0\0\0org.example.Name\0", 21)));
    }
}

TEST(BusProbeTest, whateverTheBusSaysItComesToAnEnd)
{
    FakeBus bus;
    bus.listen();
    const QByteArray right = FakeBus::answers(true);
    for (qsizetype length = 0; length <= right.size(); ++length) {
        std::thread thread([&] { bus.serve(right.left(length)); });
        const NameOnBus said = askBusFor("org.example.Name", bus.address(), 20s);
        EXPECT_EQ(said == NameOnBus::taken, length == right.size()) << length;
        thread.join();
    }
    for (const QByteArray& nonsense :
         {QByteArray("REJECTED EXTERNAL\r\n"), QByteArray("\r\n\r\n"),
          "OK 0\r\n" + QByteArray(100, '\xFF'), "OK 0\r\n" + QByteArray(100, 'l')}) {
        std::thread thread([&] { bus.serve(nonsense); });
        EXPECT_NE(askBusFor("org.example.Name", bus.address(), 20s), NameOnBus::taken);
        thread.join();
    }
}

TEST(BusProbeTest, oneThatOnlyTakesTheConnectionSaysNothing)
{
    FakeBus bus;
    bus.listen();
    EXPECT_EQ(askBusFor("a.b", bus.address(), 1ms), NameOnBus::unsaid);
    EXPECT_EQ(askBusFor("a.b", "unix:path=/nobody/there;" + bus.address(), 1ms), NameOnBus::unsaid);
}

TEST(BusProbeTest, oneThatHasNoRoomForAnotherConnectionSaysNothing)
{
    FakeBus bus;
    bus.listen(0); // one waits
    EXPECT_EQ(askBusFor("a.b", bus.address(), 1ms), NameOnBus::unsaid);
    EXPECT_EQ(askBusFor("a.b", bus.address(), 1h), NameOnBus::unsaid);
}

TEST(BusProbeTest, oneThatDoesNotStopTalkingIsNotHeardToTheEnd)
{
    FakeBus bus;
    bus.listen();
    for (const QByteArray& beginning : {QByteArray("OK "), QByteArray("OK 0123\r\n")}) {
        // More than the system keeps on the way.
        constexpr int most = 10'000;
        const QByteArray words(1000, 'l');
        int said = 0;
        std::thread thread([&] {
            const int connection = bus.accept();
            FakeBus::hear(connection);
            FakeBus::say(connection, beginning);
            if (beginning.endsWith('\n'))
                FakeBus::hear(connection);
            while (said < most && FakeBus::say(connection, words))
                ++said;
            ::close(connection);
        });
        EXPECT_EQ(askBusFor("a.b", bus.address(), 1h), NameOnBus::unsaid);
        thread.join();
        EXPECT_LT(said, most);
    }
}

TEST(BusProbeTest, theQuestionCanBeGivenUp)
{
    FakeBus bus;
    bus.listen();
    std::stop_source stop;
    NameOnBus said = NameOnBus::free;
    std::thread thread([&] { said = askBusFor("a.b", bus.address(), 1h, stop.get_token()); });
    const int connection = bus.accept();
    FakeBus::hear(connection); // it waits for an answer now
    stop.request_stop();
    thread.join();
    EXPECT_EQ(said, NameOnBus::unsaid);
    ::close(connection);
    EXPECT_EQ(askBusFor("a.b", bus.address(), 1h, stop.get_token()), NameOnBus::unsaid);
}

TEST(BusProbeTest, whereNobodyListensThereIsNoBus)
{
    for (const QByteArray& address :
         {QByteArray("unix:path=/nobody/there"), QByteArray("unix:abstract=nobody%"),
          QByteArray("unix:path=/nobody/there;unix:path=/dev/null"), FakeBus().address()})
        EXPECT_EQ(askBusFor("a.b", address, 1ms), NameOnBus::noBus) << address.toStdString();
}

TEST(BusProbeTest, atAnAddressThatItDoesNotUnderstandTheNameIsFree)
{
    for (const QByteArray& address :
         {QByteArray(), QByteArray("nonsense"), QByteArray("tcp:host=localhost"),
          QByteArray("unix:"), QByteArray(";;"), "unix:path=" + QByteArray(500, 'x'),
          QByteArray("unix:path=/nobody/there;tcp:host=localhost")})
        EXPECT_EQ(askBusFor("a.b", address, 1ms), NameOnBus::free) << address.toStdString();
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
