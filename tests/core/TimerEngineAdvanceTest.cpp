#include "EngineTest.h"

namespace {

using TimerEngineAdvance = EngineTest;

TEST_F(TimerEngineAdvance, ThreeTimesFromTheBeginningIsSittingInTheSecondCycle)
{
    const auto engine = makeEngine();

    engine->advance(false);
    EXPECT_EQ(engine->phase(), Phase::standing);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 900);
    EXPECT_EQ(engine->cycle(), 1);

    engine->advance(false);
    EXPECT_EQ(engine->phase(), Phase::pushups);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(engine->cycle(), 1);

    engine->advance(false);
    EXPECT_EQ(engine->phase(), Phase::sitting);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 2400);
    EXPECT_EQ(engine->cycle(), 2);
}

TEST_F(TimerEngineAdvance, WithinTheFirstMinuteLeavesNoTrace)
{
    for (const double seconds : {0.0, 1.0, 59.0, 59.75}) {
        const auto engine = makeEngine();
        clock.pass(seconds);
        engine->advance(false);
        EXPECT_EQ(engine->phase(), Phase::standing);
    }
    EXPECT_EQ(log.entries, Entries{});
    EXPECT_EQ(timesLogWasNeeded, 0);
    EXPECT_EQ(soundsPlayed(), Texts{});
}

TEST_F(TimerEngineAdvance, AfterAMinuteLogsTheTimeSpent)
{
    for (const double seconds : {60.0, 61.0, 2000.5}) {
        log.entries.clear();
        const auto engine = makeEngine();
        clock.pass(seconds);
        engine->advance(false);
        EXPECT_EQ(log.entries, (Entries{{Phase::sitting, seconds, 0}}));
    }
    EXPECT_EQ(timesLogWasNeeded, 3);
    EXPECT_EQ(soundsPlayed(), Texts{});
}

TEST_F(TimerEngineAdvance, LogsStandingAsStanding)
{
    const auto engine = makeEngineIn(Phase::standing);
    clock.pass(300);
    engine->advance(false);
    EXPECT_EQ(log.entries, (Entries{{Phase::standing, 300, 0}}));
}

TEST_F(TimerEngineAdvance, FromACompletePhaseLogsAllOfItAndPlaysNoSecondSound)
{
    const auto engine = makeEngine();
    clock.pass(2400);
    clock.pass(600);
    engine->advance(false);

    EXPECT_EQ(engine->phase(), Phase::standing);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(log.entries, (Entries{{Phase::sitting, 2400, 0}}));
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
}

TEST_F(TimerEngineAdvance, FromAPausedPhaseLogsTheTimeBeforeThePause)
{
    const auto engine = makeEngine();
    clock.pass(90);
    engine->togglePause();
    clock.pass(600);
    engine->advance(false);

    EXPECT_EQ(log.entries, (Entries{{Phase::sitting, 90, 0}}));
    EXPECT_EQ(engine->phase(), Phase::standing);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(clock.tickSources(), 1);
}

TEST_F(TimerEngineAdvance, GoesByTheTimeThatIsShownNotByTheClock)
{
    const auto engine = makeEngine();
    clock.jump(1000);
    engine->advance(false);
    EXPECT_EQ(timesLogWasNeeded, 0);

    clock.pass(100);
    clock.jump(0.375);
    engine->advance(false);
    EXPECT_EQ(log.entries, (Entries{{Phase::standing, 100, 0}}));
}

TEST_F(TimerEngineAdvance, LogsNothingWhenTheClockWasSetBack)
{
    const auto engine = makeEngine();
    clock.pass(120);
    clock.jump(-3600);
    clock.fire();
    engine->advance(false);
    EXPECT_EQ(timesLogWasNeeded, 0);
}

TEST_F(TimerEngineAdvance, MeasuresTheTimeSpentAgainstTheSettingOfThatMoment)
{
    const auto engine = makeEngine();
    clock.pass(2400);
    engine->sittingMinutes = 5;
    engine->advance(false);
    EXPECT_EQ(log.entries, (Entries{{Phase::sitting, 300, 0}}));
}

