// The program as a screen reader finds it, over the bus of assistive technology.

#include "DesktopTest.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusVariant>

namespace {

const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");

/// An object of a program: the program's name on the bus, and the object's path.
struct Accessible
{
    QString program;
    QString path;
};

} // namespace

class AccessibilityTest : public DesktopTest
{
protected:
    void SetUp() override
    {
        world.setVariable(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        world.start(QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
                    {QStringLiteral("--launch-immediately")});
        QString address;
        ASSERT_TRUE(waitUntil([&] {
            address = ask(QDBusConnection::connectToBus(world.busAddress(), sessionName),
                          {QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")},
                          QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"))
                          .value(0)
                          .toString();
            return !address.isEmpty();
        })) << "no bus for assistive technology";
        QDBusConnection::connectToBus(address, busName);
        startWithHost({});
    }

    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(busName);
        QDBusConnection::disconnectFromBus(sessionName);
    }

    static QVariantList ask(const QDBusConnection& bus, const Accessible& object,
                            const QString& interface, const QString& method,
                            const QVariantList& arguments = {})
    {
        QDBusMessage call =
            QDBusMessage::createMethodCall(object.program, object.path, interface, method);
        call.setArguments(arguments);
        const QDBusPendingCall answer = bus.asyncCall(call, 2000);
        waitUntil([&] { return answer.isFinished(); });
        return answer.reply().type() == QDBusMessage::ReplyMessage ? answer.reply().arguments()
                                                                   : QVariantList();
    }

    static QVariantList ask(const Accessible& object, const QString& interface,
                            const QString& method, const QVariantList& arguments = {})
    {
        return ask(QDBusConnection(busName), object, interface, method, arguments);
    }

    static QList<Accessible> childrenOf(const Accessible& object)
    {
        QList<Accessible> children;
        const QVariant answer =
            ask(object, accessibleInterface, QStringLiteral("GetChildren")).value(0);
        if (!answer.canConvert<QDBusArgument>())
            return children;
        const auto list = answer.value<QDBusArgument>();
        list.beginArray();
        while (!list.atEnd()) {
            Accessible child;
            QDBusObjectPath path;
            list.beginStructure();
            list >> child.program >> path;
            list.endStructure();
            child.path = path.path();
            children.append(child);
        }
        list.endArray();
        return children;
    }

    static QString nameOf(const Accessible& object)
    {
        return ask(object, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                   {accessibleInterface, QStringLiteral("Name")})
            .value(0)
            .value<QDBusVariant>()
            .variant()
            .toString();
    }

    static bool isSeen(const Accessible& object)
    {
        constexpr uint showing = 1U << 25U;
        const QVariant answer =
            ask(object, accessibleInterface, QStringLiteral("GetState")).value(0);
        return (qdbus_cast<QList<uint>>(answer).value(0) & showing) != 0;
    }

    /// What there is to be seen below this object of Vantora, by name.
    static void collect(const Accessible& object, QMap<QString, Accessible>& found)
    {
        for (const Accessible& child : childrenOf(object)) {
            if (!isSeen(child))
                continue;
            found.insert(nameOf(child), child);
            collect(child, found);
        }
    }

    static QMap<QString, Accessible> all()
    {
        QMap<QString, Accessible> found;
        for (const Accessible& program :
             childrenOf({QStringLiteral("org.a11y.atspi.Registry"), rootPath})) {
            if (nameOf(program) == QStringLiteral("Vantora"))
                collect(program, found);
        }
        return found;
    }

    static bool hasName(const QString& name)
    {
        return waitUntil([&] { return all().contains(name); });
    }

    static void press(const QString& name)
    {
        Accessible button;
        ASSERT_TRUE(waitUntil([&] {
            button = all().value(name);
            return !button.path.isEmpty();
        })) << name.toStdString();
        ask(button, QStringLiteral("org.a11y.atspi.Action"), QStringLiteral("DoAction"), {0});
    }

    inline static const QString sessionName = QStringLiteral("session");
    inline static const QString busName = QStringLiteral("assistive technology");
};

TEST_F(AccessibilityTest, theStateCanBeReadAndTheButtonsPressed)
{
    EXPECT_TRUE(hasName(QStringLiteral("Deep Work, 40 minutes left, running")));
    for (const char* name : {"Pause", "Skip to next phase", "Settings"})
        EXPECT_TRUE(hasName(QLatin1String(name))) << name;
    press(QStringLiteral("Pause"));
    EXPECT_TRUE(waitUntil([this] { return host.title().contains(u'⏸'); }));
    EXPECT_TRUE(hasName(QStringLiteral("Deep Work, 40 minutes left, paused")));
    press(QStringLiteral("Resume"));
    EXPECT_TRUE(waitUntil([this] { return !host.title().contains(u'⏸'); }));
}
