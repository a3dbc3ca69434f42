#include "bench/desktop/Activity.h"
#include "bench/desktop/ProcessFigures.h"
#include "bench/desktop/Program.h"
#include "bench/desktop/Programs.h"
#include "bench/desktop/SnapshotTime.h"
#include "bench/desktop/Table.h"
#include "bench/desktop/TrayHost.h"
#include "bench/desktop/Waiting.h"
#include "bench/desktop/WidgetStates.h"
#include "bench/desktop/WindowWatch.h"
#include "bench/desktop/World.h"
#include "bench/support/Timing.h"

#include <QGuiApplication>
#include <QStringList>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

constexpr int startRuns = 21;
constexpr int memoryRuns = 5;
constexpr auto managerStartsWithin = 30s;
constexpr auto settledAfter = 3s;
constexpr auto betweenRuns = 250ms;
constexpr std::chrono::seconds usualTime = 30s;

constexpr double highestStartRatio = 1.3;
constexpr double highestMemoryRatio = 1.5;
constexpr double highestCpuPercent = 1;

double milliseconds(std::chrono::nanoseconds time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// In ms, from the start of the process.
struct StartFigures
{
    std::vector<double> mapTimes;
    std::vector<double> frameTimes;
    std::vector<double> cpuTimes; ///< spent until the first frame

    void addRun(const WindowWatch& watch, const char* path)
    {
        const Program program({path});
        watch.waitForFrame(program);
        cpuTimes.push_back(milliseconds(cpuTimeOf(program.pid())));
        mapTimes.push_back(milliseconds(*watch.mappedAt(program) - program.startedAt()));
        frameTimes.push_back(milliseconds(*watch.drawnAt(program) - program.startedAt()));
    }
};

void compareStarts(const WindowWatch& watch)
{
    // The first runs fill caches.
    StartFigures().addRun(watch, programs::vantora);
    StartFigures().addRun(watch, programs::emptyWindow);
    StartFigures own;
    StartFigures reference;
    for (int run = 0; run < startRuns; ++run) {
        waitFor(betweenRuns);
        own.addRun(watch, programs::vantora);
        waitFor(betweenRuns);
        reference.addRun(watch, programs::emptyWindow);
    }
    Table table("Start, from exec on; " + std::to_string(startRuns) + " runs");
    table.add({.figure = "Window mapped, median, ms",
               .value = median(own.mapTimes),
               .reference = median(reference.mapTimes),
               .decimals = 1,
               .highestRatio = highestStartRatio});
    table.add({.figure = "First frame drawn, median, ms",
               .value = median(own.frameTimes),
               .reference = median(reference.frameTimes),
               .decimals = 1,
               .highestRatio = highestStartRatio});
    table.add({.figure = "First frame drawn, shortest, ms",
               .value = *std::ranges::min_element(own.frameTimes),
               .reference = *std::ranges::min_element(reference.frameTimes),
               .decimals = 1});
    table.add({.figure = "Processor time until then, median, ms",
               .value = median(own.cpuTimes),
               .reference = median(reference.cpuTimes),
               .decimals = 1});
    table.print();
}

struct MemoryRuns
{
    std::vector<double> anonymous; ///< kB
    std::vector<double> proportional;

    void addRun(const WindowWatch& watch, const char* path)
    {
        const Program program({path});
        watch.waitForFrame(program);
        program.waitBeside(settledAfter);
        const MemoryFigures figures = memoryOf(program.pid());
        anonymous.push_back(static_cast<double>(figures.anonymous));
        proportional.push_back(static_cast<double>(figures.proportional));
    }
};

void compareMemory(const WindowWatch& watch)
{
    MemoryRuns own;
    MemoryRuns reference;
    for (int run = 0; run < memoryRuns; ++run) {
        own.addRun(watch, programs::vantora);
        reference.addRun(watch, programs::emptyWindow);
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

void compareCountdown(WindowWatch& watch, const TrayHost& tray, std::chrono::seconds time)
{
    const Program own({programs::vantora});
    const Program reference({programs::emptyWindow});
    watch.waitForFrame(own);
    watch.waitForFrame(reference);
    own.waitBeside(settledAfter);

    const int titlesBefore = tray.titlesRead();
    const ActivityMeter ownMeter(own, watch);
    const ActivityMeter referenceMeter(reference, watch);
    own.waitBeside(time);
    const int titles = tray.titlesRead() - titlesBefore;
    const Activity ownActivity = ownMeter.activity();
    const Activity referenceActivity = referenceMeter.activity();

    Table table("Countdown running for " + std::to_string(time.count()) + " s; the tray read " +
                std::to_string(titles) + " titles");
    table.add({.figure = "Processor time, ms",
               .value = ownActivity.cpuTime,
               .reference = referenceActivity.cpuTime,
               .decimals = 1});
    table.add({.figure = "Processor time, % of one core",
               .value = ownActivity.cpuPercent,
               .reference = referenceActivity.cpuPercent,
               .decimals = 3,
               .highestValue = highestCpuPercent});
    table.add({.figure = "Wake-ups of all threads per second",
               .value = ownActivity.wakeUps,
               .reference = referenceActivity.wakeUps,
               .decimals = 1});
    table.print();
}

/// What is to be measured.
struct Order
{
    std::chrono::seconds time = usualTime;
    QStringList sections{QStringLiteral("start"), QStringLiteral("memory"),
                         QStringLiteral("countdown"), QStringLiteral("widget"),
                         QStringLiteral("snapshot")};
};

Order orderOf(QStringList arguments)
{
    Order order;
    arguments.removeFirst();
    if (!arguments.isEmpty() && arguments.first().toInt() > 0)
        order.time = std::chrono::seconds(arguments.takeFirst().toInt());
    for (const QString& section : std::as_const(arguments)) {
        if (!order.sections.contains(section))
            throw std::runtime_error("there is no section " + section.toStdString());
    }
    if (!arguments.isEmpty())
        order.sections = arguments;
    return order;
}

void measure(const Order& order)
{
    const World world;
    WindowWatch watch;
    if (!waitUntil([&] { return watch.isManaged(); }, managerStartsWithin))
        throw std::runtime_error("openbox does not start");
    QThread::sleep(1); // while it goes on starting, it may overlook a window
    TrayHost tray(world.busAddress());

    double load = 0;
    getloadavg(&load, 1);
    std::printf("## The program beside others\n\n"
                "Load of the machine before: %.2f\n",
                load);
    for (const QString& section : order.sections) {
        if (section == QStringLiteral("start"))
            compareStarts(watch);
        else if (section == QStringLiteral("memory"))
            compareMemory(watch);
        else if (section == QStringLiteral("countdown"))
            compareCountdown(watch, tray, order.time);
        else if (section == QStringLiteral("widget"))
            compareWidgetStates(watch, tray, order.time);
        else
            compareSnapshots();
    }
}

} // namespace

/// desktop_bench [SECONDS] [SECTION...]: how long a running program is watched, 30 s unless given,
/// and what is measured, everything unless given: start, memory, countdown, widget, snapshot.
int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // it needs the fonts, but no display
    const QGuiApplication application(argc, argv);
    endWaitsOnSignals();
    try {
        measure(orderOf(QCoreApplication::arguments()));
        return EXIT_SUCCESS;
    } catch (const Interrupted&) {
        std::fprintf(stderr, "desktop_bench: interrupted\n");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "desktop_bench: %s\n", error.what());
    }
    return EXIT_FAILURE;
}
