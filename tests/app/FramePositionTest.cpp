#include "app/FramePosition.h"

#include <gtest/gtest.h>

namespace {

constexpr QSize full{250, 320};
const ScreenPlace left{QStringLiteral("left"), {0, 0, 1920, 1080}};
const ScreenPlace right{QStringLiteral("right"), {1920, 0, 1280, 1024}};
const QList<ScreenPlace> oneScreen{left};
const QList<ScreenPlace> twoScreens{left, right};

} // namespace

TEST(FramePositionTest, aPositionIsTheSameAfterItWasWrittenAndRead)
{
    for (const FramePosition& position :
         {FramePosition{{1646, 24}, QStringLiteral("HDMI-1")},
          FramePosition{{-1280, -7}, QStringLiteral("Screen with spaces")},
          FramePosition{{0, 0}, QString()},
          FramePosition{{2000, 24}, QStringLiteral("DP-1"), {1920, 0}},
          FramePosition{{-1280, -7}, QStringLiteral("two words"), {-1920, -500}}})
        EXPECT_EQ(framePositionFromText(toText(position)), position);
}

TEST(FramePositionTest, theTextOfTheFirstScreenIsPlain)
{
    EXPECT_EQ(toText({{1646, 24}, QStringLiteral("HDMI-1")}), QStringLiteral("1646 24 HDMI-1"));
    EXPECT_EQ(toText({{3566, 24}, QStringLiteral("DP-1"), {1920, 0}}),
              QStringLiteral("3566 24 DP-1 @1920:0"));
}

TEST(FramePositionTest, whatCannotBeReadOfAScreensPlaceIsTheFirstScreens)
{
    for (const char* text : {"10 20 name @", "10 20 name @1", "10 20 name @a,b",
                             "10 20 name @1,2,3", "10 20 name @99999:0"})
        EXPECT_EQ(framePositionFromText(QString::fromLatin1(text)),
                  (FramePosition{{10, 20}, QStringLiteral("name")}))
            << text;
    EXPECT_EQ(framePositionFromText(QStringLiteral("10 20 @1:2")),
              (FramePosition{{10, 20}, QStringLiteral("@1:2")}));
}

TEST(FramePositionTest, aPositionMovesAlongWithItsScreen)
{
    const FramePosition onRight{{2000, 100}, right.name, right.geometry.topLeft()};
    EXPECT_EQ(topLeftOn(onRight, twoScreens), QPoint(2000, 100));
    const QList<ScreenPlace> swapped{{right.name, {0, 0, 1280, 1024}},
                                     {left.name, {1280, 0, 1920, 1080}}};
    EXPECT_EQ(topLeftOn(onRight, swapped), QPoint(80, 100));
    EXPECT_EQ(topLeftOn({{500, 100}, left.name, {}}, swapped), QPoint(1780, 100));
    EXPECT_EQ(topLeftOn(onRight, oneScreen), QPoint(2000, 100)) << "its screen is gone";
}

TEST(FramePositionTest, aTextOfAnotherFormIsNoPosition)
{
    for (const char* text : {"", " ", "12", "a b screen", "12 b", "1.5 2 screen", "12,7 screen",
                             "99999999999 1 screen", "40000 1 screen"})
        EXPECT_FALSE(framePositionFromText(QString::fromLatin1(text))) << text;
}

TEST(FramePositionTest, theFirstPlaceIsInsetFromTheTopRightCornerOfTheAvailableArea)
{
    EXPECT_EQ(firstTopLeft({0, 0, 1920, 1080}, full), QPoint(1646, 24));
    EXPECT_EQ(firstTopLeft({60, 28, 1860, 1000}, full), QPoint(1646, 52));
    EXPECT_EQ(firstTopLeft({0, 0, 1920, 1080}, {216, 76}), QPoint(1680, 24));
}

TEST(FramePositionTest, aPlaceThatIsStillOnAScreenIsKeptExactly)
{
    for (const QPoint place : {QPoint(500, 300), QPoint(1919, 1079), QPoint(-249, -319)})
        EXPECT_EQ(broughtBack(place, full, oneScreen), place);
    EXPECT_EQ(broughtBack({2500, 10}, full, twoScreens), QPoint(2500, 10));
}

TEST(FramePositionTest, aPlaceOnNoScreenIsBroughtBackToTheNearest)
{
    EXPECT_EQ(broughtBack({2500, 10}, full, oneScreen), QPoint(1670, 10));
    EXPECT_EQ(broughtBack({-900, -900}, full, oneScreen), QPoint(0, 0));
    EXPECT_EQ(broughtBack({5000, 2000}, full, twoScreens), QPoint(2950, 704));
}

TEST(FramePositionTest, onAScreenThatIsTooSmallTheTopLeftCornerShows)
{
    EXPECT_EQ(broughtBack({5000, 5000}, full, {{QString(), {0, 0, 200, 100}}}), QPoint(0, 0));
}

TEST(FramePositionTest, withoutAScreenThePlaceIsKept)
{
    EXPECT_EQ(broughtBack({5000, 5000}, full, {}), QPoint(5000, 5000));
}

TEST(FramePositionTest, aPointIsKeptOnTheScreensAndALittleAboveAndToTheLeft)
{
    for (const QPoint point : {QPoint(0, 0), QPoint(1919, 1079), QPoint(-30, 500), QPoint(9, -30)})
        EXPECT_EQ(nearestOnScreens(point, 30, oneScreen), point);
    EXPECT_EQ(nearestOnScreens({1920, 1080}, 30, oneScreen), QPoint(1919, 1079));
    EXPECT_EQ(nearestOnScreens({-31, -900}, 30, oneScreen), QPoint(-30, -30));
    EXPECT_EQ(nearestOnScreens({2500, 10}, 0, twoScreens), QPoint(2500, 10));
    EXPECT_EQ(nearestOnScreens({9000, 9000}, 30, {}), QPoint(9000, 9000));
}
