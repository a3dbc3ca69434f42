#include "EngineTest.h"

namespace {

class TimerEngineTexts : public EngineTest
{
protected:
    TimerEngineTexts() { engine->freeze(); }

    std::string timeAt(double remaining)
    {
        engine->remaining = remaining;
        return engine->timeString().toStdString();
    }

    std::string titleOf(Phase phase, State state, double remaining)
    {
        engine->phase = phase;
        engine->state = state;
        engine->remaining = remaining;
        return engine->menuBarTitle().toStdString();
    }

    std::optional<double> progressOf(Phase phase, double remaining)
    {
        engine->phase = phase;
        engine->remaining = remaining;
        return engine->progress();
    }

    std::unique_ptr<TimerEngine> engine = makeEngine();
};

TEST_F(TimerEngineTexts, TheTimeIsRoundedUpToWholeSeconds)
{
    EXPECT_EQ(timeAt(2400), "40:00");
    EXPECT_EQ(timeAt(2399.5), "40:00");
    EXPECT_EQ(timeAt(2399), "39:59");
    EXPECT_EQ(timeAt(60.5), "1:01");
    EXPECT_EQ(timeAt(60.0001), "1:01");
    EXPECT_EQ(timeAt(60), "1:00");
    EXPECT_EQ(timeAt(59.2), "1:00");
    EXPECT_EQ(timeAt(59.0001), "1:00");
    EXPECT_EQ(timeAt(59), "0:59");
    EXPECT_EQ(timeAt(9), "0:09");
    EXPECT_EQ(timeAt(1), "0:01");
    EXPECT_EQ(timeAt(0.4), "0:01");
    EXPECT_EQ(timeAt(1e-9), "0:01");
}

TEST_F(TimerEngineTexts, TheTimeIsZeroOnlyWhenItIsOver)
{
    EXPECT_EQ(timeAt(0), "0:00");
    EXPECT_EQ(timeAt(-0.4), "0:00");
    EXPECT_EQ(timeAt(-1), "0:00");
    EXPECT_EQ(timeAt(-3600), "0:00");
    EXPECT_EQ(timeAt(-9223372036854775808.0), "0:00");
}

TEST_F(TimerEngineTexts, TheMinutesNeverBecomeHoursAndAreNotGrouped)
{
    EXPECT_EQ(timeAt(3600), "60:00");
    EXPECT_EQ(timeAt(6000), "100:00");
    EXPECT_EQ(timeAt(60 * 12345 + 6), "12345:06");
    EXPECT_EQ(timeAt(9007199254740992.0), "150119987579016:32");
}

TEST_F(TimerEngineTexts, ARunningTitleIsTheEmojiOneSpaceAndTheTime)
{
    EXPECT_EQ(titleOf(Phase::sitting, State::running, 2399), "🪑 39:59");
    EXPECT_EQ(titleOf(Phase::standing, State::running, 61), "🧍 1:01");
}

TEST_F(TimerEngineTexts, APausedTitleHasThePauseSignBetweenTwoSpaces)
{
    EXPECT_EQ(titleOf(Phase::sitting, State::paused, 6000), "🪑 \xE2\x8F\xB8 100:00");
    EXPECT_EQ(titleOf(Phase::standing, State::paused, 750), "🧍 \xE2\x8F\xB8 12:30");
}

TEST_F(TimerEngineTexts, ACompleteTitleHasACheckMarkAndNoTime)
{
    EXPECT_EQ(titleOf(Phase::sitting, State::complete, 0), "🪑 \xE2\x9C\x93");
    EXPECT_EQ(titleOf(Phase::standing, State::complete, 754), "🧍 \xE2\x9C\x93");
}

TEST_F(TimerEngineTexts, APushupTitleHasTheCountInEveryState)
{
    for (const State state : {State::running, State::paused, State::complete}) {
        engine->pushupCount = 50;
        EXPECT_EQ(titleOf(Phase::pushups, state, 0), "💪 \xC3\x97"
                                                     "50");
        EXPECT_EQ(titleOf(Phase::pushups, state, 754), "💪 \xC3\x97"
                                                       "50");
        engine->pushupCount = 1234567;
        EXPECT_EQ(titleOf(Phase::pushups, state, 0), "💪 \xC3\x97"
                                                     "1234567");
    }
}

TEST_F(TimerEngineTexts, TheTitleFollowsACountdown)
{
    const auto title = [this] { return engine->menuBarTitle().toStdString(); };

    engine->start(Phase::standing);
    EXPECT_EQ(title(), "🧍 15:00");
    clock.pass(0.5);
    EXPECT_EQ(title(), "🧍 15:00");
    clock.pass(0.5);
    EXPECT_EQ(title(), "🧍 14:59");
    engine->togglePause();
    EXPECT_EQ(title(), "🧍 ⏸ 14:59");
    engine->togglePause();
    clock.pass(899);
    EXPECT_EQ(title(), "🧍 ✓");
    engine->advance(false);
    EXPECT_EQ(title(), "💪 ×50");
}

TEST_F(TimerEngineTexts, ProgressIsThePartStillToCome)
{
    EXPECT_EQ(progressOf(Phase::sitting, 2400), 1.0);
    EXPECT_EQ(progressOf(Phase::sitting, 1200), 0.5);
    EXPECT_EQ(progressOf(Phase::sitting, 600), 0.25);
    EXPECT_EQ(progressOf(Phase::sitting, 0), 0.0);
    EXPECT_EQ(progressOf(Phase::standing, 675), 0.75);
}

TEST_F(TimerEngineTexts, ProgressStaysBetweenZeroAndOne)
{
    EXPECT_EQ(progressOf(Phase::sitting, 2401), 1.0);
    EXPECT_EQ(progressOf(Phase::sitting, 1e300), 1.0);
    EXPECT_EQ(progressOf(Phase::sitting, -1), 0.0);
    EXPECT_EQ(progressOf(Phase::sitting, -1e300), 0.0);
}

TEST_F(TimerEngineTexts, ProgressIsFullAfterAStartAndNoneWhenComplete)
{
    engine->start(Phase::standing);
    EXPECT_EQ(engine->progress(), 1.0);
    clock.pass(900);
    ASSERT_EQ(engine->state(), State::complete);
    EXPECT_EQ(engine->progress(), 0.0);
}

TEST_F(TimerEngineTexts, ProgressIsAbsentInPushups)
{
    EXPECT_EQ(progressOf(Phase::pushups, 0), std::nullopt);
    EXPECT_EQ(progressOf(Phase::pushups, 100), std::nullopt);
}

TEST_F(TimerEngineTexts, ProgressIsAbsentInAPhaseOfNoMinutes)
{
    engine->standingMinutes = 0;
    EXPECT_EQ(progressOf(Phase::standing, 10), std::nullopt);
    engine->standingMinutes = -4;
    EXPECT_EQ(progressOf(Phase::standing, 10), std::nullopt);
}

TEST_F(TimerEngineTexts, ProgressIsMeasuredAgainstTheSettingOfThatMoment)
{
    engine->phase = Phase::standing;
    engine->sittingMinutes = 10;
    EXPECT_EQ(progressOf(Phase::sitting, 300), 0.5);
}

TEST_F(TimerEngineTexts, ProgressOfTheDemoIsMeasuredAgainstItsLengths)
{
    engine = makeDemoEngine();
    clock.pass(2.5);
    EXPECT_EQ(engine->progress(), 0.75);
    engine->start(Phase::standing);
    clock.pass(6);
    EXPECT_EQ(engine->progress(), 0.25);
}

} // namespace
