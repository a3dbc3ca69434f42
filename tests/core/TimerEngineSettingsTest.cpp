#include "EngineTest.h"

namespace {

using TimerEngineSettings = EngineTest;

TEST_F(TimerEngineSettings, ALengthIsStoredTogetherWithTheOtherNumbersOnEachAssignment)
{
    const auto engine = makeEngine();

    engine->sittingMinutes = 45;
    EXPECT_EQ(plain(settings.writes),
              (Texts{"sittingMinutes=45", "standingMinutes=15", "pushupCount=50"}));
    settings.writes.clear();

    engine->standingMinutes = 20;
    EXPECT_EQ(plain(settings.writes),
              (Texts{"sittingMinutes=45", "standingMinutes=20", "pushupCount=50"}));
    settings.writes.clear();

    engine->pushupCount = 10;
    EXPECT_EQ(plain(settings.writes),
              (Texts{"sittingMinutes=45", "standingMinutes=20", "pushupCount=10"}));
}

TEST_F(TimerEngineSettings, AnUnchangedValueIsStoredAgain)
{
    const auto engine = makeEngine();
    const Texts numbers{"sittingMinutes=40", "standingMinutes=15", "pushupCount=50"};

    engine->sittingMinutes = 40;
    EXPECT_EQ(plain(settings.writes), numbers);
    settings.writes.clear();

    engine->standingMinutes = 15;
    EXPECT_EQ(plain(settings.writes), numbers);
    settings.writes.clear();

    engine->pushupCount = 50;
    EXPECT_EQ(plain(settings.writes), numbers);
    settings.writes.clear();

    engine->compactMode = false;
    EXPECT_EQ(plain(settings.writes), Texts{"compactMode=false"});
}

TEST_F(TimerEngineSettings, CompactModeIsStoredAlone)
{
    const auto engine = makeEngine();

    engine->compactMode = true;
    engine->compactMode = true;
    engine->compactMode = false;
    EXPECT_EQ(plain(settings.writes),
              (Texts{"compactMode=true", "compactMode=true", "compactMode=false"}));
}

TEST_F(TimerEngineSettings, NothingIsStoredByTheTimerItself)
{
    const auto engine = makeEngine();
    clock.pass(2400);
    engine->advance(true);
    engine->togglePause();
    engine->togglePause();
    engine->cycle = 1;
    engine->start(Phase::pushups);
    EXPECT_EQ(plain(settings.writes), Texts{});
}

TEST_F(TimerEngineSettings, ValuesOutsideTheUsualRangeAreTakenAsTheyAre)
{
    const auto engine = makeEngineIn(Phase::pushups);
    for (const qint64 value : {qint64{0}, qint64{-3}, qint64{100000}, qint64{1} << 62}) {
        engine->sittingMinutes = value;
        engine->standingMinutes = value;
        engine->pushupCount = value;
        EXPECT_EQ(engine->sittingMinutes(), value);
        EXPECT_EQ(engine->standingMinutes(), value);
        EXPECT_EQ(engine->pushupCount(), value);
    }
}

TEST_F(TimerEngineSettings, ALongerPhaseKeepsTheTimeAlreadySpent)
{
    const auto engine = makeEngine();
    clock.pass(600);

    engine->sittingMinutes = 45;
    EXPECT_EQ(engine->remaining(), 2100);
    clock.pass(0.5);
    EXPECT_EQ(engine->remaining(), 2099.5);
}

TEST_F(TimerEngineSettings, LengtheningStandingMovesItsEndByTheDifference)
{
    const auto engine = makeEngineIn(Phase::standing);
    clock.pass(600);
    ASSERT_EQ(engine->remaining(), 300);

    engine->standingMinutes = 20;
    EXPECT_EQ(engine->remaining(), 600);
    clock.pass(599.5);
    EXPECT_EQ(engine->state(), State::running);
    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::complete);
}

TEST_F(TimerEngineSettings, AShorterPhaseKeepsTheTimeAlreadySpent)
{
    const auto engine = makeEngine();
    clock.pass(600);

    engine->sittingMinutes = 30;
    EXPECT_EQ(engine->remaining(), 1200);
    clock.pass(1199.5);
    EXPECT_EQ(engine->state(), State::running);
    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::complete);
}

TEST_F(TimerEngineSettings, TheShownTimeIsMovedWithoutReadingTheClock)
{
    const auto engine = makeEngine();
    clock.jump(100);

    engine->sittingMinutes = 41;
    EXPECT_EQ(engine->remaining(), 2460);
    clock.fire();
    EXPECT_EQ(engine->remaining(), 2360);
}

TEST_F(TimerEngineSettings, AnUnchangedLengthLeavesTheShownTimeAlone)
{
    const auto engine = makeEngine();
    clock.jump(2399.5);
    clock.fire();

    engine->sittingMinutes = 40;
    EXPECT_EQ(engine->remaining(), 0.5);
    EXPECT_EQ(engine->state(), State::running);
}

TEST_F(TimerEngineSettings, ShorteningBelowTheTimeSpentShowsOneSecondAndEndsWithTheNextTick)
{
    const auto engine = makeEngine();
    clock.pass(600);

    engine->sittingMinutes = 5;
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 1);
    EXPECT_EQ(soundsPlayed(), Texts{});

    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
}

TEST_F(TimerEngineSettings, ShorteningToTheTimeSpentShowsOneSecondAndEndsWithTheNextTick)
{
    const auto engine = makeEngine();
    clock.pass(600);

    engine->sittingMinutes = 10;
    EXPECT_EQ(engine->remaining(), 1);
    clock.fire();
    EXPECT_EQ(engine->state(), State::complete);
}

