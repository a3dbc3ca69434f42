#include "widget/WidgetMotion.h"

#include "widget/Curves.h"
#include "widget/Models.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr Instant start{763637213.75};

const WidgetModel sitting = modelOf(Phase::sitting);
const WidgetModel pausedSitting = modelOf(Phase::sitting, State::paused);
const WidgetModel doneSitting = modelOf(Phase::sitting, State::complete);
const WidgetModel standing = modelOf(Phase::standing);
const WidgetModel pushups = modelOf(Phase::pushups);
const WidgetModel donePushups = modelOf(Phase::pushups, State::complete);

WidgetMotion changing(const WidgetModel& from, const WidgetModel& to, bool animated = true)
{
    WidgetMotion motion(from, start + -100);
    motion.follow(to, start, animated);
    return motion;
}

/// How much there is of a content.
template <typename Content>
double presenceOf(const Fade<Content>& fade, const Content& content, Instant now)
{
    double result = 0;
    fade.visit(now, [&](const Content& visited, double presence) {
        if (visited == content)
            result = presence;
    });
    return result;
}

/// How many contents there are.
template <typename Content>
int contentsOf(const Fade<Content>& fade, Instant now)
{
    int count = 0;
    fade.visit(now, [&](const Content&, double) { ++count; });
    return count;
}

double phaseCurve(double seconds)
{
    return sprung(0.6, seconds);
}

double stateCurve(double seconds)
{
    return easedInOut(std::min(seconds / 0.3, 1.0));
}

constexpr std::array moments{0.03, 0.1, 0.15, 0.21, 0.27};

} // namespace

TEST(WidgetMotionTest, standsStillAtItsFirstModel)
{
    for (const WidgetModel& model : allModels(true)) {
        const WidgetMotion motion(model, start);
        EXPECT_FALSE(motion.isChangingAt(start));
        EXPECT_FALSE(motion.hover.isMovingAt(start));
        EXPECT_FALSE(motion.progress.isMovingAt(start));
        EXPECT_EQ(motion.phases.content(), model.phase);
        EXPECT_EQ(motion.complete.at(start), model.isComplete());
        EXPECT_EQ(motion.turning.at(start), model.phase == Phase::pushups);
        EXPECT_EQ(motion.compactness.at(start), 1);
        EXPECT_EQ(motion.hover.at(start), 0);
        EXPECT_EQ(motion.timeOpacity.at(start), model.isPaused() ? 0.45 : 1);
        EXPECT_EQ(motion.progress.at(start), model.progress.value_or(0));
        EXPECT_EQ(motion.doneButton.at(start),
                  model.phase == Phase::pushups && !model.isComplete());
        EXPECT_EQ(motion.pauseButton.at(start),
                  model.phase != Phase::pushups && !model.isComplete());
    }
}

TEST(WidgetMotionTest, theModelIsFollowedAtOnce)
{
    const WidgetMotion motion = changing(sitting, pushups);
    EXPECT_EQ(motion.model, pushups);
    EXPECT_EQ(motion.phases.content(), Phase::pushups);
    EXPECT_EQ(motion.readouts.content().kind, Readout::Kind::count);
}

TEST(WidgetMotionTest, aNewPhaseComesWithItsSpring)
{
    for (const WidgetModel& next : {standing, pushups}) {
        const WidgetMotion motion = changing(sitting, next);
        for (const double seconds : moments) {
            const Instant now = start + seconds;
            const double way = phaseCurve(seconds);
            EXPECT_NEAR(presenceOf(motion.phases, next.phase, now), way, 1e-6);
            EXPECT_NEAR(presenceOf(motion.phases, Phase::sitting, now), 1 - way, 1e-6);
            EXPECT_NEAR(presenceOf(motion.hints, {next.phase, State::running}, now), way, 1e-6);
        }
        EXPECT_TRUE(motion.isChangingAt(start + 0.7));
        EXPECT_FALSE(motion.isChangingAt(start + 2));
        EXPECT_EQ(contentsOf(motion.phases, start + 2), 1);
    }
}

