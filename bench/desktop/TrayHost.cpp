#include "bench/desktop/TrayHost.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <stdexcept>

namespace {

const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");

} // namespace

TrayHost::TrayHost(const QByteArray& busAddress)
    : m_bus(QDBusConnection::connectToBus(QString::fromLatin1(busAddress), QStringLiteral("tray")))
{
    m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                         QDBusConnection::ExportAllProperties |
                             QDBusConnection::ExportScriptableInvokables);
    setPresent(true);
}

TrayHost::~TrayHost()
{
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void TrayHost::setPresent(bool present)
{
    if (present == m_present)
        return;
    m_present = present;
    m_title.clear();
    const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
    if (!(present ? m_bus.registerService(name) : m_bus.unregisterService(name)))
        throw std::runtime_error("no tray on the session bus");
}

void TrayHost::RegisterStatusNotifierItem(const QString& service)
{
    m_bus.connect(service, itemPath, itemInterface, QStringLiteral("NewTitle"), this,
                  SLOT(readTitle(QDBusMessage)));
    m_title.clear();
    readTitleOf(service);
}

void TrayHost::readTitle(const QDBusMessage& announcement)
{
    readTitleOf(announcement.service());
}

void TrayHost::readTitleOf(const QString& service)
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        service, itemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    question << itemInterface << QStringLiteral("Title");
    auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> title = *answer;
        if (title.isValid() && !title.value().variant().toString().isEmpty()) {
            m_title = title.value().variant().toString();
            ++m_titlesRead;
        }
        answer->deleteLater();
    });
}
