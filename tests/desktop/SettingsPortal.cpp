#include "SettingsPortal.h"

#include <QDBusMessage>
#include <QDBusMetaType>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

/// Connections of Qt have names that are never given twice.
QString freshName()
{
    static int count = 0;
    return QStringLiteral("portal %1").arg(++count);
}

} // namespace

SettingsPortal::SettingsPortal(const QString& busAddress)
    : m_bus(QDBusConnection::connectToBus(busAddress, freshName()))
{
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
    m_bus.registerVirtualObject(path, this);
}

SettingsPortal::~SettingsPortal()
{
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void SettingsPortal::start()
{
    m_bus.registerService(service);
}

void SettingsPortal::set(const QString& group, const QString& key, const QVariant& value)
{
    m_groups[group][key] = value;
    QDBusMessage changed =
        QDBusMessage::createSignal(path, settingsInterface, QStringLiteral("SettingChanged"));
    changed << group << key << QVariant::fromValue(QDBusVariant(value));
    m_bus.send(changed);
}

bool SettingsPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& bus)
{
    if (message.interface() != settingsInterface || message.member() != QStringLiteral("ReadAll"))
        return false;
    const QStringList wanted = message.arguments().value(0).toStringList();
    m_questions.append(wanted.join(u' '));
    QMap<QString, QVariantMap> answer;
    for (auto group = m_groups.begin(); group != m_groups.end(); ++group) {
        if (wanted.contains(group.key()))
            answer.insert(group.key(), group.value());
    }
    bus.send(message.createReply(QVariant::fromValue(answer)));
    return true;
}
