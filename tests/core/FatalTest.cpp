#include "core/Fatal.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class FatalDeathTest : public testing::Test
{
protected:
    static constexpr qint64 largest = std::numeric_limits<qint64>::max();
    static constexpr qint64 smallest = std::numeric_limits<qint64>::min();

    FatalDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(FatalDeathTest, ResultsThatFitAreExact)
{
    EXPECT_EQ(addOrStop(largest - 1, 1), largest);
    EXPECT_EQ(addOrStop(smallest + 1, -1), smallest);
    EXPECT_EQ(subtractOrStop(smallest + 1, 1), smallest);
    EXPECT_EQ(subtractOrStop(-1, smallest), largest);
    EXPECT_EQ(multiplyOrStop(largest, -1), -largest);
    EXPECT_EQ(multiplyOrStop(smallest / 2, 2), smallest);
}

TEST_F(FatalDeathTest, ResultsThatDoNotFitStopTheProcess)
{
    EXPECT_DEATH(addOrStop(largest, 1), "vantora: a sum does not fit 64 bits");
    EXPECT_DEATH(addOrStop(smallest, -1), "vantora: a sum does not fit 64 bits");
    EXPECT_DEATH(subtractOrStop(smallest, 1), "vantora: a difference does not fit 64 bits");
    EXPECT_DEATH(subtractOrStop(0, smallest), "vantora: a difference does not fit 64 bits");
    EXPECT_DEATH(multiplyOrStop(smallest, -1), "vantora: a product does not fit 64 bits");
    EXPECT_DEATH(multiplyOrStop(largest / 60 + 1, 60), "vantora: a product does not fit 64 bits");
}

TEST_F(FatalDeathTest, WholeNumbersAreCutTowardsZero)
{
    EXPECT_EQ(wholeNumberOrStop(1.9), 1);
    EXPECT_EQ(wholeNumberOrStop(-1.9), -1);
    EXPECT_EQ(wholeNumberOrStop(-0.0), 0);
    EXPECT_EQ(wholeNumberOrStop(9223372036854774784.0), largest - 1023);
    EXPECT_EQ(wholeNumberOrStop(-9223372036854775808.0), smallest);
}

TEST_F(FatalDeathTest, NumbersBeyondTheBoundsStopTheProcess)
{
    EXPECT_DEATH(wholeNumberOrStop(9223372036854775808.0), "does not fit 64 bits");
    EXPECT_DEATH(wholeNumberOrStop(-9223372036854777856.0), "does not fit 64 bits");
    EXPECT_DEATH(wholeNumberOrStop(std::numeric_limits<double>::infinity()),
                 "does not fit 64 bits");
    EXPECT_DEATH(wholeNumberOrStop(-std::numeric_limits<double>::infinity()),
                 "does not fit 64 bits");
    EXPECT_DEATH(wholeNumberOrStop(std::numeric_limits<double>::quiet_NaN()),
                 "does not fit 64 bits");
}

} // namespace
