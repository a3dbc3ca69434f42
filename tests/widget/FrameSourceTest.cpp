#include "widget/FrameSource.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace {

class FrameSourceTest : public testing::Test
{
protected:
    FrameSourceTest()
    {
        QObject::connect(&source, &FrameSource::frame, &source, [this] { ++frames; });
    }

    /// Lets time pass; the number of frames that came.
    int framesIn(double seconds)
    {
        const int before = frames;
        clock.passFrames(seconds, [] {});
        return frames - before;
    }

    /// Asks for so many frames a second in each frame.
    void keepAsking(double rate)
    {
        QObject::connect(&source, &FrameSource::frame, &asker,
                         [this, rate] { source.request(rate); });
    }

    ManualClock clock;
    FrameSource source{clock};
    int frames = 0;
    QObject asker;
};

} // namespace

TEST_F(FrameSourceTest, noFrameComesUnlessItIsAskedFor)
{
    EXPECT_EQ(framesIn(1), 0);
    EXPECT_EQ(clock.frameSources(), 0) << "nothing runs";
}

TEST_F(FrameSourceTest, eachRequestBringsOneFrame)
{
    source.request();
    source.request();
    EXPECT_EQ(frames, 0) << "not before its time";
    EXPECT_EQ(framesIn(1), 1);
    EXPECT_EQ(clock.frameSources(), 0) << "stopped when nobody asked";
    source.request();
    EXPECT_EQ(framesIn(1), 1);
}

TEST_F(FrameSourceTest, framesFollowEachOtherAsLongAsTheyAreAskedFor)
{
    keepAsking(FrameSource::maximumRate);
    source.request();
    EXPECT_EQ(framesIn(0.99), 30);
    EXPECT_EQ(clock.frameSources(), 1);
    QObject::disconnect(&source, &FrameSource::frame, &asker, nullptr);
    EXPECT_EQ(framesIn(1), 1);
    EXPECT_EQ(clock.frameSources(), 0);
}

TEST_F(FrameSourceTest, aFrameCarriesTheTimeOfTheClock)
{
    Instant shown;
    QObject::connect(&source, &FrameSource::frame, &asker, [&](Instant now) { shown = now; });
    source.request();
    framesIn(1.0 / 30);
    EXPECT_EQ(shown, clock.now());
    EXPECT_EQ(source.now(), clock.now());
}

TEST_F(FrameSourceTest, theClockIsAskedForThisRateAndNotMore)
{
    source.request(12);
    EXPECT_EQ(clock.framesPerSecond(), 12);
    EXPECT_EQ(clock.frameSources(), 1);
}

TEST_F(FrameSourceTest, theHighestRateThatIsAskedForHolds)
{
    source.request(12);
    source.request(24);
    source.request(6);
    EXPECT_EQ(clock.framesPerSecond(), 24);
    EXPECT_EQ(clock.frameSources(), 1) << "there is one source for all";
}

TEST_F(FrameSourceTest, theHighestOfAFramesRequestsHoldsForTheNext)
{
    keepAsking(12);
    keepAsking(20);
    keepAsking(6);
    source.request();
    EXPECT_EQ(clock.framesPerSecond(), 30);
    framesIn(1.0 / 30);
    EXPECT_EQ(clock.framesPerSecond(), 20) << "nobody asks for 30 any more";
    EXPECT_EQ(clock.frameSources(), 1);
}

TEST_F(FrameSourceTest, aSteadyRateKeepsItsSource)
{
    // A source that is made anew with each frame would start its waiting anew, too.
    class CountingClock : public ManualClock
    {
    public:
        std::unique_ptr<Ticks> startFrames(double rate, std::function<void()> frame) override
        {
            ++started;
            return ManualClock::startFrames(rate, std::move(frame));
        }
        int started = 0;
    };
    CountingClock counting;
    FrameSource steady(counting);
    QObject::connect(&steady, &FrameSource::frame, &asker, [&] {
        steady.request(6);
        steady.request(12);
    });
    steady.request(12);
    counting.passFrames(1, [&] { steady.request(12); });
    EXPECT_EQ(counting.started, 1);
}

TEST_F(FrameSourceTest, nothingComesWhileNothingMayMove)
{
    source.setAnimated(false);
    source.request();
    EXPECT_EQ(framesIn(1), 0);
    EXPECT_EQ(clock.frameSources(), 0);
    source.setAnimated(true);
    EXPECT_EQ(framesIn(1), 0) << "what was asked for in the meantime is forgotten";
    source.request();
    EXPECT_EQ(framesIn(1), 1);
}

TEST_F(FrameSourceTest, framesEndWhenNothingMayMoveAnyMore)
{
    keepAsking(30);
    source.request();
    framesIn(0.5);
    source.setAnimated(false);
    EXPECT_EQ(framesIn(1), 0);
    EXPECT_EQ(clock.frameSources(), 0);
}

TEST_F(FrameSourceTest, itTellsWhenTheUserChangesTheirMind)
{
    QList<bool> told;
    QObject::connect(&source, &FrameSource::interrupted, &asker,
                     [&] { told.append(source.isAnimated()); });
    EXPECT_TRUE(source.isAnimated());
    source.setAnimated(true);
    source.setAnimated(false);
    source.setAnimated(false);
    EXPECT_FALSE(source.isAnimated());
    source.setAnimated(true);
    EXPECT_EQ(told, (QList<bool>{false, true}));
}

TEST_F(FrameSourceTest, itTellsBeforeTheFrameThatTheClockWasSetBack)
{
    QList<int> told;
    QObject::connect(&source, &FrameSource::interrupted, &asker, [&] { told.append(frames); });
    keepAsking(30);
    source.request();
    framesIn(0.5);
    clock.jump(100);
    framesIn(0.5);
    EXPECT_EQ(told, QList<int>{});
    const int before = frames;
    clock.jump(-3600);
    framesIn(0.5);
    EXPECT_EQ(told, QList<int>{before});
}