TEST(WidgetMotionTest, intoPushupsTheArcGivesWayToTheTurningRing)
{
    const WidgetMotion motion = changing(sitting, pushups);
    for (const double seconds : moments) {
        const Instant now = start + seconds;
        const double way = phaseCurve(seconds);
        EXPECT_NEAR(motion.turning.at(now), way, 1e-6);
        EXPECT_NEAR(motion.doneButton.at(now), way, 1e-6);
        EXPECT_NEAR(motion.pauseButton.at(now), 1 - way, 1e-6);
        EXPECT_EQ(motion.progress.at(now), 0.6) << "the arc that goes keeps its length";
        EXPECT_NEAR(presenceOf(motion.readouts, {Readout::Kind::count}, now), way, 1e-6);
        EXPECT_NEAR(presenceOf(motion.readouts, {Readout::Kind::time}, now), 1 - way, 1e-6);
    }
}

TEST(WidgetMotionTest, outOfPushupsTheArcComesAsLongAsItIs)
{
    WidgetModel next = sitting;
    next.progress = 1;
    const WidgetMotion motion = changing(pushups, next);
    for (const double seconds : moments) {
        EXPECT_EQ(motion.progress.at(start + seconds), 1);
        EXPECT_NEAR(motion.turning.at(start + seconds), 1 - phaseCurve(seconds), 1e-6);
        EXPECT_NEAR(motion.doneButton.at(start + seconds), 1 - phaseCurve(seconds), 1e-6);
    }
}

TEST(WidgetMotionTest, theArcChangesItsLengthEvenlyInHalfASecond)
{
    WidgetModel next = sitting;
    next.progress = 0.4;
    const WidgetMotion tick = changing(sitting, next);
    EXPECT_FALSE(tick.isChangingAt(start + 0.1)) << "nothing but the arc moves";
    WidgetModel newPhase = standing;
    newPhase.progress = 0.4;
    for (const WidgetMotion& motion : {tick, changing(sitting, newPhase)}) {
        for (const double part : {0.0, 0.25, 0.5, 0.75, 1.0})
            EXPECT_NEAR(motion.progress.at(start + part * 0.5), 0.6 - 0.2 * part, 1e-6);
        EXPECT_TRUE(motion.progress.isMovingAt(start + 0.49));
        EXPECT_FALSE(motion.progress.isMovingAt(start + 0.51));
    }
}

TEST(WidgetMotionTest, anArcThatChangesAgainGoesOnFromWhereItIs)
{
    WidgetModel next = sitting;
    next.progress = 0.5;
    WidgetMotion motion = changing(sitting, next);
    next.progress = 0.4;
    motion.follow(next, start + 0.25, true);
    EXPECT_NEAR(motion.progress.at(start + 0.25), 0.55, 1e-6);
    EXPECT_NEAR(motion.progress.at(start + 0.5), 0.475, 1e-6);
}

TEST(WidgetMotionTest, pausingDimsTheTimeAndChangesTheHint)
{
    WidgetMotion motion = changing(sitting, pausedSitting);
    for (const double seconds : moments) {
        const Instant now = start + seconds;
        const double way = stateCurve(seconds);
        EXPECT_NEAR(motion.timeOpacity.at(now), 1 - 0.55 * way, 1e-3);
        EXPECT_NEAR(presenceOf(motion.hints, {Phase::sitting, State::paused}, now), way, 1e-3);
        EXPECT_EQ(contentsOf(motion.readouts, now), 1);
        EXPECT_EQ(contentsOf(motion.phases, now), 1);
        EXPECT_EQ(motion.pauseButton.at(now), 1);
        EXPECT_EQ(motion.complete.at(now), 0);
        EXPECT_EQ(motion.turning.at(now), 0);
        EXPECT_TRUE(motion.isChangingAt(now));
    }
    EXPECT_FALSE(motion.isChangingAt(start + 0.31));
    motion.follow(sitting, start + 10, true);
    EXPECT_NEAR(motion.timeOpacity.at(start + 10.15), 0.725, 1e-3);
    EXPECT_EQ(motion.timeOpacity.at(start + 11), 1);
}

TEST(WidgetMotionTest, completingBringsThePulseAndDone)
{
    const WidgetMotion motion = changing(sitting, doneSitting);
    const Readout done{Readout::Kind::done, Phase::sitting};
    for (const double seconds : moments) {
        const Instant now = start + seconds;
        const double way = stateCurve(seconds);
        EXPECT_NEAR(motion.complete.at(now), way, 1e-3);
        EXPECT_NEAR(motion.pauseButton.at(now), 1 - way, 1e-3);
        EXPECT_NEAR(presenceOf(motion.readouts, done, now), way, 1e-3);
        EXPECT_NEAR(presenceOf(motion.readouts, {Readout::Kind::time}, now), 1 - way, 1e-3);
        EXPECT_NEAR(presenceOf(motion.hints, {Phase::sitting, State::complete}, now), way, 1e-3);
        EXPECT_EQ(contentsOf(motion.phases, now), 1);
    }
    EXPECT_FALSE(motion.isChangingAt(start + 0.31));
}

