#include "EngineTest.h"

namespace {

using TimerEngineStart = EngineTest;

TEST_F(TimerEngineStart, NewEngineSitsAndCountsDownFromTheFirstCycle)
{
    const auto engine = makeEngine();

    EXPECT_EQ(engine->phase(), Phase::sitting);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 2400);
    EXPECT_EQ(engine->cycle(), 1);
    EXPECT_FALSE(engine->demoMode);
    EXPECT_EQ(clock.tickSources(), 1);
}

TEST_F(TimerEngineStart, NewEngineIsSilentAndWritesNothing)
{
    const auto engine = makeEngine();

    EXPECT_EQ(soundsPlayed(), Texts{});
    EXPECT_EQ(plain(settings.writes), Texts{});
    EXPECT_EQ(timesLogWasNeeded, 0);
}

TEST_F(TimerEngineStart, EmptySettingsGiveTheDefaults)
{
    const auto engine = makeEngine();

    EXPECT_EQ(engine->sittingMinutes(), 40);
    EXPECT_EQ(engine->standingMinutes(), 15);
    EXPECT_EQ(engine->pushupCount(), 50);
    EXPECT_FALSE(engine->compactMode());
}

TEST_F(TimerEngineStart, StoredSettingsAreLoaded)
{
    settings.values = {{QStringLiteral("sittingMinutes"), QStringLiteral("500")},
                       {QStringLiteral("standingMinutes"), QStringLiteral("1")},
                       {QStringLiteral("pushupCount"), QStringLiteral("7")},
                       {QStringLiteral("compactMode"), QStringLiteral("true")}};
    const auto engine = makeEngine();

    EXPECT_EQ(engine->sittingMinutes(), 500);
    EXPECT_EQ(engine->standingMinutes(), 1);
    EXPECT_EQ(engine->pushupCount(), 7);
    EXPECT_TRUE(engine->compactMode());
    EXPECT_EQ(engine->remaining(), 30000);
}

TEST_F(TimerEngineStart, StoredZeroAndNegativeNumbersGiveTheDefaults)
{
    for (const char* stored : {"0", "-1", "-5", "-9223372036854775808"}) {
        for (const char* key : {"sittingMinutes", "standingMinutes", "pushupCount"})
            settings.values[QLatin1String(key)] = QLatin1String(stored);
        const auto engine = makeEngine();

        EXPECT_EQ(engine->sittingMinutes(), 40) << stored;
        EXPECT_EQ(engine->standingMinutes(), 15) << stored;
        EXPECT_EQ(engine->pushupCount(), 50) << stored;
    }
}

TEST_F(TimerEngineStart, EachPhaseHasItsLength)
{
    const auto engine = makeEngine();

    EXPECT_EQ(engine->duration(Phase::sitting), 2400);
    EXPECT_EQ(engine->duration(Phase::standing), 900);
    EXPECT_EQ(engine->duration(Phase::pushups), std::nullopt);
}

TEST_F(TimerEngineStart, ATimedPhaseStartsFullAndRunningFromAnyState)
{
    const auto engine = makeEngine();
    const auto expectStarted = [&](Phase phase, double seconds) {
        engine->start(phase);
        EXPECT_EQ(engine->phase(), phase);
        EXPECT_EQ(engine->state(), State::running);
        EXPECT_EQ(engine->remaining(), seconds);
        EXPECT_EQ(clock.tickSources(), 1);
        clock.pass(2);
        EXPECT_EQ(engine->remaining(), seconds - 2);
    };

    expectStarted(Phase::standing, 900);
    expectStarted(Phase::sitting, 2400);
    engine->togglePause();
    expectStarted(Phase::standing, 900);
    clock.pass(1000);
    ASSERT_EQ(engine->state(), State::complete);
    expectStarted(Phase::standing, 900);
    engine->start(Phase::pushups);
    expectStarted(Phase::sitting, 2400);
}

