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
    if (!m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                              QDBusConnection::ExportAllProperties |
                                  QDBusConnection::ExportScriptableInvokables) ||
        !m_bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"))) {
        QDBusConnection::disconnectFromBus(m_bus.name());
        throw std::runtime_error("no tray on the session bus");
    }
}

TrayHost::~TrayHost()
{
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void TrayHost::RegisterStatusNotifierItem(const QString& service)
{
    m_bus.connect(service, itemPath, itemInterface, QStringLiteral("NewTitle"), this,
                  SLOT(readTitle(QDBusMessage)));
}

void TrayHost::readTitle(const QDBusMessage& announcement)
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        announcement.service(), itemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    question << itemInterface << QStringLiteral("Title");
    auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> title = *answer;
        if (title.isValid() && !title.value().variant().toString().isEmpty())
            ++m_titlesRead;
        answer->deleteLater();
    });
}
