#include "platform/SessionBus.h"

#include "FakeBus.h"
#include "support/Application.h"
#include "support/Waiting.h"

#include <QProcess>

#include <thread>

using namespace std::chrono_literals;

class SessionBusTest : public testing::Test
{
protected:
    /// Notes what is told of the bus.
    void follow(SessionBus& sessionBus)
    {
        sessionBus.follow(&context, [this](const QDBusConnection& connection) {
            told.append(connection.isConnected());
        });
    }

    /// Starts a real bus.
    void startDaemon()
    {
        daemon.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"),
             QStringLiteral("--print-address"),
             QStringLiteral("--address=unix:path=") + folder.filePath(QStringLiteral("bus"))});
        ASSERT_TRUE(waitUntil([this] { return daemon.canReadLine(); }));
        address = daemon.readLine().trimmed();
    }

    ~SessionBusTest() override
    {
        daemon.kill();
        daemon.waitForFinished();
    }

    Application application;
    QObject context;
    QList<bool> told; ///< each time, whether there was a connection
    int greetings = 0;
    SessionBus::Use greet = [this](const QDBusConnection&) { ++greetings; };
    QTemporaryDir folder;
    QProcess daemon;
    QByteArray address;
};

TEST_F(SessionBusTest, aSilentBusIsNoneAtOnceAndDoesNotHoldUpTheEnd)
{
    FakeBus silent;
    silent.listen();
    {
        SessionBus sessionBus(greet, SilentBus{silent.address(), 1h, 1h});
        sessionBus.connectToBus();
        follow(sessionBus);
        EXPECT_EQ(told, QList<bool>{false});
        const int connection = silent.accept();
        FakeBus::hear(connection);
        EXPECT_FALSE(sessionBus.waitUntilGreeted(1ms));
        ::close(connection);
    }
    EXPECT_EQ(told, QList<bool>{false});
    EXPECT_EQ(greetings, 0);
}

TEST_F(SessionBusTest, aSilentBusThatAnswersIsGreetedAndTold)
{
    startDaemon();
    SessionBus sessionBus(greet, SilentBus{address});
    follow(sessionBus);
    EXPECT_EQ(told, QList<bool>{false});
    sessionBus.connectToBus();
    sessionBus.connectToBus();
    EXPECT_TRUE(sessionBus.waitUntilGreeted(20s));
    EXPECT_EQ(greetings, 1);
    EXPECT_TRUE(waitUntil([this] { return told.size() == 2; }));
    EXPECT_EQ(told, (QList<bool>{false, true}));
    follow(sessionBus);
    EXPECT_EQ(told, (QList<bool>{false, true, true})) << "it is there already";
    EXPECT_EQ(greetings, 1);
}

TEST_F(SessionBusTest, aContextThatIsGoneIsToldNothing)
{
    startDaemon();
    SessionBus sessionBus(greet, SilentBus{address});
    auto gone = std::make_unique<QObject>();
    sessionBus.follow(gone.get(), [this](const QDBusConnection&) { told.append(true); });
    gone.reset();
    told.clear();
    follow(sessionBus);
    sessionBus.connectToBus();
    EXPECT_TRUE(waitUntil([this] { return told.size() == 2; }));
    EXPECT_EQ(told, (QList<bool>{false, true}));
}

/// Qt waits for it then, and cannot be stopped.
TEST_F(SessionBusTest, aBusThatFallsSilentAgainHoldsUpTheEndForAMomentOnly)
{
    FakeBus bus;
    bus.listen();
    const auto token = std::make_shared<int>();
    int connection = -1;
    {
        SessionBus sessionBus([this, own = token](const QDBusConnection& to) { greet(to); },
                              SilentBus{bus.address(), 1h, 1h});
        sessionBus.connectToBus();
        bus.serve(FakeBus::answers(false));
        connection = bus.accept();
        FakeBus::hear(connection);
    }
    EXPECT_EQ(greetings, 0);
    ::close(connection);
    EXPECT_TRUE(waitUntil([&] { return token.use_count() == 1; }));
    EXPECT_EQ(greetings, 0);
}

TEST_F(SessionBusTest, withoutABusThatIsToldOnce)
{
    const QByteArray before = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nobody/there");
    {
        SessionBus sessionBus(greet);
        follow(sessionBus);
        EXPECT_EQ(told, QList<bool>());
        sessionBus.connectToBus();
        EXPECT_TRUE(sessionBus.waitUntilGreeted(20s));
        EXPECT_TRUE(waitUntil([this] { return told.size() == 1; }));
        EXPECT_EQ(told, QList<bool>{false});
        EXPECT_EQ(greetings, 0);
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", before);
}

TEST_F(SessionBusTest, whatIsNotBegunNeedsNoEnd)
{
    SessionBus sessionBus(greet);
    follow(sessionBus);
    EXPECT_EQ(told, QList<bool>());
}
