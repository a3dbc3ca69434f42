#pragma once

#include "platform/SilentBus.h"

#include <QDBusConnection>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

/// The program's connection to the session bus. Greeting the bus waits for its answers, so that is
/// done on another thread; and a bus that is silent is waited for there, for as long as it takes.
class SessionBus : public QObject
{
    Q_OBJECT

public:
    using Use = std::function<void(QDBusConnection)>;

    /// `greet` is called on the other thread with the connection, unless there is no bus; it takes
    /// some seconds at most. Of a bus that has not answered before, `silent` tells.
    explicit SessionBus(Use greet = {}, std::optional<SilentBus> silent = {});

    /// Ends what waits for the bus. It lets `greet` finish, and waits a moment for a connection
    /// that is being made.
    ~SessionBus() override;

    /// Whether a connection was still being made when its object went. A process that ends in the
    /// usual way would wait for it, maybe for ever.
    static bool isStuck();

    /// Begins to connect. A second call does nothing.
    void connectToBus();

    /// Waits until the bus was greeted, or it is clear that there is none. False if that takes
    /// longer than `atMost`.
    bool waitUntilGreeted(std::chrono::milliseconds atMost) const;

    /// Calls `use` on this thread with the connection as soon as the bus was greeted, or with one
    /// that isConnected() denies when there is no bus. A silent bus is both: it is none at once,
    /// and another call tells of it when it has answered. Nothing is called once `context` is gone.
    void follow(QObject* context, const Use& use);

Q_SIGNALS:
    /// The bus was greeted, or there is none.
    void settled();

private:
    struct Attempt;

    void settle();

    std::optional<SilentBus> m_silent;
    std::shared_ptr<Attempt> m_attempt; ///< shared with the thread, which may outlive this
    std::jthread m_thread;
    bool m_isSettled = false;
};
