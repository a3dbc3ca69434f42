// The program as the desktop's launchers start it: over the bus, by its desktop entry.

#include "DesktopTest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QRegularExpression>

namespace {

const QString applicationId = QStringLiteral("io.github.vantora.Vantora");
const QString connectionName = QStringLiteral("desktop");

QString desktopEntry()
{
    return QString::fromUtf8(World::readFile(QStringLiteral(VANTORA_DESKTOP_ENTRY)));
}

} // namespace

class LauncherTest : public DesktopTest
{
protected:
    LauncherTest()
    {
        // Services of the user's are found as those of the system are.
        QByteArray service = World::readFile(QStringLiteral(VANTORA_BUS_SERVICE));
        service.replace("@program@", VANTORA_PROGRAM);
        world.writeFile(
            world.path(QStringLiteral("data/dbus-1/services/%1.service").arg(applicationId)),
            service);
        call(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig"), {});
        host.start();
    }

    ~LauncherTest() override
    {
        // The bus has started it, so the world does not know it.
        act(QStringLiteral("quit"));
        waitUntil([this] { return widget() == 0; });
        QDBusConnection::disconnectFromBus(connectionName);
    }

    void call(const QString& service, const QString& method, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            service, u'/' + QString(service).replace(u'.', u'/'),
            service == applicationId ? QStringLiteral("org.freedesktop.Application") : service,
            method);
        message.setArguments(arguments);
        const QDBusPendingCall answer =
            QDBusConnection::connectToBus(world.busAddress(), connectionName).asyncCall(message);
        EXPECT_TRUE(waitUntil([&] { return answer.isFinished(); }));
        EXPECT_FALSE(answer.isError()) << answer.error().message().toStdString();
    }

    void act(const QString& action)
    {
        call(applicationId, QStringLiteral("ActivateAction"),
             {action, QVariantList(), QVariantMap()});
    }
};

TEST_F(LauncherTest, theBusStartsIt)
{
    call(applicationId, QStringLiteral("Activate"), {QVariantMap()});
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_TRUE(
        waitUntil([this] { return host.title().startsWith(QStringLiteral("\U0001FA91 ")); }));
}

TEST_F(LauncherTest, anActionStartsItAndIsDone)
{
    act(QStringLiteral("skip"));
    EXPECT_TRUE(
        waitUntil([this] { return host.title().startsWith(QStringLiteral("\U0001F9CD ")); }));
}

TEST(DesktopEntryTest, offersTheActionsOfTheProgram)
{
    const QString entry = desktopEntry();
    static const QRegularExpression list(QStringLiteral("\nActions=(.*);\n"));
    EXPECT_EQ(list.match(entry).captured(1).toStdString(),
              "pause;skip;restart;toggle-widget;settings;logs");
    for (const QString& action : list.match(entry).captured(1).split(u';')) {
        EXPECT_TRUE(entry.contains(
            QStringLiteral("\nExec=gapplication action %1 %2\n").arg(applicationId, action)))
            << action.toStdString();
    }
    EXPECT_TRUE(entry.contains(QStringLiteral("\nDBusActivatable=true\n")));
}
