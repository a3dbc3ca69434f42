#include "bench/desktop/Activity.h"

#include "bench/desktop/ProcessFigures.h"
#include "bench/desktop/WindowWatch.h"

ActivityMeter::ActivityMeter(const Program& program, WindowWatch& watch)
    : m_program(program)
    , m_watch(watch)
    , m_start(count())
{}

Activity ActivityMeter::activity() const
{
    const Counts end = count();
    const std::chrono::duration<double> time = end.at - m_start.at;
    const std::chrono::duration<double> cpuTime = end.cpuTime - m_start.cpuTime;
    // Threads may have come and gone.
    qint64 wakeUps = 0;
    for (auto thread = end.wakeUps.begin(); thread != end.wakeUps.end(); ++thread)
        wakeUps += thread.value() - m_start.wakeUps.value(thread.key());
    return {.cpuTime = 1000 * cpuTime.count(),
            .cpuPercent = 100 * cpuTime / time,
            .wakeUps = static_cast<double>(wakeUps) / time.count(),
            .frames = static_cast<double>(end.frames - m_start.frames) / time.count()};
}

ActivityMeter::Counts ActivityMeter::count() const
{
    return {Program::Clock::now(), cpuTimeOf(m_program.pid()), wakeUpsOf(m_program.pid()),
            m_watch.framesOf(m_program)};
}
