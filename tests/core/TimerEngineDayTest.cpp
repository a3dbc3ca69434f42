#include "EngineTest.h"

namespace {

using TimerEngineDay = EngineTest;

TEST_F(TimerEngineDay, AWorkingDayRunsThroughItsCyclesWithoutAWordOnTheTerminal)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const Instant morning = clock.now();
    constexpr qint64 cycles = 9;

    const auto engine = makeEngine();
    for (qint64 cycle = 1; cycle <= cycles; ++cycle) {
        EXPECT_EQ(engine->cycle(), cycle);
        clock.pass(1000);
        engine->togglePause();
        clock.pass(300);
        engine->togglePause();
        clock.pass(1400);
        EXPECT_EQ(engine->state(), State::complete);
        clock.pass(25);
        engine->advance(false);
        clock.pass(900);
        EXPECT_EQ(engine->state(), State::complete);
        clock.pass(25);
        engine->advance(false);
        clock.pass(60);
        engine->advance(true);
    }

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(clock.now() - morning, 33390);
    EXPECT_EQ(engine->cycle(), cycles + 1);
    EXPECT_EQ(engine->phase(), Phase::sitting);
    EXPECT_EQ(engine->remaining(), 2400);
    Entries expectedEntries;
    Texts expectedSounds;
    for (qint64 cycle = 1; cycle <= cycles; ++cycle) {
        expectedEntries.insert(
            expectedEntries.end(),
            {{Phase::sitting, 2400, 0}, {Phase::standing, 900, 0}, {Phase::pushups, 0, 50}});
        expectedSounds.insert(expectedSounds.end(), {"Glass", "Hero", "Funk"});
    }
    EXPECT_EQ(log.entries, expectedEntries);
    EXPECT_EQ(soundsPlayed(), expectedSounds);
    EXPECT_EQ(clock.mostTickSources(), 1);
}

} // namespace
