#include "widget/Fade.h"

#include "widget/Curves.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

constexpr Instant start{763637213.75};
constexpr Curve eased{Curve::Shape::easeInOut, 0.3};
constexpr Curve spring{Curve::Shape::spring, 0.6};

using TextFade = Fade<std::string>;

/// What is there, and how much of it.
std::map<std::string, double> presences(const TextFade& fade, Instant now)
{
    std::map<std::string, double> result;
    fade.visit(now, [&](const std::string& content, double presence) {
        EXPECT_FALSE(result.contains(content)) << content << " is there twice";
        result[content] = presence;
    });
    return result;
}

const std::map<std::string, double> onlyA{{"a", 1.0}};
const std::map<std::string, double> onlyB{{"b", 1.0}};

} // namespace

TEST(FadeTest, theFirstContentIsThereAtOnce)
{
    const TextFade fade("a");
    EXPECT_EQ(fade.content(), "a");
    EXPECT_EQ(presences(fade, start), onlyA);
    EXPECT_FALSE(fade.isMovingAt(start));
}

TEST(FadeTest, oneContentGoesAsTheOtherComes)
{
    TextFade fade("a");
    fade.moveTo("b", eased, start);
    EXPECT_EQ(fade.content(), "b") << "the content of now, from the first moment on";
    EXPECT_EQ(presences(fade, start), onlyA);
    for (const double part : {0.25, 0.5, 0.75}) {
        auto there = presences(fade, start + part * 0.3);
        EXPECT_NEAR(there["a"], 1 - easedInOut(part), 1e-3);
        EXPECT_NEAR(there["b"], easedInOut(part), 1e-3);
        EXPECT_TRUE(fade.isMovingAt(start + part * 0.3));
    }
    EXPECT_EQ(presences(fade, start + 0.301), onlyB);
    EXPECT_FALSE(fade.isMovingAt(start + 0.301));
}

TEST(FadeTest, theContentOfNowIsVisitedLast)
{
    TextFade fade("a");
    fade.moveTo("b", eased, start);
    fade.moveTo("c", eased, start + 0.1);
    fade.moveTo("a", eased, start + 0.15);
    std::string order;
    fade.visit(start + 0.2, [&](const std::string& content, double) { order += content; });
    EXPECT_EQ(order, "bca");
}

TEST(FadeTest, theSameContentAgainDisturbsNothing)
{
    TextFade fade("a");
    fade.moveTo("a", eased, start);
    EXPECT_FALSE(fade.isMovingAt(start));
    fade.moveTo("b", eased, start);
    fade.moveTo("b", spring, start + 0.1);
    EXPECT_NEAR(presences(fade, start + 0.15)["b"], 0.5, 1e-3);
    EXPECT_EQ(presences(fade, start + 0.301), onlyB);
}

TEST(FadeTest, aContentThatReturnsComesBackFromWhereItWas)
{
    TextFade fade("a");
    fade.moveTo("b", eased, start);
    const Instant turn = start + 0.1;
    auto before = presences(fade, turn);
    fade.moveTo("a", eased, turn);
    EXPECT_EQ(fade.content(), "a");
    auto after = presences(fade, turn);
    EXPECT_NEAR(after["a"], before["a"], 1e-9);
    EXPECT_NEAR(after["b"], before["b"], 1e-9);
    auto later = presences(fade, turn + 0.15);
    EXPECT_NEAR(later["a"], (1 + before["a"]) / 2, 1e-3);
    EXPECT_NEAR(later["b"], before["b"] / 2, 1e-3);
    EXPECT_EQ(presences(fade, turn + 0.301), onlyA);
}

TEST(FadeTest, whatIsInterruptedGoesOutFromWhereItWas)
{
    TextFade fade("a");
    fade.moveTo("b", spring, start);
    const Instant turn = start + 0.1;
    auto before = presences(fade, turn);
    fade.moveTo("c", spring, turn);
    auto after = presences(fade, turn);
    EXPECT_NEAR(after["a"], before["a"], 1e-9);
    EXPECT_NEAR(after["b"], before["b"], 1e-9);
    EXPECT_EQ(after["c"], 0);
    EXPECT_NEAR(presences(fade, turn + 0.1)["a"], 1 - sprung(0.6, 0.2), 1e-6)
        << "what was on its way out goes on undisturbed";
    EXPECT_EQ(presences(fade, turn + 2), (std::map<std::string, double>{{"c", 1.0}}));
}

TEST(FadeTest, somethingIsThereAtEveryTimeAndOneContentInTheEnd)
{
    TextFade fade("a");
    Instant now = start;
    for (int i = 0; i < 1'000; ++i) {
        const std::string next(1, static_cast<char>('a' + i * 7 % 5));
        fade.moveTo(next, i % 3 == 0 ? eased : spring, now);
        EXPECT_EQ(fade.content(), next);
        for (int j = 0; j < 3; ++j) {
            double sum = 0;
            for (const auto& [content, presence] : presences(fade, now)) {
                ASSERT_GT(presence, 0);
                ASSERT_LE(presence, 1);
                sum += presence;
            }
            ASSERT_GT(sum, 0.1);
            now = now + (i % 10) * 0.02;
        }
    }
    EXPECT_EQ(presences(fade, now + 2), (std::map<std::string, double>{{fade.content(), 1.0}}));
}

TEST(FadeTest, jumpsWithoutMoving)
{
    TextFade fade("a");
    fade.moveTo("b", eased, start);
    fade.jumpTo("c");
    EXPECT_EQ(presences(fade, start + 0.1), (std::map<std::string, double>{{"c", 1.0}}));
    EXPECT_FALSE(fade.isMovingAt(start + 0.1));
}

TEST(FadeTest, aClockThatIsSetBackEndsTheChange)
{
    TextFade fade("a");
    fade.moveTo("b", eased, start);
    EXPECT_EQ(presences(fade, start + -60), onlyB);
    fade.moveTo("a", eased, start + -60);
    EXPECT_EQ(presences(fade, start + -60), onlyB);
    EXPECT_EQ(presences(fade, start + -59), onlyA);
}
