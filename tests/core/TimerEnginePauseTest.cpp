#include "EngineTest.h"

namespace {

using TimerEnginePause = EngineTest;

TEST_F(TimerEnginePause, FreezesARunningCountdown)
{
    const auto engine = makeEngine();
    clock.pass(90);

    engine->togglePause();
    EXPECT_EQ(engine->phase(), Phase::sitting);
    EXPECT_EQ(engine->state(), State::paused);
    EXPECT_EQ(engine->remaining(), 2310);
    EXPECT_EQ(clock.tickSources(), 0);

    clock.pass(5000);
    EXPECT_EQ(engine->state(), State::paused);
    EXPECT_EQ(engine->remaining(), 2310);
    EXPECT_EQ(soundsPlayed(), Texts{});
}

TEST_F(TimerEnginePause, OfTenMinutesLeavesTheRemainingTimeWhereItWas)
{
    const auto engine = makeEngineIn(Phase::standing);
    clock.pass(90);
    engine->togglePause();
    clock.pass(600);

    engine->togglePause();
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 810);
    EXPECT_EQ(clock.tickSources(), 1);

    clock.pass(809.5);
    EXPECT_EQ(engine->remaining(), 0.5);
    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(soundsPlayed(), Texts{"Hero"});
}

TEST_F(TimerEnginePause, KeepsTheTimeThatWasShownNotTheTimeOfThatMoment)
{
    const auto engine = makeEngine();
    clock.pass(10);
    clock.jump(0.375);

    engine->togglePause();
    EXPECT_EQ(engine->remaining(), 2390);
    engine->togglePause();
    EXPECT_EQ(engine->remaining(), 2390);
    clock.pass(1);
    EXPECT_EQ(engine->remaining(), 2389);
}

TEST_F(TimerEnginePause, BeforeTheTickAfterALongSleepKeepsTheOldTime)
{
    const auto engine = makeEngine();
    clock.jump(100000);

    engine->togglePause();
    engine->togglePause();
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 2400);
}

TEST_F(TimerEnginePause, IsNotTouchedByAClockThatIsSet)
{
    const auto engine = makeEngine();
    engine->togglePause();
    clock.jump(-7200);
    engine->togglePause();
    EXPECT_EQ(engine->remaining(), 2400);

    engine->togglePause();
    clock.jump(7200);
    engine->togglePause();
    EXPECT_EQ(engine->remaining(), 2400);
}

TEST_F(TimerEnginePause, DoesNothingInPushups)
{
    const auto engine = makeEngineIn(Phase::pushups);
    for (const State state : {State::running, State::paused, State::complete}) {
        engine->state = state;
        engine->togglePause();

        EXPECT_EQ(engine->phase(), Phase::pushups);
        EXPECT_EQ(engine->state(), state);
        EXPECT_EQ(engine->remaining(), 0);
        EXPECT_EQ(clock.tickSources(), 0);
    }
}

TEST_F(TimerEnginePause, DoesNothingWhenThePhaseIsComplete)
{
    const auto engine = makeEngine();
    clock.pass(2400);
    engine->togglePause();

    EXPECT_EQ(engine->phase(), Phase::sitting);
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(clock.tickSources(), 0);
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
}

TEST_F(TimerEnginePause, WithNothingKeptEndsAtOnceWhenItGoesOn)
{
    const auto engine = makeEngine();
    engine->freeze();
    engine->state = State::paused;

    engine->togglePause();
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
}

TEST_F(TimerEnginePause, ForgetsTheKeptSecondsWhenItGoesOn)
{
    const auto engine = makeEngine();
    engine->togglePause();
    engine->togglePause();
    engine->state = State::paused;

    engine->sittingMinutes = 42;
    EXPECT_EQ(engine->remaining(), 120);
}

} // namespace
