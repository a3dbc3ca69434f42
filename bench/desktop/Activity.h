#pragma once

#include "bench/desktop/Program.h"

#include <QHash>

class WindowWatch;

/// What a program did in a time.
struct Activity
{
    double cpuTime = 0;    ///< ms
    double cpuPercent = 0; ///< of one core
    double wakeUps = 0;    ///< of all threads, per second
    double frames = 0;     ///< per second
};

/// Measures what a program does from now on. Both the program and the watch outlive it.
class ActivityMeter
{
public:
    ActivityMeter(const Program& program, WindowWatch& watch);

    /// What it did until now.
    Activity activity() const;

private:
    struct Counts
    {
        Program::Clock::time_point at;
        std::chrono::nanoseconds cpuTime;
        QHash<QString, qint64> wakeUps; ///< by thread
        qint64 frames;
    };

    Counts count() const;

    const Program& m_program;
    WindowWatch& m_watch;
    Counts m_start;
};
