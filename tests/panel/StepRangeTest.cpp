#include "panel/StepRange.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr StepRange minutes{1, 240, 1};
constexpr StepRange pushups{1, 500, 5};

constexpr qint64 largest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();

} // namespace

TEST(StepRangeTest, aPressMovesTheValueByTheStep)
{
    EXPECT_EQ(minutes.raised(40), 41);
    EXPECT_EQ(minutes.lowered(40), 39);
    EXPECT_EQ(pushups.raised(50), 55);
    EXPECT_EQ(pushups.lowered(50), 45);
}

TEST(StepRangeTest, theLastStepEndsAtTheBound)
{
    EXPECT_EQ(minutes.raised(239), 240);
    EXPECT_EQ(minutes.lowered(2), 1);
    EXPECT_EQ(pushups.raised(1), 6);
    EXPECT_EQ(pushups.lowered(6), 1);
    EXPECT_EQ(pushups.lowered(3), 1);
    EXPECT_EQ(pushups.raised(498), 500);
}

TEST(StepRangeTest, atABoundOnlyTheOtherDirectionIsOpen)
{
    for (const StepRange& range : {minutes, pushups}) {
        EXPECT_FALSE(range.canLower(range.least));
        EXPECT_TRUE(range.canRaise(range.least));
        EXPECT_EQ(range.lowered(range.least), range.least);
        EXPECT_TRUE(range.canLower(range.most));
        EXPECT_FALSE(range.canRaise(range.most));
        EXPECT_EQ(range.raised(range.most), range.most);
    }
}

TEST(StepRangeTest, nothingFromWithinLeadsOut)
{
    for (const StepRange& range : {minutes, pushups}) {
        for (qint64 value = range.least; value <= range.most; ++value) {
            EXPECT_GE(range.lowered(value), range.least) << value;
            EXPECT_LE(range.raised(value), range.most) << value;
        }
    }
}

TEST(StepRangeTest, farOutsideTheOnlyWayIsToTheNearerBound)
{
    for (const StepRange& range : {minutes, pushups}) {
        for (const qint64 above : {range.most + range.step, range.most + 260, largest}) {
            EXPECT_FALSE(range.canRaise(above));
            EXPECT_EQ(range.raised(above), above);
            EXPECT_TRUE(range.canLower(above));
            EXPECT_EQ(range.lowered(above), range.most) << above;
        }
        for (const qint64 below : {range.least - range.step, qint64{-300}, smallest}) {
            EXPECT_FALSE(range.canLower(below));
            EXPECT_EQ(range.lowered(below), below);
            EXPECT_TRUE(range.canRaise(below));
            EXPECT_EQ(range.raised(below), range.least) << below;
        }
    }
}

TEST(StepRangeTest, fromJustOutsideOneStepLeadsIn)
{
    for (qint64 value = 501; value < 510; ++value) {
        EXPECT_LE(pushups.lowered(value), 500) << value;
        EXPECT_GE(pushups.lowered(value), 496) << value;
    }
    for (qint64 value = 0; value > -10; --value) {
        EXPECT_GE(pushups.raised(value), 1) << value;
        EXPECT_LE(pushups.raised(value), 5) << value;
    }
}
