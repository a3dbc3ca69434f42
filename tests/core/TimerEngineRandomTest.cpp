#include "EngineTest.h"
#include "NaiveTimer.h"

#include <ostream>
#include <random>
#include <string_view>

namespace {

/// Times of events are in eighths of a second, as those of the naive timer.
constexpr long long second = 8;

struct Event
{
    enum Kind {
        startPhase,
        togglePause,
        advance,
        setSitting,
        setStanding,
        setPushups,
        setCompact,
        restartCycle,
        moveClock, // without a tick
        fire,
        moveAndFire,
        pose, // the value is the time left
        relaunch,
    };
    Kind kind;
    long long value = 0;
    int posedPhase = 0;
    char posedState = 'r';
};

std::ostream& operator<<(std::ostream& out, const Event& event)
{
    const char* const names[] = {
        "start",         "togglePause", "advance",       "sittingMinutes", "standingMinutes",
        "pushupCount",   "compactMode", "restart cycle", "move clock",     "fire",
        "move and fire", "pose",        "launch again"};
    return out << names[event.kind] << '(' << event.value << ')';
}

/// All that can be seen of a timer, and what it did in the last step.
struct View
{
    int phase = 0;
    char state = 'r';
    double remaining = 0;
    long long cycle = 0;
    long long sitting = 0;
    long long standing = 0;
    long long pushups = 0;
    bool compact = false;
    std::string time;
    std::string title;
    double part = 0;
    int tickSources = 0;
    std::vector<std::string> sounds;
    std::vector<std::string> entries;
    int timesLogWasNeeded = 0;
    std::vector<std::string> writes;
    std::vector<bool> compactSet;
    int notices = 0;

    bool operator==(const View&) const = default;
};

std::ostream& operator<<(std::ostream& out, const View& view)
{
    out << "phase " << view.phase << ' ' << view.state << ", remaining " << view.remaining
        << ", cycle " << view.cycle << ", settings " << view.sitting << '/' << view.standing << '/'
        << view.pushups << '/' << view.compact << ", \"" << view.time << "\", \"" << view.title
        << "\", progress " << view.part << ", tick sources " << view.tickSources << ", notices "
        << view.notices << ", log needed " << view.timesLogWasNeeded << ", compact set "
        << view.compactSet.size();
    for (const auto* list : {&view.sounds, &view.entries, &view.writes}) {
        out << " [";
        for (const std::string& item : *list)
            out << ' ' << item;
        out << " ]";
    }
    return out;
}

std::string entryText(long long phase, double seconds, long long reps)
{
    return std::to_string(phase) + ':' + std::to_string(seconds) + ':' + std::to_string(reps);
}

/// An engine and the naive timer, to which the same things happen.
class Twins
{
public:
    explicit Twins(bool demo)
        : m_demo(demo)
    {
        m_naive.demo = demo;
        launch();
    }

    void happen(const Event& event)
    {
        forgetLastStep();
        toEngine(event);
        toNaive(event);
    }

    View engineView() const
    {
        View view;
        view.phase = static_cast<int>(m_engine->phase());
        view.state = stateLetters[static_cast<std::size_t>(m_engine->state())];
        view.remaining = m_engine->remaining();
        view.cycle = m_engine->cycle();
        view.sitting = m_engine->sittingMinutes();
        view.standing = m_engine->standingMinutes();
        view.pushups = m_engine->pushupCount();
        view.compact = m_engine->compactMode();
        view.time = m_engine->timeString().toStdString();
        view.title = m_engine->menuBarTitle().toStdString();
        view.part = m_engine->progress().value_or(-1);
        view.tickSources = m_clock.tickSources();
        view.sounds = plain(m_sound.played);
        for (const ListLog::Entry& entry : m_log.entries)
            view.entries.push_back(entryText(rawValue(entry.phase), entry.seconds, entry.reps));
        view.timesLogWasNeeded = m_timesLogWasNeeded;
        view.writes = plain(m_settings.writes);
        view.compactSet = m_compactSet;
        view.notices = m_notices;
        return view;
    }

