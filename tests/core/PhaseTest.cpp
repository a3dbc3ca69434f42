#include "core/Phase.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(Phase, HasFixedRawValuesForStorage)
{
    EXPECT_EQ(rawValue(Phase::sitting), 0);
    EXPECT_EQ(rawValue(Phase::standing), 1);
    EXPECT_EQ(rawValue(Phase::pushups), 2);
}

TEST(Phase, IsReadBackFromItsRawValue)
{
    EXPECT_EQ(phaseFromRaw(0), Phase::sitting);
    EXPECT_EQ(phaseFromRaw(1), Phase::standing);
    EXPECT_EQ(phaseFromRaw(2), Phase::pushups);
}

TEST(Phase, IsNothingForAnyOtherInteger)
{
    for (const qint64 junk : {
             qint64{3},
             qint64{4},
             qint64{-1},
             qint64{-2},
             qint64{-3},
             qint64{256},
             qint64{1} << 32,
             (qint64{1} << 32) + 1,
             -(qint64{1} << 32),
             std::numeric_limits<qint64>::max(),
             std::numeric_limits<qint64>::min(),
         })
        EXPECT_EQ(phaseFromRaw(junk), std::nullopt) << junk;
}

TEST(Phase, IsFollowedByTheNextAndPushupsBySitting)
{
    EXPECT_EQ(successorOf(Phase::sitting), Phase::standing);
    EXPECT_EQ(successorOf(Phase::standing), Phase::pushups);
    EXPECT_EQ(successorOf(Phase::pushups), Phase::sitting);
}

TEST(Phase, ListsAllPhasesInTheirOrder)
{
    const std::array expected{Phase::sitting, Phase::standing, Phase::pushups};
    EXPECT_EQ(allPhases, expected);
}

TEST(Phase, IsIdentifiedByItsRawValue)
{
    for (const Phase phase : allPhases)
        EXPECT_EQ(idOf(phase), rawValue(phase));
}

TEST(Phase, HasASoundOfItsOwnForItsEnd)
{
    EXPECT_EQ(factsOf(Phase::sitting).completionSoundName.toStdString(), "Glass");
    EXPECT_EQ(factsOf(Phase::standing).completionSoundName.toStdString(), "Hero");
    EXPECT_EQ(factsOf(Phase::pushups).completionSoundName.toStdString(), "Funk");
}

TEST(Phase, HasAnEmojiWithoutVariationSelector)
{
    EXPECT_EQ(factsOf(Phase::sitting).emoji.toStdString(), "\xF0\x9F\xAA\x91");
    EXPECT_EQ(factsOf(Phase::standing).emoji.toStdString(), "\xF0\x9F\xA7\x8D");
    EXPECT_EQ(factsOf(Phase::pushups).emoji.toStdString(), "\xF0\x9F\x92\xAA");
}

TEST(Phase, HasALightAndADarkOpaqueTone)
{
    EXPECT_EQ(factsOf(Phase::sitting).lightTone, (Color{0.62, 0.78, 1.0, 1.0}));
    EXPECT_EQ(factsOf(Phase::sitting).darkTone, (Color{0.45, 0.55, 1.0, 1.0}));
    EXPECT_EQ(factsOf(Phase::standing).lightTone, (Color{1.0, 0.82, 0.45, 1.0}));
    EXPECT_EQ(factsOf(Phase::standing).darkTone, (Color{1.0, 0.63, 0.22, 1.0}));
    EXPECT_EQ(factsOf(Phase::pushups).lightTone, (Color{1.0, 0.55, 0.68, 1.0}));
    EXPECT_EQ(factsOf(Phase::pushups).darkTone, (Color{1.0, 0.32, 0.45, 1.0}));
}

TEST(Phase, AccentRunsFromLightAtTheTopToDarkAtTheBottom)
{
    for (const Phase phase : allPhases) {
        const LinearGradient accent = accentGradient(phase);
        const std::vector expected{factsOf(phase).lightTone, factsOf(phase).darkTone};
        EXPECT_EQ(accent.stops, expected);
        EXPECT_EQ(accent.start, (UnitPoint{0.5, 0}));
        EXPECT_EQ(accent.end, (UnitPoint{0.5, 1}));
    }
}

TEST(Phase, RingRunsAroundTheCentreFromDarkOverLightToDark)
{
    for (const Phase phase : allPhases) {
        const AngularGradient ring = ringGradient(phase);
        const Color dark = factsOf(phase).darkTone;
        const std::vector expected{dark, factsOf(phase).lightTone, dark};
        EXPECT_EQ(ring.stops, expected);
        EXPECT_EQ(ring.center, (UnitPoint{0.5, 0.5}));
        EXPECT_EQ(ring.startDegrees, 0);
        EXPECT_EQ(ring.endDegrees, 360);
    }
}

TEST(Phase, GivesOutGradientsThatAreCopies)
{
    LinearGradient accent = accentGradient(Phase::sitting);
    accent.stops.front() = {};
    AngularGradient ring = ringGradient(Phase::sitting);
    ring.stops.front() = {};

    EXPECT_EQ(accentGradient(Phase::sitting).stops.front(), factsOf(Phase::sitting).lightTone);
    EXPECT_EQ(ringGradient(Phase::sitting).stops.front(), factsOf(Phase::sitting).darkTone);
}

} // namespace
