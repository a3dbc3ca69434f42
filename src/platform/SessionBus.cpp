#include "platform/SessionBus.h"

#include <QThread>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto connectionName = "vantora";

QDBusConnection connection()
{
    return QDBusConnection(QLatin1String(connectionName));
}

} // namespace

SessionBus::SessionBus(Use greet)
    : m_greeted(std::make_shared<std::atomic<bool>>(false))
    , m_thread(QThread::create([greeted = m_greeted, greet = std::move(greet)] {
        const QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                                                  QLatin1String(connectionName));
        if (greet && bus.isConnected())
            greet(bus);
        *greeted = true;
    }))
{}

void SessionBus::connectToBus()
{
    if (!std::exchange(m_started, true))
        m_thread->start();
}

SessionBus::~SessionBus()
{
    if (!m_started)
        return;
    // A bus that does not answer is left alone, and the thread with it.
    if (!waitUntilGreeted(1s))
        static_cast<void>(m_thread.release());
    else
        QDBusConnection::disconnectFromBus(QLatin1String(connectionName));
}

bool SessionBus::waitUntilGreeted(std::chrono::milliseconds atMost) const
{
    return m_thread->wait(QDeadlineTimer(atMost));
}

void SessionBus::whenGreeted(QObject* context, Use use)
{
    // The thread may end between two of these lines.
    const auto call = [use = std::move(use), called = std::make_shared<bool>(false)] {
        if (!std::exchange(*called, true))
            use(connection());
    };
    connect(m_thread.get(), &QThread::finished, context, call);
    if (*m_greeted)
        QMetaObject::invokeMethod(context, call, Qt::QueuedConnection);
}
