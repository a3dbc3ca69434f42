#pragma once

#include "SilentServer.h"

#include <QString>

#include <atomic>
#include <limits>
#include <thread>
#include <vector>

/// A session bus that takes connections and says nothing until the test has it answer. Then it
/// hears all that it was told before.
class LateBus
{
public:
    /// Listens at `path`; what it says then comes from the bus at `realPath`.
    LateBus(const QString& path, QString realPath);
    ~LateBus();

    LateBus(const LateBus&) = delete;
    LateBus& operator=(const LateBus&) = delete;

    bool listens() const { return m_server.listens; }

    /// It answers from now on, so many connections; those that were given up do not count. Called
    /// once.
    void answer(int connections = std::numeric_limits<int>::max());

    /// Connections that it took after those.
    int unanswered() const { return m_unanswered; }

private:
    /// Both ends of one connection.
    struct Link
    {
        int program;
        int bus;
    };

    void pump(const std::stop_token& stop);
    void takeConnection();

    SilentServer m_server;
    QString m_realPath;
    std::atomic<int> m_unanswered = 0;
    // Of the thread.
    int m_toAnswer = 0;
    std::vector<Link> m_links;
    std::vector<int> m_held;
    std::jthread m_thread;
};
