#include "EngineTest.h"

namespace {

class TimerEngineOverflowDeathTest : public EngineTest
{
protected:
    /// The most minutes whose seconds fit 64 bits.
    static constexpr qint64 mostMinutes = largest / 60;

    static constexpr auto noFit = "does not fit 64 bits";

    TimerEngineOverflowDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(TimerEngineOverflowDeathTest, MinutesThatJustFitAreCounted)
{
    const auto engine = makeEngineIn(Phase::pushups);
    engine->sittingMinutes = mostMinutes;
    engine->standingMinutes = -mostMinutes;

    EXPECT_EQ(engine->duration(Phase::sitting), static_cast<double>(mostMinutes * 60));
    EXPECT_EQ(engine->duration(Phase::standing), static_cast<double>(-mostMinutes * 60));
}

TEST_F(TimerEngineOverflowDeathTest, TooManyStoredSittingMinutesStopTheStart)
{
    for (const qint64 minutes : {mostMinutes + 1, qint64{1} << 62, largest}) {
        settings.values[QStringLiteral("sittingMinutes")] = QString::number(minutes);
        EXPECT_DEATH(makeEngine(), noFit);
    }
}

TEST_F(TimerEngineOverflowDeathTest, TooManyStoredStandingMinutesStopTheProcessOnceTheyCount)
{
    settings.values[QStringLiteral("standingMinutes")] = QString::number(mostMinutes + 1);
    const auto engine = makeEngine();

    EXPECT_EQ(engine->standingMinutes(), mostMinutes + 1);
    EXPECT_DEATH(engine->duration(Phase::standing), noFit);
    EXPECT_DEATH(engine->advance(false), noFit);
}

TEST_F(TimerEngineOverflowDeathTest, TooFewMinutesStopTheProcessAsWell)
{
    const auto engine = makeEngineIn(Phase::pushups);
    engine->sittingMinutes = -mostMinutes - 1;
    EXPECT_DEATH(engine->duration(Phase::sitting), noFit);
    engine->sittingMinutes = smallest;
    EXPECT_DEATH(engine->duration(Phase::sitting), noFit);
}

TEST_F(TimerEngineOverflowDeathTest, AChangeThatDoesNotFitInSecondsStopsTheProcess)
{
    const auto engine = makeEngine();
    EXPECT_DEATH(engine->sittingMinutes = largest, noFit);
    EXPECT_DEATH(engine->sittingMinutes = mostMinutes + 41, noFit);
    EXPECT_DEATH(engine->sittingMinutes = smallest + 1000, noFit);

    engine->togglePause();
    EXPECT_DEATH(engine->sittingMinutes = largest, noFit);

    engine->start(Phase::standing);
    EXPECT_DEATH(engine->standingMinutes = largest, noFit);
}

TEST_F(TimerEngineOverflowDeathTest, AChangeThatDoesNotFitStopsACompletePhaseToo)
{
    const auto engine = makeEngine();
    clock.pass(2400);
    EXPECT_DEATH(engine->sittingMinutes = largest, noFit);
}

TEST_F(TimerEngineOverflowDeathTest, ADifferenceThatDoesNotFitInMinutesStopsTheProcess)
{
    const auto engine = makeEngineIn(Phase::standing);
    engine->sittingMinutes = largest;
    engine->freeze();
    engine->phase = Phase::sitting;
    EXPECT_DEATH(engine->sittingMinutes = smallest, noFit);
}

TEST_F(TimerEngineOverflowDeathTest, AnyChangeOfAnotherPhaseIsTaken)
{
    const auto engine = makeEngine();
    engine->standingMinutes = largest;
    engine->standingMinutes = smallest;
    EXPECT_EQ(engine->remaining(), 2400);
}

TEST_F(TimerEngineOverflowDeathTest, AnyChangeIsTakenInTheDemo)
{
    const auto engine = makeDemoEngine();
    engine->sittingMinutes = largest;
    engine->sittingMinutes = smallest;
    EXPECT_EQ(engine->remaining(), 10);
    EXPECT_EQ(engine->duration(Phase::sitting), 10);
}

TEST_F(TimerEngineOverflowDeathTest, TheCycleAfterTheLastOneStopsTheProcess)
{
    const auto engine = makeEngine();
    engine->cycle = largest - 1;
    engine->start(Phase::pushups);
    engine->advance(true);
    EXPECT_EQ(engine->cycle(), largest);

    engine->advance(false);
    engine->advance(false);
    EXPECT_EQ(engine->cycle(), largest);
    EXPECT_DEATH(engine->advance(true), noFit);
    EXPECT_DEATH(engine->advance(false), noFit);
}

TEST_F(TimerEngineOverflowDeathTest, AnyPushupCountIsTaken)
{
    settings.values[QStringLiteral("pushupCount")] = QString::number(qint64{1} << 62);
    const auto engine = makeEngine();
    EXPECT_EQ(engine->pushupCount(), qint64{1} << 62);

    engine->pushupCount = largest;
    engine->start(Phase::pushups);
    engine->advance(true);
    EXPECT_EQ(log.entries, (Entries{{Phase::pushups, 0, largest}}));
}

TEST_F(TimerEngineOverflowDeathTest, ATimeThatIsNoNumberOfSecondsStopsTheProcess)
{
    const auto engine = makeEngine();
    engine->freeze();
    for (const double seconds : {
             std::numeric_limits<double>::quiet_NaN(),
             std::numeric_limits<double>::infinity(),
             -std::numeric_limits<double>::infinity(),
             9223372036854775808.0,
             -9223372036854777856.0,
             1e300,
         }) {
        engine->remaining = seconds;
        EXPECT_DEATH(engine->timeString(), noFit) << seconds;
        EXPECT_DEATH(engine->menuBarTitle(), noFit) << seconds;
    }
}

} // namespace
