#include "EngineTest.h"

#include <sstream>

namespace {

/// What an observer can see of an engine while something happens, line by line.
class Journal
{
public:
    std::vector<std::string> lines;
    const TimerEngine* engine = nullptr;
    const ManualClock* clock = nullptr;

    void add(const std::string& what)
    {
        if (!engine)
            return;
        const auto phase = rawValue(engine->phase());
        const auto state = static_cast<std::size_t>(engine->state());
        std::ostringstream line;
        line << what << " | phase " << phase << ' '
             << std::array{"running", "paused", "complete"}.at(state) << ' ' << engine->remaining()
             << " s, cycle " << engine->cycle() << ", " << engine->sittingMinutes() << '/'
             << engine->standingMinutes() << '/' << engine->pushupCount()
             << (engine->compactMode() ? " compact" : " full") << ", ticks "
             << clock->tickSources();
        lines.push_back(line.str());
    }
};

class TimerEngineOrder : public testing::Test
{
protected:
    using State = TimerEngine::State;
    using Lines = std::vector<std::string>;

    struct Settings : MemorySettings
    {
        explicit Settings(Journal& to)
            : journal(to)
        {}
        void setText(QAnyStringView key, const QString& value) override
        {
            MemorySettings::setText(key, value);
            journal.add("write " + writes.back().toStdString());
        }
        Journal& journal;
    };
    struct Player : SoundPlayer
    {
        explicit Player(Journal& to)
            : journal(to)
        {}
        void play(const QString& name) override { journal.add("play " + name.toStdString()); }
        Journal& journal;
    };
    struct Log : SessionLog
    {
        explicit Log(Journal& to)
            : journal(to)
        {}
        void log(Phase, double, qint64) override { journal.add("log"); }
        Journal& journal;
    };

    TimerEngineOrder()
    {
        engine.cycle = 7;
        QObject::connect(&engine, &Observable::willChange, &engine,
                         [this] { journal.add("notice"); });
        QObject::connect(&engine, &TimerEngine::compactModeSet, &engine, [this](bool compact) {
            journal.add(compact ? "set compact" : "set full");
        });
        journal.clock = &clock;
        journal.engine = &engine;
    }

    Lines linesOf(const std::function<void()>& happening)
    {
        journal.lines.clear();
        happening();
        return journal.lines;
    }

