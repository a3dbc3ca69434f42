#include "bench/desktop/WidgetStates.h"

#include "app/UserFolders.h"
#include "bench/desktop/Activity.h"
#include "bench/desktop/Pointer.h"
#include "bench/desktop/Pose.h"
#include "bench/desktop/Programs.h"
#include "bench/desktop/Table.h"
#include "bench/desktop/TrayHost.h"
#include "bench/desktop/Waiting.h"
#include "bench/desktop/WindowWatch.h"
#include "widget/WidgetGeometry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <vector>

using namespace std::chrono_literals;

namespace {

using State = TimerEngine::State;

/// The highest figures that are good.
struct Bars
{
    std::optional<double> cpuPercent{};
    std::optional<double> cpuRatio{};
    std::optional<double> wakeUps{};
    std::optional<double> frames{};
};

constexpr Bars none{};
constexpr Bars atWork{.cpuPercent = 1, .cpuRatio = 0.25, .wakeUps = 150};
constexpr Bars atRest{.frames = 0};
constexpr Bars unseen{.wakeUps = 3, .frames = 0};

struct Case
{
    const char* name;
    Pose pose;
    Bars bars;
    bool hidden = false;
    bool hasTray = true; ///< one that reads the countdown every second
};

constexpr std::array cases{
    Case{"Sitting", {}, atWork},
    Case{"Standing", {.phase = Phase::standing}, atWork},
    Case{"Push-ups", {.phase = Phase::pushups}, none},
    Case{"Sitting, pointer over it", {.hovered = true}, atWork},
    Case{"Sitting complete", {.state = State::complete}, none},
    Case{"Sitting paused", {.state = State::paused}, atRest},
    Case{"Compact, sitting", {.compact = true}, atWork},
    Case{"Compact, standing", {.phase = Phase::standing, .compact = true}, atWork},
    Case{"Compact, push-ups", {.phase = Phase::pushups, .compact = true}, none},
    Case{"Compact, sitting, pointer over it", {.compact = true, .hovered = true}, atWork},
    Case{"Hidden", {}, atRest, true},
    Case{"Hidden, no tray there", {}, unseen, true, false},
};

/// Longer than anything takes that comes to an end.
constexpr auto settledAfter = 3s;
/// So long a hand rests before a click and after it.
constexpr auto rest = 500ms;
/// A whole phase of a demonstration is in it.
constexpr auto changesTakeAtMost = 30s;

// --- bringing the program into a state ------------------------------------------------------

/// The widget's buttons, by their number in their row.
enum class Button { pause = 0, skip = 1, hide = 4 };

/// Where a button is while all six are there, from the corner of the widget.
QPoint placeOf(Button button, bool inCompact)
{
    const QRectF row = inCompact ? QRectF(compact::controlBand()) : full::geometry().controls;
    const double step = inCompact ? compact::buttonDiameter + compact::buttonSpacing
                                  : full::buttonDiameter + full::buttonSpacing;
    return (row.center() + QPointF((static_cast<int>(button) - 2.5) * step, 0)).toPoint();
}

/// The program that is to be measured, and what its user can do.
class Widget
{
public:
    Widget(const Program& program, WindowWatch& watch, const TrayHost& tray, Pointer& pointer)
        : m_program(program)
        , m_watch(watch)
        , m_tray(tray)
        , m_pointer(pointer)
    {
        m_watch.waitForFrame(m_program);
        waitForTitle({});
    }

    void bringInto(const Case& wanted)
    {
        const Pose& pose = wanted.pose;
        for (Phase phase = Phase::sitting; phase != pose.phase;) {
            press(Button::skip, pose.compact);
            phase = successorOf(phase);
            waitForTitle({.phase = phase});
        }
        if (pose.state == State::paused)
            press(Button::pause, pose.compact);
        if (wanted.hidden)
            press(Button::hide, pose.compact);
        waitForTitle(pose);
        if (pose.hovered)
            m_pointer.moveTo(place().center());
        else
            m_pointer.goAway();
        m_program.waitBeside(settledAfter);
        if (m_watch.placeOf(m_program).has_value() == wanted.hidden)
            throw std::runtime_error("the widget is not shown, or not hidden");
    }

private:
    QRect place() const
    {
        const auto place = m_watch.placeOf(m_program);
        if (!place)
            throw std::runtime_error("the widget is not on the screen");
        return *place;
    }

    void press(Button button, bool inCompact)
    {
        m_pointer.moveTo(place().topLeft() + placeOf(button, inCompact));
        m_program.waitBeside(rest);
        m_pointer.click();
        m_program.waitBeside(rest);
    }

