#include "widget/Motion.h"

#include "widget/Curves.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

namespace {

constexpr Instant start{763637213.75};

constexpr Curve linear{Curve::Shape::linear, 0.5};
constexpr Curve eased{Curve::Shape::easeInOut, 0.3};
constexpr Curve quickEased{Curve::Shape::easeInOut, 0.18};
constexpr Curve spring{Curve::Shape::spring, 0.6};
constexpr Curve quickSpring{Curve::Shape::spring, 0.5};

constexpr std::array allCurves{linear, eased, quickEased, spring, quickSpring};

Motion moving(double from, double to, Curve curve)
{
    Motion motion(from);
    motion.moveTo(to, curve, start);
    return motion;
}

/// The speed of `motion` at `now`, from its values.
double speedOf(const Motion& motion, Instant now)
{
    constexpr double step = 1e-4;
    return (motion.at(now + step) - motion.at(now + -step)) / (2 * step);
}

} // namespace

TEST(MotionTest, restsAtItsFirstValue)
{
    const Motion motion(3);
    EXPECT_EQ(motion.at(start), 3);
    EXPECT_EQ(motion.target(), 3);
    EXPECT_FALSE(motion.isMovingAt(start));
    EXPECT_EQ(motion.velocityAt(start), 0);
}

TEST(MotionTest, followsItsCurve)
{
    for (const double part : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        for (const Curve& curve : {linear, eased, quickEased}) {
            const double way = curve.shape == Curve::Shape::linear ? part : easedInOut(part);
            EXPECT_NEAR(moving(2, 6, curve).at(start + part * curve.seconds), 2 + 4 * way, 1e-3)
                << part << " of " << curve.seconds << " s";
        }
        for (const Curve& curve : {spring, quickSpring}) {
            const double seconds = part * curve.seconds;
            EXPECT_NEAR(moving(2, 6, curve).at(start + seconds),
                        2 + 4 * sprung(curve.seconds, seconds), 1e-6)
                << part << " of the response " << curve.seconds;
        }
    }
}

TEST(MotionTest, arrivesExactlyAndIsThenAtRest)
{
    for (const Curve& curve : allCurves) {
        const Motion motion = moving(0, 1, curve);
        EXPECT_TRUE(motion.isMovingAt(start));
        EXPECT_TRUE(motion.isMovingAt(start + curve.seconds * 0.9));
        const Instant end = start + 2 * curve.seconds;
        EXPECT_FALSE(motion.isMovingAt(end));
        EXPECT_EQ(motion.at(end), 1);
        EXPECT_EQ(motion.velocityAt(end), 0);
    }
}

TEST(MotionTest, isContinuousToItsEnd)
{
    for (const Curve& curve : allCurves) {
        const Motion motion = moving(0, 1, curve);
        double last = 0;
        for (int i = 1; i < 2000; ++i) {
            const double value = motion.at(start + i * 0.001);
            ASSERT_GE(value, last) << "goes back";
            ASSERT_LT(value - last, 0.011) << "jumps after " << i << " ms";
            last = value;
        }
    }
}

TEST(MotionTest, setsOutAnewFromWhereItIs)
{
    for (const Curve& first : allCurves) {
        for (const Curve& second : allCurves) {
            Motion motion = moving(0, 1, first);
            const Instant turn = start + first.seconds * 0.4;
            const double before = motion.at(turn);
            motion.moveTo(-2, second, turn);
            EXPECT_NEAR(motion.at(turn), before, 1e-12);
            EXPECT_NEAR(motion.at(turn + 1e-5), before, 1e-3);
            EXPECT_EQ(motion.target(), -2);
            EXPECT_TRUE(motion.isMovingAt(turn));
            EXPECT_EQ(motion.at(turn + 2), -2);
        }
    }
}

