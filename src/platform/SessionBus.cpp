#include "platform/SessionBus.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto connectionName = "vantora";

std::atomic<bool> leftThread = false;

QDBusConnection connectTo(const std::optional<SilentBus>& silent)
{
    const QLatin1String name(connectionName);
    // Qt and its bus library remember for ever that there was no session bus, so one that answers
    // late is reached by its address.
    return silent ? QDBusConnection::connectToBus(QString::fromUtf8(silent->address), name)
                  : QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}

} // namespace

/// What the thread does, and how far it is.
struct SessionBus::Attempt
{
    enum class Stage { waiting, connecting, greeting, done };

    Use greet;
    std::mutex mutex; ///< of what follows
    std::condition_variable changed;
    Stage stage = Stage::waiting;
    SessionBus* owner = nullptr; ///< null once it is gone

    void run(const std::optional<SilentBus>& silent, const std::stop_token& stop)
    {
        if (silent && !silent->waitForAnswer(stop))
            return;
        if (!reach(Stage::connecting))
            return;
        const QDBusConnection bus = connectTo(silent);
        if (!reach(Stage::greeting))
            return;
        if (greet && bus.isConnected())
            greet(bus);
        reach(Stage::done);
    }

    /// False when nobody wants that any more.
    bool reach(Stage next)
    {
        const std::lock_guard lock(mutex);
        if (!owner)
            return false;
        stage = next;
        changed.notify_all();
        if (stage == Stage::done)
            QMetaObject::invokeMethod(owner, &SessionBus::settle, Qt::QueuedConnection);
        return true;
    }

    /// Lets go of the owner, unless the thread is past connecting. Waits a moment for that. Returns
    /// how far it is.
    Stage abandon()
    {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, 1s, [this] { return stage != Stage::connecting; });
        if (stage <= Stage::connecting)
            owner = nullptr;
        return stage;
    }
};

SessionBus::SessionBus(Use greet, std::optional<SilentBus> silent)
    : m_silent(std::move(silent))
    , m_attempt(std::make_shared<Attempt>())
{
    m_attempt->greet = std::move(greet);
    m_attempt->owner = this;
}

void SessionBus::connectToBus()
{
    if (m_thread.joinable())
        return;
    m_thread = std::jthread([attempt = m_attempt, silent = m_silent](const std::stop_token& stop) {
        attempt->run(silent, stop);
    });
}

SessionBus::~SessionBus()
{
    if (!m_thread.joinable())
        return;
    m_thread.request_stop();
    const Attempt::Stage stage = m_attempt->abandon();
    // A bus that has fallen silent just now is left alone, and the thread with it.
    if (stage == Attempt::Stage::connecting) {
        leftThread = true;
        m_thread.detach();
        return;
    }
    m_thread.join();
    if (stage > Attempt::Stage::connecting)
        QDBusConnection::disconnectFromBus(QLatin1String(connectionName));
}

bool SessionBus::isStuck()
{
    return leftThread;
}

bool SessionBus::waitUntilGreeted(std::chrono::milliseconds atMost) const
{
    std::unique_lock lock(m_attempt->mutex);
    return m_attempt->changed.wait_for(lock, atMost,
                                       [this] { return m_attempt->stage == Attempt::Stage::done; });
}

void SessionBus::follow(QObject* context, const Use& use)
{
    const auto tell = [use] { use(QDBusConnection(QLatin1String(connectionName))); };
    if (m_isSettled)
        return tell();
    if (m_silent)
        use(QDBusConnection(QString()));
    connect(this, &SessionBus::settled, context, tell);
}

void SessionBus::settle()
{
    m_isSettled = true;
    Q_EMIT settled();
}