    Journal journal;
    ManualClock clock;
    Settings settings{journal};
    Player sound{journal};
    Log log{journal};
    TimerEngine engine{{clock, settings, sound, [this]() -> SessionLog& { return log; }}, {}};
};

TEST_F(TimerEngineOrder, EachPublishedValueIsAnnouncedBeforeItIsStored)
{
    EXPECT_EQ(linesOf([this] { engine.phase = Phase::standing; }),
              (Lines{"notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1"}));
    EXPECT_EQ(engine.phase(), Phase::standing);
    EXPECT_EQ(linesOf([this] { engine.state = State::complete; }),
              (Lines{"notice | phase 1 running 2400 s, cycle 7, 40/15/50 full, ticks 1"}));
    EXPECT_EQ(engine.state(), State::complete);
    EXPECT_EQ(linesOf([this] { engine.remaining = 5; }),
              (Lines{"notice | phase 1 complete 2400 s, cycle 7, 40/15/50 full, ticks 1"}));
    EXPECT_EQ(engine.remaining(), 5);
    EXPECT_EQ(linesOf([this] { engine.cycle = 8; }),
              (Lines{"notice | phase 1 complete 5 s, cycle 7, 40/15/50 full, ticks 1"}));
    EXPECT_EQ(engine.cycle(), 8);
}

TEST_F(TimerEngineOrder, AnUnchangedPublishedValueIsAnnouncedToo)
{
    const Lines oneNotice{"notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1"};

    EXPECT_EQ(linesOf([this] { engine.phase = Phase::sitting; }), oneNotice);
    EXPECT_EQ(linesOf([this] { engine.state = State::running; }), oneNotice);
    EXPECT_EQ(linesOf([this] { engine.remaining = 2400; }), oneNotice);
    EXPECT_EQ(linesOf([this] { engine.cycle = 7; }), oneNotice);
    EXPECT_EQ(linesOf([this] { engine.sittingMinutes = 40; }).at(0), oneNotice.at(0));
    EXPECT_EQ(linesOf([this] { engine.standingMinutes = 15; }).at(0), oneNotice.at(0));
    EXPECT_EQ(linesOf([this] { engine.pushupCount = 50; }).at(0), oneNotice.at(0));
    EXPECT_EQ(linesOf([this] { engine.compactMode = false; }).at(0), oneNotice.at(0));
}

TEST_F(TimerEngineOrder, ALengthIsAnnouncedThenStoredThenWrittenThenApplied)
{
    EXPECT_EQ(
        linesOf([this] { engine.sittingMinutes = 45; }),
        (Lines{
            "notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1",
            "write sittingMinutes=45 | phase 0 running 2400 s, cycle 7, 45/15/50 full, ticks 1",
            "write standingMinutes=15 | phase 0 running 2400 s, cycle 7, 45/15/50 full, ticks 1",
            "write pushupCount=50 | phase 0 running 2400 s, cycle 7, 45/15/50 full, ticks 1",
            "notice | phase 0 running 2400 s, cycle 7, 45/15/50 full, ticks 1",
        }));
    EXPECT_EQ(engine.remaining(), 2700);
}

TEST_F(TimerEngineOrder, TheLengthOfStandingGoesTheSameWay)
{
    engine.start(Phase::standing);
    EXPECT_EQ(
        linesOf([this] { engine.standingMinutes = 20; }),
        (Lines{
            "notice | phase 1 running 900 s, cycle 7, 40/15/50 full, ticks 1",
            "write sittingMinutes=40 | phase 1 running 900 s, cycle 7, 40/20/50 full, ticks 1",
            "write standingMinutes=20 | phase 1 running 900 s, cycle 7, 40/20/50 full, ticks 1",
            "write pushupCount=50 | phase 1 running 900 s, cycle 7, 40/20/50 full, ticks 1",
            "notice | phase 1 running 900 s, cycle 7, 40/20/50 full, ticks 1",
        }));
    EXPECT_EQ(engine.remaining(), 1200);
}

TEST_F(TimerEngineOrder, ThePushupCountIsAnnouncedThenStoredThenWritten)
{
    EXPECT_EQ(
        linesOf([this] { engine.pushupCount = 9; }),
        (Lines{
            "notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1",
            "write sittingMinutes=40 | phase 0 running 2400 s, cycle 7, 40/15/9 full, ticks 1",
            "write standingMinutes=15 | phase 0 running 2400 s, cycle 7, 40/15/9 full, ticks 1",
            "write pushupCount=9 | phase 0 running 2400 s, cycle 7, 40/15/9 full, ticks 1",
        }));
}

TEST_F(TimerEngineOrder, CompactModeIsAnnouncedThenStoredThenWrittenThenSet)
{
    const Lines toCompact{
        "notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1",
        "write compactMode=true | phase 0 running 2400 s, cycle 7, 40/15/50 compact, ticks 1",
        "set compact | phase 0 running 2400 s, cycle 7, 40/15/50 compact, ticks 1",
    };
    const Lines compactAgain{
        "notice | phase 0 running 2400 s, cycle 7, 40/15/50 compact, ticks 1",
        "write compactMode=true | phase 0 running 2400 s, cycle 7, 40/15/50 compact, ticks 1",
        "set compact | phase 0 running 2400 s, cycle 7, 40/15/50 compact, ticks 1",
    };
    const Lines toFull{
        "notice | phase 0 running 2400 s, cycle 7, 40/15/50 compact, ticks 1",
        "write compactMode=false | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1",
        "set full | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1",
    };
    EXPECT_EQ(linesOf([this] { engine.compactMode = true; }), toCompact);
    EXPECT_EQ(linesOf([this] { engine.compactMode = true; }), compactAgain);
    EXPECT_EQ(linesOf([this] { engine.compactMode = false; }), toFull);
}

TEST_F(TimerEngineOrder, DonePushupsPlayThenLogThenCountThenStart)
{
    engine.start(Phase::pushups);
    EXPECT_EQ(linesOf([this] { engine.advance(true); }),
              (Lines{
                  "play Funk | phase 2 running 0 s, cycle 7, 40/15/50 full, ticks 0",
                  "log | phase 2 running 0 s, cycle 7, 40/15/50 full, ticks 0",
                  "notice | phase 2 running 0 s, cycle 7, 40/15/50 full, ticks 0",
                  "notice | phase 2 running 0 s, cycle 8, 40/15/50 full, ticks 0",
                  "notice | phase 0 running 0 s, cycle 8, 40/15/50 full, ticks 0",
                  "notice | phase 0 running 2400 s, cycle 8, 40/15/50 full, ticks 0",
                  "notice | phase 0 running 2400 s, cycle 8, 40/15/50 full, ticks 1",
              }));
}

TEST_F(TimerEngineOrder, ATimedPhaseIsPlayedAndLoggedBeforeThePushupsStart)
{
    engine.start(Phase::standing);
    clock.jump(100);
    clock.fire();
    EXPECT_EQ(linesOf([this] { engine.advance(true); }),
              (Lines{
                  "play Hero | phase 1 running 800 s, cycle 7, 40/15/50 full, ticks 1",
                  "log | phase 1 running 800 s, cycle 7, 40/15/50 full, ticks 1",
                  "notice | phase 1 running 800 s, cycle 7, 40/15/50 full, ticks 1",
                  "notice | phase 2 running 800 s, cycle 7, 40/15/50 full, ticks 1",
                  "notice | phase 2 running 0 s, cycle 7, 40/15/50 full, ticks 1",
              }));
    EXPECT_EQ(clock.tickSources(), 0);
}

TEST_F(TimerEngineOrder, ATickAnnouncesTheTimeEvenWhenTheClockStoodStill)
{
    EXPECT_EQ(linesOf([this] { clock.fire(); }),
              (Lines{"notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1"}));
}

TEST_F(TimerEngineOrder, TheEndOfAPhaseIsSetBeforeItsSound)
{
    clock.jump(2400);
    EXPECT_EQ(linesOf([this] { clock.fire(); }),
              (Lines{
                  "notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1",
                  "notice | phase 0 running 0 s, cycle 7, 40/15/50 full, ticks 1",
                  "play Glass | phase 0 complete 0 s, cycle 7, 40/15/50 full, ticks 0",
              }));
}

TEST_F(TimerEngineOrder, APauseAnnouncesItselfAndItsEndTheFreshTimeToo)
{
    EXPECT_EQ(linesOf([this] { engine.togglePause(); }),
              (Lines{"notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1"}));
    EXPECT_EQ(linesOf([this] { engine.togglePause(); }),
              (Lines{
                  "notice | phase 0 paused 2400 s, cycle 7, 40/15/50 full, ticks 0",
                  "notice | phase 0 running 2400 s, cycle 7, 40/15/50 full, ticks 1",
              }));
}

TEST_F(TimerEngineOrder, WhatDoesNothingAnnouncesNothing)
{
    engine.start(Phase::pushups);
    EXPECT_EQ(linesOf([this] { engine.togglePause(); }), Lines{});

    engine.start(Phase::standing);
    clock.jump(900);
    clock.fire();
    EXPECT_EQ(linesOf([this] { engine.togglePause(); }), Lines{});
}

} // namespace