TEST_F(TimerEngineStart, PushupsStartUntimedAndRunningFromAnyState)
{
    const auto engine = makeEngine();
    const auto expectStarted = [&] {
        engine->start(Phase::pushups);
        EXPECT_EQ(engine->phase(), Phase::pushups);
        EXPECT_EQ(engine->state(), State::running);
        EXPECT_EQ(engine->remaining(), 0);
        EXPECT_EQ(clock.tickSources(), 0);
        clock.pass(7200);
        EXPECT_EQ(engine->state(), State::running);
        EXPECT_EQ(engine->remaining(), 0);
    };

    expectStarted();
    expectStarted();
    engine->start(Phase::standing);
    engine->togglePause();
    expectStarted();
    engine->start(Phase::standing);
    clock.pass(900);
    ASSERT_EQ(engine->state(), State::complete);
    expectStarted();
    EXPECT_EQ(soundsPlayed(), Texts{"Hero"});
}

TEST_F(TimerEngineStart, StartingAPhaseLogsNothingAndKeepsTheCycle)
{
    const auto engine = makeEngine();
    engine->cycle = 4;
    clock.pass(600);

    engine->start(Phase::pushups);
    engine->start(Phase::sitting);

    EXPECT_EQ(engine->cycle(), 4);
    EXPECT_EQ(timesLogWasNeeded, 0);
    EXPECT_EQ(soundsPlayed(), Texts{});
}

TEST_F(TimerEngineStart, TheKeptSecondsOfAPauseAreForgottenByAStart)
{
    const auto engine = makeEngine();
    clock.pass(100);
    engine->togglePause();

    engine->start(Phase::sitting);
    engine->state = State::paused;
    engine->sittingMinutes = 41;

    EXPECT_EQ(engine->remaining(), 60);
}

TEST_F(TimerEngineStart, APhaseOfNoMinutesIsCompleteAtOnce)
{
    for (const qint64 minutes : {0, -5}) {
        const auto engine = makeEngineIn(Phase::standing);
        sound.played.clear();
        engine->sittingMinutes = minutes;
        engine->start(Phase::sitting);

        EXPECT_EQ(engine->state(), State::complete);
        EXPECT_EQ(engine->remaining(), 0);
        EXPECT_EQ(clock.tickSources(), 0);
        EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
    }
}

TEST_F(TimerEngineStart, DemoLengthsReplaceTheSettings)
{
    const auto engine = makeDemoEngine();

    EXPECT_TRUE(engine->demoMode);
    EXPECT_EQ(engine->duration(Phase::sitting), 10);
    EXPECT_EQ(engine->duration(Phase::standing), 8);
    EXPECT_EQ(engine->duration(Phase::pushups), std::nullopt);
    EXPECT_EQ(engine->remaining(), 10);
}

TEST_F(TimerEngineStart, DemoIsAskedForByOneWholeArgumentInAnyPosition)
{
    const QString demo = QStringLiteral("--demo");
    const QString other = QStringLiteral("other");

    EXPECT_TRUE(makeEngine({demo})->demoMode);
    EXPECT_TRUE(makeEngine({demo, other})->demoMode);
    EXPECT_TRUE(makeEngine({other, demo, other})->demoMode);
    EXPECT_TRUE(makeEngine({other, other, demo})->demoMode);
    EXPECT_TRUE(makeEngine({demo, demo})->demoMode);
}

TEST_F(TimerEngineStart, NothingButTheExactArgumentAsksForTheDemo)
{
    EXPECT_FALSE(makeEngine(QStringList{})->demoMode);
    for (const char* argument : {"", "demo", "-demo", "--DEMO", "--Demo", "--demo=1", "--demo ",
                                 " --demo", "--demos", "x--demo", "--no-demo"})
        EXPECT_FALSE(makeEngine({QStringLiteral("vantora"), QLatin1String(argument)})->demoMode)
            << argument;
}

} // namespace
