#pragma once

#include <QDBusConnection>
#include <QObject>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

class QThread;

/// The program's connection to the session bus. Greeting the bus waits for its answers, so that is
/// done on another thread.
class SessionBus : public QObject
{
    Q_OBJECT

public:
    using Use = std::function<void(QDBusConnection)>;

    /// `greet` is called on the other thread with the connection, unless there is no bus.
    explicit SessionBus(Use greet = {});

    /// Waits a moment for a bus that is about to answer: what Qt connects with goes at the end of
    /// the process.
    ~SessionBus() override;

    /// Begins to connect. A second call does nothing.
    void connectToBus();

    /// Waits until the bus was greeted, or it is clear that there is none. False if that takes
    /// longer than `atMost`.
    bool waitUntilGreeted(std::chrono::milliseconds atMost) const;

    /// Calls `use` on the thread of `context`, as soon as the bus was greeted, with the connection,
    /// or with one that isConnected() denies when there is no bus. Nothing is called once `context`
    /// is gone.
    void whenGreeted(QObject* context, Use use);

private:
    std::shared_ptr<std::atomic<bool>>
        m_greeted; ///< shared with the thread, which may outlive this
    std::unique_ptr<QThread> m_thread;
    bool m_started = false;
};
