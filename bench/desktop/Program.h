#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>
#include <sys/types.h>

/// A program that runs as long as this object lives. Its output is not shown.
class Program
{
public:
    using Clock = std::chrono::steady_clock;

    /// Starts `command`, looked up in PATH, with the environment of this process.
    explicit Program(QByteArrayList command);
    ~Program();

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    pid_t pid() const { return m_pid; }
    Clock::time_point startedAt() const { return m_startedAt; }

    bool hasEnded() const;

    /// Waits beside the running program. Throws when it ends: then it has no figures.
    void waitBeside(std::chrono::milliseconds time) const;

    /// Waits for its end; throws when it failed.
    void waitForEnd() const;

    /// Waits for the next line of its standard output; empty when it ended without one.
    QByteArray readLine() const;

private:
    pid_t m_pid = -1;
    int m_output = -1;
    Clock::time_point m_startedAt;
};
