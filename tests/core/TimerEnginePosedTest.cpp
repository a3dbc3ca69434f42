#include "EngineTest.h"

namespace {

using TimerEnginePosed = EngineTest;

TEST_F(TimerEnginePosed, StandsStillWhateverTheClockDoes)
{
    const auto engine = makeEngine();
    engine->freeze();
    engine->phase = Phase::standing;
    engine->state = State::running;
    engine->remaining = 754;
    engine->cycle = 3;

    EXPECT_EQ(clock.tickSources(), 0);
    clock.pass(5000);
    EXPECT_EQ(engine->phase(), Phase::standing);
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 754);
    EXPECT_EQ(engine->cycle(), 3);
    EXPECT_EQ(soundsPlayed(), Texts{});
}

TEST_F(TimerEnginePosed, PausesAndGoesOnFromThePosedTime)
{
    const auto engine = makeEngine();
    engine->freeze();
    engine->remaining = 754;

    engine->togglePause();
    engine->togglePause();
    clock.pass(4);
    EXPECT_EQ(engine->remaining(), 750);
}

TEST_F(TimerEnginePosed, CompleteIsLeftWithTheWholePhaseLogged)
{
    const auto engine = makeEngine();
    engine->freeze();
    engine->state = State::complete;
    engine->remaining = 754;

    engine->advance(false);
    EXPECT_EQ(log.entries, (Entries{{Phase::sitting, 2400, 0}}));
    EXPECT_EQ(engine->phase(), Phase::standing);
    EXPECT_EQ(clock.tickSources(), 1);
}

TEST_F(TimerEnginePosed, AsSittingAfterPushupsHasNoEndToMove)
{
    const auto engine = makeEngine();
    engine->start(Phase::pushups);
    engine->phase = Phase::sitting;

    engine->sittingMinutes = 60;
    EXPECT_EQ(engine->remaining(), 0);
}

TEST_F(TimerEnginePosed, RunsAgainAfterAStart)
{
    const auto engine = makeEngine();
    engine->freeze();
    engine->start(Phase::sitting);
    clock.pass(10);
    EXPECT_EQ(engine->remaining(), 2390);
}

} // namespace
