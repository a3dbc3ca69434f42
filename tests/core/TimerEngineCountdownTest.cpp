#include "EngineTest.h"

namespace {

using TimerEngineCountdown = EngineTest;

TEST_F(TimerEngineCountdown, FollowsTheClockWithEachTick)
{
    const auto engine = makeEngine();

    clock.pass(0.5);
    EXPECT_EQ(engine->remaining(), 2399.5);
    clock.pass(599.5);
    EXPECT_EQ(engine->remaining(), 1800);
}

TEST_F(TimerEngineCountdown, ShowsTheLastReadTimeUntilTheNextTick)
{
    const auto engine = makeEngine();

    clock.jump(0.4375);
    EXPECT_EQ(engine->remaining(), 2400);
    clock.fire();
    EXPECT_EQ(engine->remaining(), 2399.5625);
}

TEST_F(TimerEngineCountdown, DoesNotDriftWithLateOrMissingTicks)
{
    const auto engine = makeEngine();

    for (int i = 0; i < 100; ++i) {
        clock.jump(0.59375);
        clock.fire();
        clock.fire();
    }
    EXPECT_EQ(engine->remaining(), 2400 - 59.375);
}

TEST_F(TimerEngineCountdown, RunsOutIntoCompleteWithOneSound)
{
    const auto engine = makeEngine();

    clock.pass(2399.5);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 0.5);
    EXPECT_EQ(soundsPlayed(), Texts{});

    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(clock.tickSources(), 0);
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
}

TEST_F(TimerEngineCountdown, RunsOutAtTheVeryInstantOfItsEnd)
{
    const auto engine = makeEngine();

    clock.jump(2399.96875);
    clock.fire();
    EXPECT_EQ(engine->state(), State::running);
    clock.jump(0.03125);
    clock.fire();
    EXPECT_EQ(engine->state(), State::complete);
}

TEST_F(TimerEngineCountdown, PlaysTheSoundOfThePhaseThatRanOut)
{
    const auto engine = makeEngineIn(Phase::standing);

    clock.pass(900);
    EXPECT_EQ(soundsPlayed(), Texts{"Hero"});
}

TEST_F(TimerEngineCountdown, CompleteWaitsForTheUserHoweverLong)
{
    const auto engine = makeEngine();

    clock.pass(2400);
    clock.pass(36000);
    EXPECT_EQ(engine->phase(), Phase::sitting);
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(engine->cycle(), 1);
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
    EXPECT_EQ(timesLogWasNeeded, 0);
}

TEST_F(TimerEngineCountdown, GoesOnWhileTheMachineSleeps)
{
    const auto engine = makeEngine();

    clock.jump(1200);
    clock.fire();
    EXPECT_EQ(engine->remaining(), 1200);
}

TEST_F(TimerEngineCountdown, IsOverAfterASleepBeyondItsEnd)
{
    const auto engine = makeEngine();

    clock.jump(50000);
    EXPECT_EQ(engine->state(), State::running);
    clock.fire();
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
}

TEST_F(TimerEngineCountdown, GrowsWhenTheClockIsSetBack)
{
    const auto engine = makeEngine();

    clock.pass(60);
    clock.jump(-3600);
    clock.fire();
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 2400 - 60 + 3600);
    EXPECT_EQ(engine->progress(), 1.0);

    clock.pass(60);
    EXPECT_EQ(engine->remaining(), 2400 - 120 + 3600);
}

TEST_F(TimerEngineCountdown, StaysCompleteWhenTheClockIsSetBack)
{
    const auto engine = makeEngine();

    clock.pass(2400);
    clock.jump(-3600);
    clock.fire();
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->remaining(), 0);
}

TEST_F(TimerEngineCountdown, NeverRunsOnMoreThanOneTickSource)
{
    const auto engine = makeEngine();

    for (int i = 0; i < 3; ++i) {
        engine->start(Phase::sitting);
        engine->togglePause();
        engine->togglePause();
        engine->start(Phase::standing);
        engine->advance(false);
        engine->advance(true);
    }
    EXPECT_EQ(clock.tickSources(), 1);
    EXPECT_EQ(clock.mostTickSources(), 1);
}

TEST_F(TimerEngineCountdown, ItsTicksEndWithTheEngine)
{
    auto engine = makeEngine();

    engine.reset();
    EXPECT_EQ(clock.tickSources(), 0);
    clock.pass(5000);
    EXPECT_EQ(soundsPlayed(), Texts{});
}

TEST_F(TimerEngineCountdown, DemoRunsOutAfterTenAndEightSeconds)
{
    const auto engine = makeDemoEngine();

    clock.pass(9.5);
    EXPECT_EQ(engine->state(), State::running);
    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::complete);

    engine->advance(false);
    clock.pass(7.5);
    EXPECT_EQ(engine->state(), State::running);
    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(soundsPlayed(), (Texts{"Glass", "Hero"}));
}

} // namespace