    View naiveView() const
    {
        View view;
        view.phase = m_naive.phase;
        view.state = m_naive.state;
        view.remaining = static_cast<double>(m_naive.left) / 8;
        view.cycle = m_naive.cycle;
        view.sitting = m_naive.minutes[0];
        view.standing = m_naive.minutes[1];
        view.pushups = m_naive.pushups;
        view.compact = m_naive.compact;
        view.time = m_naive.time();
        view.title = m_naive.title();
        view.part = m_naive.part();
        view.tickSources = m_naive.ticking ? 1 : 0;
        view.sounds = m_naive.sounds;
        for (const NaiveTimer::Entry& entry : m_naive.entries)
            view.entries.push_back(entryText(entry.phase, entry.seconds, entry.reps));
        view.timesLogWasNeeded = static_cast<int>(m_naive.entries.size());
        view.writes = m_naive.writes;
        view.compactSet = m_naive.compactSet;
        view.notices = m_naive.notices;
        return view;
    }

    bool everHadTwoTickSources() const { return m_clock.mostTickSources() > 1; }

private:
    static constexpr std::string_view stateLetters = "rpc";

    void launch()
    {
        m_engine.reset();
        const auto neededLog = [this]() -> SessionLog& {
            ++m_timesLogWasNeeded;
            return m_log;
        };
        m_engine = std::make_unique<TimerEngine>(
            TimerEngine::Services{m_clock, m_settings, m_sound, neededLog},
            m_demo ? QStringList{QStringLiteral("--demo")} : QStringList{});
        QObject::connect(m_engine.get(), &Observable::willChange, m_engine.get(),
                         [this] { ++m_notices; });
        QObject::connect(m_engine.get(), &TimerEngine::compactModeSet, m_engine.get(),
                         [this](bool compact) { m_compactSet.push_back(compact); });
        m_naive.launch();
    }

    void forgetLastStep()
    {
        m_sound.played.clear();
        m_log.entries.clear();
        m_settings.writes.clear();
        m_timesLogWasNeeded = 0;
        m_compactSet.clear();
        m_notices = 0;
        m_naive.sounds.clear();
        m_naive.entries.clear();
        m_naive.writes.clear();
        m_naive.compactSet.clear();
        m_naive.notices = 0;
    }

    void toEngine(const Event& event)
    {
        switch (event.kind) {
        case Event::startPhase:
            m_engine->start(static_cast<Phase>(event.value));
            break;
        case Event::togglePause:
            m_engine->togglePause();
            break;
        case Event::advance:
            m_engine->advance(event.value != 0);
            break;
        case Event::setSitting:
            m_engine->sittingMinutes = event.value;
            break;
        case Event::setStanding:
            m_engine->standingMinutes = event.value;
            break;
        case Event::setPushups:
            m_engine->pushupCount = event.value;
            break;
        case Event::setCompact:
            m_engine->compactMode = event.value != 0;
            break;
        case Event::restartCycle:
            m_engine->cycle = 1;
            m_engine->start(Phase::sitting);
            break;
        case Event::moveClock:
            m_clock.jump(static_cast<double>(event.value) / 8);
            break;
        case Event::fire:
            m_clock.fire();
            break;
        case Event::moveAndFire:
            m_clock.jump(static_cast<double>(event.value) / 8);
            m_clock.fire();
            break;
        case Event::pose:
            m_engine->freeze();
            m_engine->phase = static_cast<Phase>(event.posedPhase);
            m_engine->state = static_cast<TimerEngine::State>(stateLetters.find(event.posedState));
            m_engine->remaining = static_cast<double>(event.value) / 8;
            break;
        case Event::relaunch:
            launch();
            break;
        }
    }

    void toNaive(const Event& event)
    {
        switch (event.kind) {
        case Event::startPhase:
            m_naive.start(static_cast<int>(event.value));
            break;
        case Event::togglePause:
            m_naive.togglePause();
            break;
        case Event::advance:
            m_naive.advance(event.value != 0);
            break;
        case Event::setSitting:
            m_naive.setMinutes(0, event.value);
            break;
        case Event::setStanding:
            m_naive.setMinutes(1, event.value);
            break;
        case Event::setPushups:
            m_naive.setPushups(event.value);
            break;
        case Event::setCompact:
            m_naive.setCompact(event.value != 0);
            break;
        case Event::restartCycle:
            m_naive.restartCycle();
            break;
        case Event::moveClock:
            m_naive.now += event.value;
            break;
        case Event::fire:
            m_naive.fire();
            break;
        case Event::moveAndFire:
            m_naive.now += event.value;
            m_naive.fire();
            break;
        case Event::pose:
            m_naive.pose(event.posedPhase, event.posedState, event.value);
            break;
        case Event::relaunch: // launch() did both
            break;
        }
    }