TEST(WidgetMotionTest, aPhaseAndAStateThatChangeTogetherTakeThePhasesSpring)
{
    const WidgetMotion motion = changing(doneSitting, standing);
    for (const double seconds : moments) {
        const Instant now = start + seconds;
        const double way = phaseCurve(seconds);
        EXPECT_NEAR(motion.complete.at(now), 1 - way, 1e-6);
        EXPECT_NEAR(motion.pauseButton.at(now), way, 1e-6);
        EXPECT_NEAR(presenceOf(motion.phases, Phase::standing, now), way, 1e-6);
        EXPECT_NEAR(presenceOf(motion.readouts, {Readout::Kind::time}, now), way, 1e-6);
        EXPECT_NEAR(presenceOf(motion.hints, {Phase::standing, State::running}, now), way, 1e-6);
    }
    EXPECT_NEAR(changing(pausedSitting, standing).timeOpacity.at(start + 0.1),
                0.45 + 0.55 * phaseCurve(0.1), 1e-6);
}

TEST(WidgetMotionTest, theCountStaysWhenPushupsAreComplete)
{
    const WidgetMotion motion = changing(pushups, donePushups);
    for (const double seconds : moments) {
        const Instant now = start + seconds;
        EXPECT_EQ(presenceOf(motion.readouts, {Readout::Kind::count}, now), 1);
        EXPECT_EQ(motion.turning.at(now), 1);
        EXPECT_NEAR(motion.doneButton.at(now), 1 - stateCurve(seconds), 1e-3);
        EXPECT_NEAR(motion.complete.at(now), stateCurve(seconds), 1e-3);
    }
}

TEST(WidgetMotionTest, theTimeStaysFromPhaseToPhase)
{
    const WidgetMotion motion = changing(sitting, standing);
    EXPECT_EQ(contentsOf(motion.readouts, start + 0.1), 1);
    EXPECT_EQ(presenceOf(motion.readouts, {Readout::Kind::time}, start + 0.1), 1);
}

TEST(WidgetMotionTest, doneOfAnotherPhaseIsAnotherDone)
{
    const WidgetModel doneStanding = modelOf(Phase::standing, State::complete);
    EXPECT_EQ(contentsOf(changing(doneSitting, doneStanding).readouts, start + 0.1), 2);
}

TEST(WidgetMotionTest, theControlsFadeInAndOutWithThePointer)
{
    WidgetModel hovered = sitting;
    hovered.hovered = true;
    WidgetMotion motion = changing(sitting, hovered);
    for (const double part : {0.0, 0.25, 0.5, 0.75})
        EXPECT_NEAR(motion.hover.at(start + part * 0.18), easedInOut(part), 1e-3);
    EXPECT_FALSE(motion.isChangingAt(start + 0.05)) << "nothing but the controls moves";
    motion.follow(sitting, start + 0.09, true);
    EXPECT_NEAR(motion.hover.at(start + 0.18), 0.25, 1e-3);
    EXPECT_EQ(motion.hover.at(start + 0.28), 0);
}

TEST(WidgetMotionTest, theFormChangesWithItsSpring)
{
    WidgetMotion motion = changing(sitting, modelOf(Phase::sitting, State::running, true));
    for (const double seconds : moments) {
        EXPECT_NEAR(motion.compactness.at(start + seconds), sprung(0.5, seconds), 1e-6);
        EXPECT_TRUE(motion.isChangingAt(start + seconds));
        EXPECT_EQ(contentsOf(motion.phases, start + seconds), 1);
    }
    motion.follow(sitting, start + 0.1, true);
    EXPECT_NEAR(motion.compactness.at(start + 0.1), sprung(0.5, 0.1), 1e-6);
    EXPECT_EQ(motion.compactness.at(start + 2), 0);
}

TEST(WidgetMotionTest, theFormKeepsItsSpringWhenThePhaseChangesToo)
{
    const WidgetMotion motion = changing(sitting, modelOf(Phase::pushups, State::running, true));
    EXPECT_NEAR(motion.compactness.at(start + 0.1), sprung(0.5, 0.1), 1e-6);
    EXPECT_NEAR(motion.turning.at(start + 0.1), phaseCurve(0.1), 1e-6);
}