    /// Waits until the tray says that the program is in this state.
    void waitForTitle(const Pose& pose) const
    {
        const auto fits = [&] {
            const QString title = m_tray.title();
            return !m_tray.isPresent() ||
                   (title.startsWith(factsOf(pose.phase).emoji) &&
                    title.contains(u'⏸') == (pose.state == State::paused) &&
                    title.contains(u'✓') == (pose.state == State::complete));
        };
        if (!waitUntil(fits, changesTakeAtMost))
            throw std::runtime_error("the program does not get into a state to be measured");
    }

    const Program& m_program;
    WindowWatch& m_watch;
    const TrayHost& m_tray;
    Pointer& m_pointer;
};

void writeSettings(bool inCompact)
{
    QDir().mkpath(QFileInfo(settingsPath()).path());
    QFile file(settingsPath());
    const QByteArray text = QByteArray("[General]\nVantoraWidget=500 300 screen\ncompactMode=") +
                            (inCompact ? "true\n" : "false\n");
    if (!file.open(QFile::WriteOnly) || file.write(text) != text.size())
        throw std::runtime_error("no settings");
}

// --- measuring ------------------------------------------------------------------------------

Activity activityOf(const Program& program, WindowWatch& watch, std::chrono::seconds time)
{
    const ActivityMeter meter(program, watch);
    program.waitBeside(time);
    return meter.activity();
}

Activity activityOfReference(QByteArrayList command, WindowWatch& watch, std::chrono::seconds time)
{
    const Program program(std::move(command));
    watch.waitForFrame(program);
    program.waitBeside(settledAfter);
    return activityOf(program, watch, time);
}

struct Verdict
{
    std::string bars;
    bool holds = true;

    void add(const std::optional<double>& bar, double value, const char* before, int decimals,
             const char* unit)
    {
        if (!bar)
            return;
        bars += (bars.empty() ? "" : ", ") + (before + textOf(*bar, decimals)) + unit;
        holds = holds && value <= *bar;
    }
};

Verdict verdictOf(const Bars& bars, const Activity& own, double cpuRatio)
{
    Verdict verdict;
    verdict.add(bars.cpuPercent, own.cpuPercent, "", 0, " %");
    verdict.add(bars.cpuRatio, cpuRatio, "ratio ", 2, "");
    verdict.add(bars.wakeUps, own.wakeUps, "", 0, " wake-ups");
    verdict.add(bars.frames, own.frames, "", 0, " frames");
    return verdict;
}

void printHead(std::chrono::seconds time)
{
    std::printf("\n### The widget in each state for %lld s; bars are the most there may be\n\n",
                static_cast<long long>(time.count()));
    std::printf(
        "| State | Processor time, %% of one core | whole_window | Ratio | Wake-ups a second "
        "| Frames a second | whole_window | Bars | Hold |\n"
        "|---|--:|--:|--:|--:|--:|--:|---|---|\n");
}

void print(const char* name, const Activity& own, const std::optional<Activity>& reference,
           const Bars& bars)
{
    const double ratio = reference ? own.cpuPercent / reference->cpuPercent : 0;
    const Verdict verdict = verdictOf(bars, own, ratio);
    const auto ofReference = [&](double number, int decimals) {
        return reference ? textOf(number, decimals) : std::string("–");
    };
    const Activity other = reference.value_or(Activity());
    std::printf("| %s | %.2f | %s | %s | %.1f | %.1f | %s | %s | %s |\n", name, own.cpuPercent,
                ofReference(other.cpuPercent, 2).c_str(), ofReference(ratio, 2).c_str(),
                own.wakeUps, own.frames, ofReference(other.frames, 1).c_str(),
                verdict.bars.empty() ? "–" : verdict.bars.c_str(),
                verdict.bars.empty() ? "–"
                : verdict.holds      ? "yes"
                                     : "**no**");
    std::fflush(stdout);
}

} // namespace

void compareWidgetStates(WindowWatch& watch, TrayHost& tray, std::chrono::seconds time)
{
    Pointer pointer;
    printHead(time);
    for (const Case& each : cases) {
        writeSettings(each.pose.compact);
        pointer.goAway();
        tray.setPresent(each.hasTray);
        std::optional<Activity> reference;
        if (!each.hidden) {
            reference = activityOfReference(
                QByteArrayList{programs::wholeWindow} + each.pose.toArguments(), watch, time);
        }
        const bool demo = each.pose.state == State::complete;
        const Program program(demo ? QByteArrayList{programs::vantora, "--demo"}
                                   : QByteArrayList{programs::vantora});
        Widget(program, watch, tray, pointer).bringInto(each);
        print(each.name, activityOf(program, watch, time), reference, each.bars);
    }
    tray.setPresent(true);
    print("The empty window", activityOfReference({programs::emptyWindow}, watch, time), {}, none);
}
