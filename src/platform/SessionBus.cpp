#include "platform/SessionBus.h"

#include <QThread>

void connectToSessionBus(QObject* context, std::function<void(QDBusConnection)> connected)
{
    static constexpr auto name = "vantora";
    // Not owned by anybody: at the end of the process a bus that does not answer is left alone.
    QThread* thread = QThread::create(
        [] { QDBusConnection::connectToBus(QDBusConnection::SessionBus, QLatin1String(name)); });
    QObject::connect(thread, &QThread::finished, context, [connected = std::move(connected)] {
        connected(QDBusConnection(QLatin1String(name)));
    });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}