TEST(MotionTest, aSpringKeepsTheSpeedItHas)
{
    for (const Curve& first : {spring, quickSpring, eased}) {
        for (const double target : {2.0, 0.0, 1.3}) {
            Motion motion = moving(0, 1, first);
            const Instant turn = start + 0.1;
            const double speed = speedOf(motion, turn);
            const double from = motion.at(turn);
            ASSERT_GT(speed, 1);
            EXPECT_NEAR(motion.velocityAt(turn), speed, 0.1);
            motion.moveTo(target, quickSpring, turn);
            EXPECT_NEAR(motion.velocityAt(turn), speed, 0.2);

            // The law of the spring, step by step.
            const double omega = 2 * std::numbers::pi / quickSpring.seconds;
            double place = from;
            double velocity = speed;
            constexpr double step = 1e-5;
            for (int i = 0; i < 40'000; ++i) {
                velocity += step * (-2 * omega * velocity - omega * omega * (place - target));
                place += step * velocity;
                if (i % 5'000 == 0) {
                    ASSERT_NEAR(motion.at(turn + (i + 1) * step), place, 0.005)
                        << i * step << " s after the turn to " << target;
                }
            }
        }
    }
}

TEST(MotionTest, aCurveOfFixedLengthStartsAnewFromRest)
{
    Motion motion = moving(0, 1, spring);
    const Instant turn = start + 0.1;
    const double from = motion.at(turn);
    motion.moveTo(0, eased, turn);
    for (const double part : {0.25, 0.5, 0.75})
        EXPECT_NEAR(motion.at(turn + part * 0.3), from * (1 - easedInOut(part)), 1e-3);
}

TEST(MotionTest, theSameTargetAgainDisturbsNothing)
{
    for (const Curve& curve : allCurves) {
        const Motion undisturbed = moving(0, 1, curve);
        Motion motion = undisturbed;
        motion.moveTo(1, curve, start + curve.seconds * 0.5);
        motion.moveTo(1, linear, start + curve.seconds * 0.6);
        for (const double part : {0.55, 0.7, 0.9, 1.5}) {
            const Instant now = start + part * curve.seconds;
            EXPECT_EQ(motion.at(now), undisturbed.at(now));
            EXPECT_EQ(motion.isMovingAt(now), undisturbed.isMovingAt(now));
        }
    }
}

TEST(MotionTest, goesBackWhereItCameFrom)
{
    Motion motion = moving(0, 1, quickEased);
    const Instant turn = start + 0.09;
    motion.moveTo(0, quickEased, turn);
    EXPECT_NEAR(motion.at(turn), 0.5, 1e-3);
    EXPECT_NEAR(motion.at(turn + 0.09), 0.25, 1e-3);
    EXPECT_EQ(motion.at(turn + 0.181), 0);
    EXPECT_FALSE(motion.isMovingAt(turn + 0.181));
}

TEST(MotionTest, setsOutFromRestAfterItHasArrived)
{
    Motion motion = moving(0, 1, spring);
    const Instant later = start + 10;
    motion.moveTo(0, spring, later);
    EXPECT_NEAR(motion.at(later + 0.15), 1 - sprung(0.6, 0.15), 1e-6);
}

TEST(MotionTest, aClockThatIsSetBackEndsTheWay)
{
    for (const Curve& curve : allCurves) {
        Motion motion = moving(0, 1, curve);
        const Instant earlier = start + -3600;
        EXPECT_FALSE(motion.isMovingAt(earlier));
        EXPECT_EQ(motion.at(earlier), 1);
        EXPECT_EQ(motion.velocityAt(earlier), 0);
        motion.moveTo(0, curve, earlier);
        EXPECT_EQ(motion.at(earlier), 1);
        EXPECT_EQ(motion.at(earlier + 5), 0);
    }
}

TEST(MotionTest, jumpsWithoutMoving)
{
    Motion motion = moving(0, 1, spring);
    motion.jumpTo(0.25);
    EXPECT_EQ(motion.at(start + 0.01), 0.25);
    EXPECT_EQ(motion.target(), 0.25);
    EXPECT_FALSE(motion.isMovingAt(start + 0.01));
}

TEST(MotionTest, aSwitchThatIsThrownAtRandomNeverLeavesItsRange)
{
    for (const Curve& curve : allCurves) {
        std::mt19937 random(20010101);
        std::uniform_real_distribution<double> pause(0, curve.seconds);
        Motion motion(0);
        Instant now = start;
        for (int i = 0; i < 5'000; ++i) {
            motion.moveTo(i % 2 == 0 ? 1 : 0, curve, now);
            const double length = pause(random);
            for (int j = 0; j < 5; ++j) {
                now = now + length / 5;
                ASSERT_GE(motion.at(now), -1e-3) << "after " << i << " turns";
                ASSERT_LE(motion.at(now), 1 + 1e-3) << "after " << i << " turns";
            }
        }
    }
}
