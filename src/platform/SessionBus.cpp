#include "platform/SessionBus.h"

#include <QThread>

#include <chrono>

using namespace std::chrono_literals;

void connectToSessionBus(QObject* context, std::function<void(QDBusConnection)> connected)
{
    static constexpr auto name = "vantora";
    QThread* thread = QThread::create(
        [] { QDBusConnection::connectToBus(QDBusConnection::SessionBus, QLatin1String(name)); });
    QObject::connect(thread, &QThread::finished, context, [connected = std::move(connected)] {
        connected(QDBusConnection(QLatin1String(name)));
    });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    // What the thread works with goes at the end of the process; a bus that does not answer may not
    // hold it up.
    QObject::connect(context, &QObject::destroyed, thread, [thread] { thread->wait(1s); });
    thread->start();
}