TEST_F(TimerEngineAdvance, KeepsTheTimeSpentOfAPhaseThatWasLengthened)
{
    const auto engine = makeEngine();
    clock.pass(600);
    engine->sittingMinutes = 45;
    engine->advance(false);
    EXPECT_EQ(log.entries, (Entries{{Phase::sitting, 600, 0}}));
}

TEST_F(TimerEngineAdvance, LogsTheNewLengthLessTheShownSecondOfAPhaseShortenedBelowItsTime)
{
    const auto engine = makeEngine();
    clock.pass(600);
    engine->sittingMinutes = 5;
    engine->advance(false);
    EXPECT_EQ(log.entries, (Entries{{Phase::sitting, 299, 0}}));
}

TEST_F(TimerEngineAdvance, WithSoundPlaysTheSoundOfThePhaseThatIsLeft)
{
    const auto engine = makeEngine();
    engine->advance(true);
    engine->advance(true);
    engine->advance(true);
    EXPECT_EQ(soundsPlayed(), (Texts{"Glass", "Hero", "Funk"}));
}

TEST_F(TimerEngineAdvance, WithSoundLogsATimedPhaseAsWithout)
{
    const auto engine = makeEngine();
    clock.pass(59);
    engine->advance(true);
    EXPECT_EQ(timesLogWasNeeded, 0);
    clock.pass(61);
    engine->advance(true);
    EXPECT_EQ(log.entries, (Entries{{Phase::standing, 61, 0}}));
}

TEST_F(TimerEngineAdvance, FromDonePushupsPlaysLogsAndCountsTheCycle)
{
    const auto engine = makeEngineIn(Phase::pushups);
    clock.pass(45);
    engine->advance(true);

    EXPECT_EQ(soundsPlayed(), Texts{"Funk"});
    EXPECT_EQ(log.entries, (Entries{{Phase::pushups, 0, 50}}));
    EXPECT_EQ(timesLogWasNeeded, 1);
    EXPECT_EQ(engine->cycle(), 2);
    EXPECT_EQ(engine->phase(), Phase::sitting);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 2400);
}

TEST_F(TimerEngineAdvance, FromSkippedPushupsCountsTheCycleAndNothingElse)
{
    const auto engine = makeEngineIn(Phase::pushups);
    clock.pass(600);
    engine->advance(false);

    EXPECT_EQ(soundsPlayed(), Texts{});
    EXPECT_EQ(timesLogWasNeeded, 0);
    EXPECT_EQ(engine->cycle(), 2);
    EXPECT_EQ(engine->phase(), Phase::sitting);
}

TEST_F(TimerEngineAdvance, LogsThePushupCountOfThatMoment)
{
    const auto engine = makeEngineIn(Phase::pushups);
    engine->pushupCount = 12;
    engine->advance(true);
    EXPECT_EQ(log.entries, (Entries{{Phase::pushups, 0, 12}}));
}

TEST_F(TimerEngineAdvance, FromPosedCompletePushupsCountsTheCycleAndLogsNothing)
{
    const auto engine = makeEngineIn(Phase::pushups);
    engine->freeze();
    engine->state = State::complete;
    engine->advance(false);

    EXPECT_EQ(timesLogWasNeeded, 0);
    EXPECT_EQ(engine->cycle(), 2);
    EXPECT_EQ(engine->state(), State::running);
}

TEST_F(TimerEngineAdvance, InTheDemoLogsFromOneSecondOn)
{
    const auto engine = makeDemoEngine();
    clock.pass(0.5);
    engine->advance(false);
    EXPECT_EQ(timesLogWasNeeded, 0);

    clock.pass(1);
    engine->advance(false);
    EXPECT_EQ(log.entries, (Entries{{Phase::standing, 1, 0}}));

    engine->start(Phase::sitting);
    clock.pass(0.9375);
    engine->advance(false);
    EXPECT_EQ(log.entries.size(), 1U);
}

TEST_F(TimerEngineAdvance, InTheDemoLogsTheDemoLengthOfACompletePhase)
{
    const auto engine = makeDemoEngine();
    clock.pass(10);
    engine->sittingMinutes = 5;
    engine->advance(false);
    clock.pass(8);
    engine->advance(false);
    EXPECT_EQ(log.entries, (Entries{{Phase::sitting, 10, 0}, {Phase::standing, 8, 0}}));
}

} // namespace
