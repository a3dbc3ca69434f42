#include "bench/desktop/MapWatch.h"
#include "bench/desktop/ProcessFigures.h"
#include "bench/desktop/Program.h"
#include "bench/desktop/Table.h"
#include "bench/desktop/TrayHost.h"
#include "bench/desktop/Waiting.h"
#include "bench/desktop/World.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

constexpr int startRuns = 21;
constexpr int memoryRuns = 5;
constexpr auto startTakesAtMost = 30s;
constexpr auto settledAfter = 3s;
constexpr auto betweenRuns = 250ms;
constexpr std::chrono::seconds usualCountdown = 30s;

constexpr double highestStartRatio = 1.3;
constexpr double highestMemoryRatio = 1.4;
constexpr double highestCpuPercent = 0.3;

constexpr auto vantora = VANTORA_PROGRAM;
constexpr auto emptyWindow = EMPTY_WINDOW_PROGRAM;

double milliseconds(std::chrono::nanoseconds time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Waits in the presence of a program. One that has ended has no figures.
void waitBeside(const Program& program, std::chrono::milliseconds time)
{
    if (waitUntil([&] { return program.hasEnded(); }, time))
        throw std::runtime_error("a program ended before it was measured");
}

std::chrono::nanoseconds waitForWindow(const MapWatch& watch, const Program& program)
{
    const auto mapped = [&] { return watch.mappedAt(program.pid()).has_value(); };
    if (!waitUntil([&] { return mapped() || program.hasEnded(); }, startTakesAtMost) || !mapped())
        throw std::runtime_error("a program shows no window");
    return *watch.mappedAt(program.pid()) - program.startedAt();
}

struct StartFigures
{
    std::vector<double> times; ///< in ms, from the start of the process to its window's map
    std::vector<double> cpuTimes;

    void addRun(const MapWatch& watch, const char* path)
    {
        const Program program({path});
        times.push_back(milliseconds(waitForWindow(watch, program)));
        cpuTimes.push_back(milliseconds(cpuTimeOf(program.pid())));
    }
};

void compareStarts(const MapWatch& watch)
{
    // The first runs fill caches.
    StartFigures().addRun(watch, vantora);
    StartFigures().addRun(watch, emptyWindow);
    StartFigures own;
    StartFigures reference;
    for (int run = 0; run < startRuns; ++run) {
        waitFor(betweenRuns);
        own.addRun(watch, vantora);
        waitFor(betweenRuns);
        reference.addRun(watch, emptyWindow);
    }
    Table table("Start, from exec to the window's map; " + std::to_string(startRuns) + " runs");
    table.add({.figure = "Time, median, ms",
               .value = median(own.times),
               .reference = median(reference.times),
               .decimals = 1,
               .highestRatio = highestStartRatio});
    table.add({.figure = "Time, shortest, ms",
               .value = *std::ranges::min_element(own.times),
               .reference = *std::ranges::min_element(reference.times),
               .decimals = 1});
    table.add({.figure = "Processor time, median, ms",
               .value = median(own.cpuTimes),
               .reference = median(reference.cpuTimes),
               .decimals = 1});
    table.print();
}

struct MemoryRuns
{
    std::vector<double> anonymous; ///< kB
    std::vector<double> proportional;

    void addRun(const MapWatch& watch, const char* path)
    {
        const Program program({path});
        waitForWindow(watch, program);
        waitBeside(program, settledAfter);
        const MemoryFigures figures = memoryOf(program.pid());
        anonymous.push_back(static_cast<double>(figures.anonymous));
        proportional.push_back(static_cast<double>(figures.proportional));
    }
};

void compareMemory(const MapWatch& watch)
{
    MemoryRuns own;
    MemoryRuns reference;
    for (int run = 0; run < memoryRuns; ++run) {
        own.addRun(watch, vantora);
        reference.addRun(watch, emptyWindow);
    }
    Table table("Memory, some seconds after the start; " + std::to_string(memoryRuns) + " runs");
    table.add({.figure = "Private (anonymous pages), median, kB",
               .value = median(own.anonymous),
               .reference = median(reference.anonymous),
               .highestRatio = highestMemoryRatio});
    table.add({.figure = "Proportional (Pss), median, kB",
               .value = median(own.proportional),
               .reference = median(reference.proportional)});
    table.print();
}

struct Activity
{
    double cpuTime = 0; ///< ms
    double wakeUps = 0;

    static Activity of(const Program& program)
    {
        return {milliseconds(cpuTimeOf(program.pid())),
                static_cast<double>(wakeUpsOf(program.pid()))};
    }
};

void compareActivity(const MapWatch& watch, const TrayHost& tray, std::chrono::seconds countdown)
{
    const Program own({vantora});
    const Program reference({emptyWindow});
    waitForWindow(watch, own);
    waitForWindow(watch, reference);
    waitBeside(own, settledAfter);

    const auto start = Program::Clock::now();
    const int titlesBefore = tray.titlesRead();
    const Activity ownBefore = Activity::of(own);
    const Activity referenceBefore = Activity::of(reference);
    waitBeside(own, countdown);
    const double time = milliseconds(Program::Clock::now() - start);
    const int titles = tray.titlesRead() - titlesBefore;
    const Activity ownAfter = Activity::of(own);
    const Activity referenceAfter = Activity::of(reference);

    const double ownCpu = ownAfter.cpuTime - ownBefore.cpuTime;
    const double referenceCpu = referenceAfter.cpuTime - referenceBefore.cpuTime;
    Table table("Countdown running for " + std::to_string(countdown.count()) +
                " s; the tray read " + std::to_string(titles) + " titles");
    table.add({.figure = "Processor time, ms",
               .value = ownCpu,
               .reference = referenceCpu,
               .decimals = 1});
    table.add({.figure = "Processor time, % of one core",
               .value = 100 * ownCpu / time,
               .reference = 100 * referenceCpu / time,
               .decimals = 3,
               .highestValue = highestCpuPercent});
    table.add({.figure = "Wake-ups of all threads per second",
               .value = 1000 * (ownAfter.wakeUps - ownBefore.wakeUps) / time,
               .reference = 1000 * (referenceAfter.wakeUps - referenceBefore.wakeUps) / time,
               .decimals = 1});
    table.print();
}

void run(std::chrono::seconds countdown)
{
    const World world;
    const MapWatch watch;
    if (!waitUntil([&] { return watch.isManaged(); }, startTakesAtMost))
        throw std::runtime_error("openbox does not start");
    QThread::sleep(1); // while it goes on starting, it may overlook a window
    const TrayHost tray(world.busAddress());

    double load = 0;
    getloadavg(&load, 1);
    std::printf("## The program beside an empty window\n\n"
                "Load of the machine before: %.2f\n",
                load);
    compareStarts(watch);
    compareMemory(watch);
    compareActivity(watch, tray, countdown);
}

} // namespace

/// desktop_bench [SECONDS]: the time the countdown is watched for, 30 unless given.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    endWaitsOnSignals();
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 0;
    try {
        run(seconds > 0 ? std::chrono::seconds(seconds) : usualCountdown);
    } catch (const Interrupted&) {
        std::fprintf(stderr, "desktop_bench: interrupted\n");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "desktop_bench: %s\n", error.what());
    }
    return 0;
}