    bool m_demo;
    ManualClock m_clock;
    MemorySettings m_settings;
    SilentPlayer m_sound;
    ListLog m_log;
    int m_timesLogWasNeeded = 0;
    int m_notices = 0;
    std::vector<bool> m_compactSet;
    std::unique_ptr<TimerEngine> m_engine;
    NaiveTimer m_naive;
};

class Dice
{
public:
    explicit Dice(unsigned seed)
        : m_generator(seed)
    {}

    /// The same on every standard library, unlike a distribution.
    long long between(long long low, long long high)
    {
        return low + static_cast<long long>(m_generator() %
                                            static_cast<unsigned long long>(high - low + 1));
    }

    Event event()
    {
        const long long roll = between(0, 99);
        if (roll < 22)
            return {Event::moveAndFire, 4};
        if (roll < 32)
            return {Event::moveAndFire, between(1, 100 * second)};
        if (roll < 42)
            return {Event::moveClock, between(-100 * second, 600 * second)};
        if (roll < 45)
            return {Event::moveAndFire, between(-9, 9) * 3600 * second};
        if (roll < 52)
            return {Event::fire};
        if (roll < 64)
            return {Event::togglePause};
        if (roll < 72)
            return {Event::advance, between(0, 1)};
        if (roll < 76)
            return {Event::startPhase, between(0, 2)};
        if (roll < 84)
            return {Event::setSitting, someMinutes()};
        if (roll < 91)
            return {Event::setStanding, someMinutes()};
        if (roll < 94)
            return {Event::setPushups, between(-5, 150)};
        if (roll < 96)
            return {Event::setCompact, between(0, 1)};
        if (roll < 97)
            return {Event::restartCycle};
        if (roll < 99)
            return {Event::pose, between(-100, 3000 * second), static_cast<int>(between(0, 2)),
                    "rpc"[between(0, 2)]};
        return {Event::relaunch};
    }

private:
    long long someMinutes()
    {
        switch (between(0, 9)) {
        case 0:
            return between(-3, 0);
        case 1:
            return between(100, 100000);
        default:
            return between(1, 20);
        }
    }

    std::mt19937_64 m_generator;
};

TEST(TimerEngineRandom, AgreesWithTheNaiveTimerAfterEveryStepOfRandomDays)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Twins twins(seed % 4 == 0);
        ASSERT_EQ(twins.engineView(), twins.naiveView()) << "seed " << seed << ", at launch";
        Dice dice(seed);
        for (int step = 1; step <= 5000; ++step) {
            const Event event = dice.event();
            twins.happen(event);
            ASSERT_EQ(twins.engineView(), twins.naiveView())
                << "seed " << seed << ", step " << step << ": " << event;
        }
        ASSERT_FALSE(twins.everHadTwoTickSources()) << "seed " << seed;
    }
}

TEST(TimerEngineRandom, AgreesWithTheNaiveTimerAfterEverySequenceOfUpToSixEvents)
{
    const std::vector<Event> alphabet{
        {Event::advance, 0},
        {Event::advance, 1},
        {Event::togglePause},
        {Event::moveAndFire, 61 * second},
        {Event::moveClock, -30 * second},
        {Event::fire},
        {Event::setSitting, 1},
        {Event::setSitting, 3},
    };
    // Every sequence starts from short phases. The shorter ones are checked on their own, so that
    // each needs a look at its end only.
    for (int length = 1; length <= 6; ++length) {
        std::size_t sequences = 1;
        for (int i = 0; i < length; ++i)
            sequences *= alphabet.size();
        for (std::size_t sequence = 0; sequence < sequences; ++sequence) {
            std::vector<Event> events{{Event::setSitting, 2}, {Event::setStanding, 1}};
            std::size_t rest = sequence;
            for (int i = 0; i < length; ++i) {
                events.push_back(alphabet[rest % alphabet.size()]);
                rest /= alphabet.size();
            }
            Twins twins(false);
            for (const Event& event : events)
                twins.happen(event);
            ASSERT_EQ(twins.engineView(), twins.naiveView()) << testing::PrintToString(events);
            ASSERT_FALSE(twins.everHadTwoTickSources()) << testing::PrintToString(events);
        }
    }
}

} // namespace
