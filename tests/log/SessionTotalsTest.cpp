#include "LogFolder.h"
#include "QuickFileSystem.h"
#include "log/SessionStore.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

SessionEntry entryOf(qint64 phaseRaw, double seconds, qint64 reps)
{
    return {QUuid::createUuid(), Instant{763637213}, phaseRaw, seconds, reps};
}

class SessionTotals : public testing::Test
{
protected:
    LogFolder folder;
    ManualClock clock;
    QuickFileSystem fileSystem;
    SessionStore store{clock, fileSystem, folder.file()};
};

using SessionTotalsDeathTest = SessionTotals;

} // namespace

TEST_F(SessionTotals, TotalsOfAnEmptyHistoryAreZero)
{
    EXPECT_EQ(store.totalSittingSeconds(), 0);
    EXPECT_FALSE(std::signbit(store.totalSittingSeconds()));
    EXPECT_EQ(store.totalStandingSeconds(), 0);
    EXPECT_EQ(store.totalPushups(), 0);
}

TEST_F(SessionTotals, TotalsFollowTheLoggedPhases)
{
    store.log(Phase::sitting, 1500, 0);
    store.log(Phase::standing, 900.5, 0);
    EXPECT_EQ(store.totalSittingSeconds(), 1500.0);
    EXPECT_EQ(store.totalStandingSeconds(), 900.5);
    EXPECT_EQ(store.totalPushups(), 0);
    store.log(Phase::pushups, 0, 50);
    EXPECT_EQ(store.totalPushups(), 50);
    store.entries = {};
    EXPECT_EQ(store.totalSittingSeconds(), 0);
    EXPECT_EQ(store.totalPushups(), 0);
}

TEST_F(SessionTotals, AnUnknownPhaseCountsAsSitting)
{
    store.entries = {entryOf(7, 1, 0),
                     entryOf(-1, 2, 0),
                     entryOf(3, 4, 0),
                     entryOf(std::numeric_limits<qint64>::min(), 8, 0),
                     entryOf(std::numeric_limits<qint64>::max(), 16, 0),
                     entryOf(4294967297, 32, 0),
                     entryOf(0, 64, 0),
                     entryOf(1, 128, 0),
                     entryOf(2, 256, 0)};
    EXPECT_EQ(store.totalSittingSeconds(), 127);
    EXPECT_EQ(store.totalStandingSeconds(), 128);
}

TEST_F(SessionTotals, SecondsAreAddedInTheOrderOfTheEntries)
{
    store.entries = {entryOf(0, 1e16, 0), entryOf(0, 1, 0), entryOf(0, -1e16, 0)};
    EXPECT_EQ(store.totalSittingSeconds(), 0);
    store.entries = {entryOf(0, 1e16, 0), entryOf(0, -1e16, 0), entryOf(0, 1, 0)};
    EXPECT_EQ(store.totalSittingSeconds(), 1);
}

TEST_F(SessionTotals, PushupsAreCountedInEveryPhase)
{
    store.entries = {entryOf(0, 0, 1), entryOf(1, 0, 20), entryOf(2, 0, 300), entryOf(7, 0, 4000),
                     entryOf(2, 0, -21)};
    EXPECT_EQ(store.totalPushups(), 4300);
}

TEST_F(SessionTotals, PushupsMayAddUpToTheLargestNumber)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    store.entries = {entryOf(2, 0, most - 1), entryOf(2, 0, 1)};
    EXPECT_EQ(store.totalPushups(), most);
    store.entries = {entryOf(2, 0, least + 1), entryOf(2, 0, -1)};
    EXPECT_EQ(store.totalPushups(), least);
}

TEST_F(SessionTotalsDeathTest, PushupsThatDoNotFitStopTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    store.entries = {entryOf(2, 0, most), entryOf(0, 0, 1), entryOf(2, 0, -1)};
    EXPECT_DEATH(store.totalPushups(), "vantora: ");
    store.entries = {entryOf(2, 0, least), entryOf(2, 0, -1)};
    EXPECT_DEATH(store.totalPushups(), "vantora: ");
}

TEST(HoursString, WholeMinutesAreShownAndTheRestIsCutOff)
{
    const struct
    {
        double seconds;
        const char* text;
    } times[] = {
        {0, "0m"},
        {-0.0, "0m"},
        {59.9, "0m"},
        {60, "1m"},
        {119.999, "1m"},
        {3599, "59m"},
        {3599.999, "59m"},
        {3600, "1h 0m"},
        {3659.9, "1h 0m"},
        {3900, "1h 5m"},
        {7199, "1h 59m"},
        {7200, "2h 0m"},
        {90000, "25h 0m"},
        {3600000, "1000h 0m"},
        {3600.0 * 1234567 + 600, "1234567h 10m"},
        {-59.9, "0m"},
        {-60, "-1m"},
        {-300, "-5m"},
        {-3600, "0m"},
        {-3900, "-5m"},
        {-7199, "-59m"},
        {5e-324, "0m"},
        {60 * 9223372036854774784.0, "153722867280912913h 4m"},
        {60 * -9223372036854775808.0, "-8m"},
    };
    for (const auto& [seconds, text] : times)
        EXPECT_EQ(SessionStore::hoursString(seconds).toStdString(), text) << seconds;
}

TEST(HoursStringDeathTest, ATimeThatHasNoMinutesStopsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    using Limits = std::numeric_limits<double>;
    for (const double seconds : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                                 Limits::max(), 60 * 9223372036854775808.0, -6e20})
        EXPECT_DEATH(SessionStore::hoursString(seconds), "vantora: ") << seconds;
}