TEST(WidgetMotionTest, aNewSecondMovesNothing)
{
    WidgetModel next = sitting;
    next.timeString = QStringLiteral("12:33");
    next.cycle = 4;
    const WidgetMotion motion = changing(sitting, next);
    EXPECT_EQ(motion.model, next);
    EXPECT_FALSE(motion.isChangingAt(start));
    EXPECT_FALSE(motion.hover.isMovingAt(start));
    EXPECT_FALSE(motion.progress.isMovingAt(start));
}

TEST(WidgetMotionTest, aSecondNoticeOfTheSameChangeDoesNotRestartIt)
{
    WidgetMotion motion = changing(sitting, pushups);
    WidgetModel next = pushups;
    next.pushupCount = 51;
    motion.follow(next, start + 0.1, true);
    EXPECT_NEAR(motion.turning.at(start + 0.2), phaseCurve(0.2), 1e-6);
    EXPECT_NEAR(presenceOf(motion.phases, Phase::pushups, start + 0.2), phaseCurve(0.2), 1e-6);
}

TEST(WidgetMotionTest, withoutAnimationEverythingIsThereAtOnce)
{
    for (const bool compact : {false, true}) {
        for (const WidgetModel& from : allModels(false)) {
            for (WidgetModel to : allModels(compact)) {
                to.hovered = true;
                WidgetMotion motion = changing(from, to, false);
                const WidgetMotion settled(to, start);
                EXPECT_FALSE(motion.isChangingAt(start));
                EXPECT_FALSE(motion.hover.isMovingAt(start));
                EXPECT_FALSE(motion.progress.isMovingAt(start));
                EXPECT_EQ(motion.hover.at(start), 1);
                EXPECT_EQ(motion.compactness.at(start), compact);
                EXPECT_EQ(motion.complete.at(start), settled.complete.at(start));
                EXPECT_EQ(motion.turning.at(start), settled.turning.at(start));
                EXPECT_EQ(motion.timeOpacity.at(start), settled.timeOpacity.at(start));
                EXPECT_EQ(motion.progress.at(start), settled.progress.at(start));
                EXPECT_EQ(contentsOf(motion.phases, start), 1);
                EXPECT_EQ(contentsOf(motion.readouts, start), 1);
                EXPECT_EQ(contentsOf(motion.hints, start), 1);
            }
        }
    }
}

TEST(WidgetMotionTest, switchingAnimationsOffEndsWhatIsUnderWay)
{
    WidgetMotion motion = changing(sitting, pushups);
    motion.follow(pushups, start + 0.1, false);
    EXPECT_FALSE(motion.isChangingAt(start + 0.1));
    EXPECT_EQ(motion.turning.at(start + 0.1), 1);
}

TEST(WidgetMotionTest, aPausedFigureStandsStillAndThenJumpsToThePresent)
{
    for (const bool animated : {true, false}) {
        WidgetMotion motion(sitting, start);
        EXPECT_EQ(motion.figureTime(start + 3), start + 3);
        motion.follow(pausedSitting, start + 5, animated);
        EXPECT_EQ(motion.figureTime(start + 5), start + 5);
        EXPECT_EQ(motion.figureTime(start + 50), start + 5);
        WidgetModel hovered = pausedSitting;
        hovered.hovered = true;
        motion.follow(hovered, start + 60, animated);
        EXPECT_EQ(motion.figureTime(start + 61), start + 5) << "still the same pause";
        motion.follow(sitting, start + 70, animated);
        EXPECT_EQ(motion.figureTime(start + 70), start + 70);
    }
}

TEST(WidgetMotionTest, aWidgetThatIsMadePausedShowsTheFigureOfThatMoment)
{
    const WidgetMotion motion(pausedSitting, start);
    EXPECT_EQ(motion.figureTime(start + 9), start);
}

TEST(WidgetMotionTest, onlyAPausedPhaseIsQuiet)
{
    for (const WidgetModel& model : allModels(false)) {
        const WidgetMotion motion(model, start);
        EXPECT_EQ(motion.isAliveAt(start + 1), !model.isPaused());
    }
    // Until the last of the pulse has gone.
    WidgetMotion motion = changing(doneSitting, pausedSitting);
    EXPECT_TRUE(motion.isAliveAt(start + 0.1));
    EXPECT_FALSE(motion.isAliveAt(start + 0.31));
}
