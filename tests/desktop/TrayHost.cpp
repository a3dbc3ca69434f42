#include "TrayHost.h"

#include "support/Waiting.h"

#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPoint>

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuPath = QStringLiteral("/MenuBar");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

/// Connections of Qt have names that are never given twice.
QString freshName()
{
    static int count = 0;
    return QStringLiteral("host %1").arg(++count);
}

} // namespace

TrayHost::TrayHost(const QString& busAddress)
    : m_bus(QDBusConnection::connectToBus(busAddress, freshName()))
{
    registerStatusNotifierTypes();
    registerBusMenuTypes();
    m_bus.registerVirtualObject(watcherPath, this);
    for (const QString& name : {QStringLiteral("NewTitle"), QStringLiteral("NewIcon"),
                                QStringLiteral("NewToolTip"), QStringLiteral("XAyatanaNewLabel")})
        m_bus.connect(QString(), itemPath, itemInterface, name, this,
                      SLOT(noteSignal(QDBusMessage)));
    for (const QString& name :
         {QStringLiteral("ItemsPropertiesUpdated"), QStringLiteral("LayoutUpdated")})
        m_bus.connect(QString(), menuPath, menuInterface, name, this,
                      SLOT(noteSignal(QDBusMessage)));
}

TrayHost::~TrayHost()
{
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void TrayHost::start(bool ready)
{
    m_ready = ready;
    m_wasAsked = false;
    m_item.clear();
    m_signals.clear();
    m_bus.registerService(watcherService);
}

void TrayHost::stop()
{
    m_bus.unregisterService(watcherService);
}

void TrayHost::becomeReady()
{
    m_ready = true;
    m_bus.send(QDBusMessage::createSignal(watcherPath, watcherService,
                                          QStringLiteral("StatusNotifierHostRegistered")));
}

bool TrayHost::handleMessage(const QDBusMessage& message, const QDBusConnection& bus)
{
    if (message.arguments().value(1) == QStringLiteral("IsStatusNotifierHostRegistered")) {
        bus.send(message.createReply(QVariant::fromValue(QDBusVariant(m_ready))));
        m_wasAsked = true;
        return true;
    }
    if (message.member() != QStringLiteral("RegisterStatusNotifierItem"))
        return false;
    m_item = message.arguments().value(0).toString();
    m_items.insert(m_item);
    bus.send(message.createReply());
    return true;
}

QDBusMessage TrayHost::call(const QString& path, const QString& interface, const QString& method,
                            const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_item, path, interface, method);
    message.setArguments(arguments);
    // The program may have a question for us first. Qt's own way to go on meanwhile misses an
    // answer now and then, and waits for ever.
    const QDBusPendingCall answer = m_bus.asyncCall(message);
    if (!waitUntil([&] { return answer.isFinished(); }))
        return {};
    // Signals that were sent before it are still on their way to us.
    QCoreApplication::processEvents();
    return answer.reply();
}

QVariant TrayHost::read(const QString& property)
{
    const QDBusMessage reply = call(itemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                    QStringLiteral("Get"), {itemInterface, property});
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

void TrayHost::activate(const QString& method, QPoint at)
{
    call(itemPath, itemInterface, method, {at.x(), at.y()});
}

QDBusMessage TrayHost::callMenu(const QString& method, const QVariantList& arguments)
{
    return call(menuPath, menuInterface, method, arguments);
}

BusMenuLayout TrayHost::openMenu()
{
    callMenu(QStringLiteral("AboutToShow"), {0});
    const QDBusMessage reply = callMenu(QStringLiteral("GetLayout"), {0, -1, QStringList()});
    return qdbus_cast<BusMenuLayout>(reply.arguments().value(1));
}

bool TrayHost::clickLine(const QString& label)
{
    for (const BusMenuLayout& line : openMenu().children) {
        if (line.properties.value(QStringLiteral("label")) != label ||
            !line.properties.value(QStringLiteral("visible")).toBool())
            continue;
        callMenu(QStringLiteral("Event"),
                 {line.id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0U});
        return true;
    }
    return false;
}
