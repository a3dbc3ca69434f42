#include "platform/ApplicationService.h"

#include <QDBusMessage>

namespace {

/// Time enough for a program that is busy; one that is stopped gets the call when it goes on.
constexpr int answerTime = 2000; ///< ms

bool takeName(QDBusConnection& bus)
{
    constexpr uint doNotQueue = 4;
    constexpr uint primaryOwner = 1;
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    request << QString::fromLatin1(ApplicationService::name) << doNotQueue;
    const QDBusMessage answer = bus.call(request, QDBus::Block, answerTime);
    // A bus that gives no names has given none to another program either.
    return answer.type() != QDBusMessage::ReplyMessage ||
           answer.arguments().value(0).toUInt() == primaryOwner;
}

/// What a launcher has given this start, so that the running program may come to the front.
QVariantMap platformData()
{
    QVariantMap data;
    const auto take = [&data](const char* variable, const QString& key) {
        if (const QString value = qEnvironmentVariable(variable); !value.isEmpty())
            data.insert(key, value);
    };
    take("DESKTOP_STARTUP_ID", QStringLiteral("desktop-startup-id"));
    take("XDG_ACTIVATION_TOKEN", QStringLiteral("activation-token"));
    return data;
}

} // namespace

void ApplicationService::claim(QDBusConnection bus)
{
    // The object first: whoever sees the name may call at once.
    bus.registerObject(QLatin1String(path), this, QDBusConnection::ExportScriptableSlots);
    if (takeName(bus))
        return;
    bus.unregisterObject(QLatin1String(path));
    m_isSecond = true;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QLatin1String(name), QLatin1String(path), QStringLiteral("org.freedesktop.Application"),
        QStringLiteral("Activate"));
    call << platformData();
    bus.call(call, QDBus::Block, answerTime);
    Q_EMIT becameSecond();
}

void ApplicationService::Activate(const QVariantMap&)
{
    Q_EMIT activated();
}

void ApplicationService::Open(const QStringList&, const QVariantMap&)
{
    // There is nothing to open, but it asks for the program.
    Q_EMIT activated();
}

void ApplicationService::ActivateAction(const QString& action, const QVariantList&,
                                        const QVariantMap&)
{
    Q_EMIT actionActivated(action);
}