TEST_F(TimerEngineSettings, TheLastSecondIsOnlyShownTheEndMovesByAllOfIt)
{
    const auto engine = makeEngine();
    clock.pass(600);

    engine->sittingMinutes = 5;
    engine->sittingMinutes = 12;
    EXPECT_EQ(engine->remaining(), 421);
    clock.fire();
    EXPECT_EQ(engine->remaining(), 120);
}

TEST_F(TimerEngineSettings, PausingTheShownLastSecondKeepsIt)
{
    const auto engine = makeEngine();
    clock.pass(600);

    engine->sittingMinutes = 5;
    engine->togglePause();
    clock.pass(100);
    engine->togglePause();
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 1);
}

TEST_F(TimerEngineSettings, APausedPhaseIsMovedAndGoesOnWithTheNewTime)
{
    const auto engine = makeEngine();
    clock.pass(600);
    engine->togglePause();
    clock.pass(50);

    engine->sittingMinutes = 45;
    EXPECT_EQ(engine->state(), State::paused);
    EXPECT_EQ(engine->remaining(), 2100);
    EXPECT_EQ(clock.tickSources(), 0);

    engine->togglePause();
    EXPECT_EQ(engine->remaining(), 2100);
    clock.pass(1);
    EXPECT_EQ(engine->remaining(), 2099);
}

TEST_F(TimerEngineSettings, APausedPhaseShortenedBelowTheTimeSpentKeepsOneSecond)
{
    const auto engine = makeEngine();
    clock.pass(600);
    engine->togglePause();

    engine->sittingMinutes = 5;
    EXPECT_EQ(engine->state(), State::paused);
    EXPECT_EQ(engine->remaining(), 1);

    engine->togglePause();
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 1);
    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::running);
    clock.pass(0.5);
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
}

TEST_F(TimerEngineSettings, APausedPhaseLengthenedAgainStartsFromTheKeptSecond)
{
    const auto engine = makeEngine();
    clock.pass(600);
    engine->togglePause();

    engine->sittingMinutes = 5;
    engine->sittingMinutes = 6;
    EXPECT_EQ(engine->remaining(), 61);
    engine->togglePause();
    EXPECT_EQ(engine->remaining(), 61);
}

TEST_F(TimerEngineSettings, ACompletePhaseIsNotReopened)
{
    const auto engine = makeEngine();
    clock.pass(2400);

    engine->sittingMinutes = 60;
    clock.pass(1);
    EXPECT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(clock.tickSources(), 0);
    EXPECT_EQ(soundsPlayed(), Texts{"Glass"});
}

TEST_F(TimerEngineSettings, TheLengthOfAnotherPhaseAppliesWhenThatPhaseStarts)
{
    const auto engine = makeEngineIn(Phase::standing);
    clock.pass(100);

    engine->sittingMinutes = 5;
    EXPECT_EQ(engine->remaining(), 800);
    clock.pass(1);
    EXPECT_EQ(engine->remaining(), 799);

    engine->start(Phase::sitting);
    EXPECT_EQ(engine->remaining(), 300);
    engine->standingMinutes = 3;
    EXPECT_EQ(engine->remaining(), 300);
    engine->advance(false);
    EXPECT_EQ(engine->remaining(), 180);
}

TEST_F(TimerEngineSettings, LengthsDoNotTouchPushups)
{
    const auto engine = makeEngineIn(Phase::pushups);

    engine->sittingMinutes = 5;
    engine->standingMinutes = 5;
    EXPECT_EQ(engine->state(), State::running);
    EXPECT_EQ(engine->remaining(), 0);
    EXPECT_EQ(clock.tickSources(), 0);
}

TEST_F(TimerEngineSettings, ThePushupCountTouchesNoCountdown)
{
    const auto engine = makeEngine();
    clock.pass(100);

    engine->pushupCount = 5;
    EXPECT_EQ(engine->remaining(), 2300);
    EXPECT_EQ(engine->state(), State::running);
    engine->togglePause();
    engine->pushupCount = 6;
    EXPECT_EQ(engine->remaining(), 2300);
    EXPECT_EQ(engine->state(), State::paused);
}

TEST_F(TimerEngineSettings, TheDemoStoresALengthAndKeepsItsOwn)
{
    const auto engine = makeDemoEngine();
    clock.pass(2);

    engine->sittingMinutes = 1;
    EXPECT_EQ(plain(settings.writes),
              (Texts{"sittingMinutes=1", "standingMinutes=15", "pushupCount=50"}));
    EXPECT_EQ(engine->remaining(), 8);
    clock.pass(1);
    EXPECT_EQ(engine->remaining(), 7);

    engine->togglePause();
    engine->sittingMinutes = 60;
    EXPECT_EQ(engine->remaining(), 7);
    engine->start(Phase::sitting);
    EXPECT_EQ(engine->remaining(), 10);
}

TEST_F(TimerEngineSettings, APosedRunningPhaseIsNotMoved)
{
    const auto engine = makeEngine();
    engine->freeze();
    engine->remaining = 1234;

    engine->sittingMinutes = 60;
    EXPECT_EQ(engine->remaining(), 1234);
    EXPECT_EQ(engine->state(), State::running);
}

TEST_F(TimerEngineSettings, TheNextEngineHasThem)
{
    auto engine = makeEngine();
    engine->sittingMinutes = 25;
    engine->standingMinutes = 5;
    engine->pushupCount = 20;
    engine->compactMode = true;
    engine.reset();

    engine = makeEngine();
    EXPECT_EQ(engine->sittingMinutes(), 25);
    EXPECT_EQ(engine->standingMinutes(), 5);
    EXPECT_EQ(engine->pushupCount(), 20);
    EXPECT_TRUE(engine->compactMode());
    EXPECT_EQ(engine->remaining(), 1500);
}

} // namespace
