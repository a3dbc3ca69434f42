// What the pointer does on the card: taps, drags, hovering, and where the card ends.

#include "Curves.h"
#include "WidgetTest.h"
#include "support/Pixels.h"

class WidgetPointerTest : public WidgetTest
{
protected:
    /// Whether the card looks hovered: not the number, but what the first round button is.
    double controlsOpacity() const { return button(words::skip)->opacity(); }

    bool isAcknowledged() { return engine.phase() == Phase::standing; }

    void expectUntouched()
    {
        EXPECT_EQ(engine.phase(), Phase::sitting);
        EXPECT_EQ(engine.state(), State::complete);
        EXPECT_EQ(asked, Strings());
    }
};

// --- taps -----------------------------------------------------------------------------------

TEST_F(WidgetPointerTest, aTapActsOnlyOnACompletePhase)
{
    for (const bool compact : {false, true}) {
        show(compact);
        for (const Phase phase : {Phase::sitting, Phase::standing, Phase::pushups}) {
            reach(phase, State::running);
            pointer->click(onCard(compact));
            EXPECT_EQ(engine.phase(), phase);
            EXPECT_EQ(engine.state(), State::running);
        }
        reach(Phase::standing, State::paused);
        pointer->click(onCard(compact));
        EXPECT_EQ(engine.phase(), Phase::standing);
        EXPECT_EQ(engine.state(), State::paused);
        reach(Phase::sitting, State::running);
    }
}

TEST_F(WidgetPointerTest, aTapAcknowledgesACompletePhaseOnceAndWithoutASound)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::complete);
        pointer->click(onCard(compact));
        EXPECT_EQ(engine.phase(), Phase::standing);
        EXPECT_EQ(engine.state(), State::running);
        EXPECT_EQ(sound.played, QStringList());
        EXPECT_EQ(log.entries, (std::vector<ListLog::Entry>{{Phase::sitting, 2400, 0}}));
        pointer->click(onCard(compact));
        EXPECT_EQ(engine.phase(), Phase::standing) << "the second click of a double click";
    }
}

TEST_F(WidgetPointerTest, aTapOnCompletePushupsCountsACycleAndLogsNothing)
{
    show();
    reach(Phase::pushups, State::complete);
    pointer->click(onFullCard());
    EXPECT_EQ(engine.phase(), Phase::sitting);
    EXPECT_EQ(engine.cycle(), 2);
    EXPECT_EQ(sound.played, QStringList());
    EXPECT_TRUE(log.entries.empty());
}

TEST_F(WidgetPointerTest, aTapIsDoneWhenItIsLetGo)
{
    show();
    reach(Phase::sitting, State::complete);
    pointer->press(onFullCard());
    expectUntouched();
    pointer->release();
    EXPECT_TRUE(isAcknowledged());
}

TEST_F(WidgetPointerTest, otherButtonsOfTheMouseTapNothing)
{
    show();
    reach(Phase::sitting, State::complete);
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
        pointer->click(onFullCard(), other);
        expectUntouched();
    }
    // Nor does the left one, if another came to it.
    pointer->press(onFullCard());
    pointer->press(onFullCard(), Qt::RightButton);
    pointer->release(Qt::RightButton);
    pointer->release();
    expectUntouched();
}

TEST_F(WidgetPointerTest, aDragIsNoTapAlsoIfItEndsWhereItBegan)
{
    show();
    reach(Phase::sitting, State::complete);
    pointer->press(onFullCard());
    pointer->moveTo(onFullCard() + QPoint(60, 10));
    pointer->moveTo(onFullCard());
    pointer->release();
    expectUntouched();
}

TEST_F(WidgetPointerTest, aTapWithAShakyHandIsATap)
{
    show();
    reach(Phase::sitting, State::complete);
    pointer->press(onFullCard());
    pointer->moveTo(onFullCard() + QPoint(2, -2));
    pointer->release();
    EXPECT_TRUE(isAcknowledged());
}

TEST_F(WidgetPointerTest, aWidgetThatIsHiddenUnderAPressIsNotTapped)
{
    show();
    reach(Phase::sitting, State::complete);
    pointer->press(onFullCard());
    window->hide();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    pointer->release();
    expectUntouched();
}

// --- taps and buttons -----------------------------------------------------------------------

TEST_F(WidgetPointerTest, aPressOnAButtonIsNoTapOnTheCard)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::complete);
        pointer->moveTo(onCard(compact));
        for (const std::string& name : {words::settings, words::hide, words::quit}) {
            asked.clear();
            pointer->click(centerOf(button(name)));
            EXPECT_EQ(asked.size(), 1) << name;
            EXPECT_EQ(engine.state(), State::complete) << name;
        }
        pointer->click(centerOf(button(words::skip)));
        EXPECT_EQ(engine.phase(), Phase::standing) << "not two phases on";
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetPointerTest, aPressThatLeavesItsButtonDoesNothing)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::complete);
        pointer->moveTo(onCard(compact));
        settle();
        for (const std::string& name : offeredNames()) {
            for (const QPoint end : {onCard(compact), QPoint(-40, -40)}) {
                pointer->press(centerOf(button(name)));
                pointer->moveTo(end);
                pointer->release();
                expectUntouched();
                EXPECT_EQ(engine.compactMode(), compact);
                pointer->moveTo(onCard(compact));
            }
        }
    }
}

TEST_F(WidgetPointerTest, aPressThatComesBackToItsButtonCounts)
{
    show();
    pointer->press(centerOf(button(words::settings)));
    pointer->moveTo(onFullCard());
    pointer->moveTo(centerOf(button(words::settings)));
    pointer->release();
    EXPECT_EQ(asked, Strings{"settings"});
}

TEST_F(WidgetPointerTest, aPressOnTheCardThatEndsOnAButtonDoesNothing)
{
    show();
    reach(Phase::sitting, State::complete);
    pointer->press(onFullCard());
    pointer->moveTo(centerOf(button(words::settings)));
    pointer->release();
    expectUntouched();
}

TEST_F(WidgetPointerTest, theGapsBetweenButtonsAreTheCard)
{
    for (const bool compact : {false, true}) {
        const QList<QPointF> centers = rowCenters(compact, 5);
        const QPoint gap = ((centers[0] + centers[1]) / 2).toPoint();
        // The corner of a button's box is no part of the button.
        const QPointF corner = centers[0] + QPointF(1, 1) * (compact ? 12 : 14);
        for (const QPoint at : {gap, corner.toPoint()}) {
            show(compact);
            reach(Phase::sitting, State::complete);
            pointer->click(at);
            EXPECT_TRUE(isAcknowledged()) << compact << at.x() << at.y();
            EXPECT_EQ(asked, Strings());
            engine.start(Phase::sitting);
        }
    }
}

// --- the corners ----------------------------------------------------------------------------

namespace {

/// Pixels near each corner of the card: outside of its outline, and just inside.
struct Corner
{
    QPoint outside;
    QPoint inside;
};

QList<Corner> cornersOf(QSize size, double radius)
{
    // On the diagonal a rounded corner comes in by 0.29 of its radius.
    const int out = qRound(0.29 * radius) - 3;
    const int in = qRound(0.29 * radius) + 2;
    const auto at = [size](bool right, bool bottom, int way) {
        return QPoint(right ? size.width() - 1 - way : way, bottom ? size.height() - 1 - way : way);
    };
    QList<Corner> corners;
    for (const bool right : {false, true}) {
        for (const bool bottom : {false, true})
            corners.append({at(right, bottom, out), at(right, bottom, in)});
    }
    return corners;
}

} // namespace

TEST_F(WidgetPointerTest, theCornersOutsideTheOutlineTakeNoTap)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::complete);
        for (const Corner& corner : cornersOf(view->size(), compact ? 20 : 28)) {
            pointer->click(corner.outside);
            expectUntouched();
            pointer->click(corner.inside);
            EXPECT_TRUE(isAcknowledged()) << corner.inside.x() << " " << corner.inside.y();
            reach(Phase::sitting, State::complete);
        }
    }
}

TEST_F(WidgetPointerTest, theCornersOutsideTheOutlineAreNotHovered)
{
    for (const bool compact : {false, true}) {
        show(compact);
        for (const Corner& corner : cornersOf(view->size(), compact ? 20 : 28)) {
            const std::string where = testing::PrintToString(corner.outside.x()) + " " +
                                      testing::PrintToString(corner.outside.y());
            pointer->leave();
            pointer->moveTo(corner.outside);
            settle();
            EXPECT_EQ(controlsOpacity(), 0) << "entered at " << where;
            pointer->moveTo(corner.inside);
            settle();
            EXPECT_EQ(controlsOpacity(), 1) << "in from " << where;
            pointer->moveTo(corner.outside);
            settle();
            EXPECT_EQ(controlsOpacity(), 0) << "out to " << where;
        }
    }
}

TEST_F(WidgetPointerTest, theRowAtTheCornersOfTheCardIsHoveredOnlyInside)
{
    // The box of the full row reaches into the rounded corners.
    show();
    const int bottom = full::geometry().controls.toRect().bottom();
    ASSERT_FALSE(view->isOnCard(QPointF(0.5, bottom + 0.5)));
    pointer->moveTo({60, bottom});
    settle();
    ASSERT_EQ(controlsOpacity(), 1);
    pointer->moveTo({0, bottom});
    settle();
    EXPECT_EQ(controlsOpacity(), 0);
    pointer->moveTo({60, bottom});
    settle();
    EXPECT_EQ(controlsOpacity(), 1);
}

// --- hovering -------------------------------------------------------------------------------

TEST_F(WidgetPointerTest, theFullRowIsInvisibleUntilTheCardIsHovered)
{
    show();
    engine.togglePause(); // so that the figure stands still
    settle();
    const QImage away = picture();
    EXPECT_EQ(away, pictureWithoutControls());
    pointer->moveTo(onFullCard());
    settle();
    const QImage hovered = picture();
    const QRectF changed = changedBox(away, hovered);
    const QPointF first = rowCenters(false, 6).first();
    const QPointF last = rowCenters(false, 6).last();
    EXPECT_EQ(changed, QRectF(first - QPointF(15, 15), last + QPointF(15, 15)));
    pointer->leave();
    settle();
    EXPECT_EQ(picture(), away);
}

TEST_F(WidgetPointerTest, theCompactBandCoversTheContentRowOnly)
{
    show(true);
    engine.togglePause();
    settle();
    const QImage away = picture();
    EXPECT_EQ(away, pictureWithoutControls());
    pointer->moveTo(onCard(true));
    settle();
    const QImage hovered = picture();
    EXPECT_EQ(changedBox(away, hovered), QRectF(0, 14, 216, 48));
    // Between the buttons it is dark, whatever is below it.
    const QList<QPointF> centers = rowCenters(true, 6);
    for (qsizetype i = 1; i < centers.size(); ++i) {
        const QPoint gap = ((centers[i - 1] + centers[i]) / 2).toPoint();
        for (int y = 15; y < 61; ++y)
            EXPECT_LT(qGray(hovered.pixel(gap.x(), y)), 60) << gap.x() << " " << y;
    }
}

TEST_F(WidgetPointerTest, theControlsFadeInAndOutByTheirCurve)
{
    for (const bool compact : {false, true}) {
        show(compact);
        pointer->moveTo(onCard(compact));
        double passed = 0;
        for (const double part : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            pass(0.18 * part - passed);
            passed = 0.18 * part;
            EXPECT_NEAR(controlsOpacity(), easedInOut(part), 1e-3) << part;
        }
        pointer->leave();
        passed = 0;
        for (const double part : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            pass(0.18 * part - passed);
            passed = 0.18 * part;
            EXPECT_NEAR(controlsOpacity(), 1 - easedInOut(part), 1e-3) << part;
        }
    }
}

TEST_F(WidgetPointerTest, aFadeThatIsTurnedRoundGoesOnFromWhereItIs)
{
    show();
    pointer->moveTo(onFullCard());
    pass(0.09);
    const double reached = controlsOpacity();
    EXPECT_NEAR(reached, 0.5, 1e-3);
    pointer->leave();
    EXPECT_NEAR(controlsOpacity(), reached, 1e-3);
    pass(0.09);
    EXPECT_NEAR(controlsOpacity(), reached / 2, 1e-3);
    pass(0.1);
    EXPECT_EQ(controlsOpacity(), 0);
}

TEST_F(WidgetPointerTest, theButtonsDoNotEndTheHovering)
{
    show();
    for (const QPoint at :
         {onFullCard(), centerOf(button(words::skip)),
          (rowCenters(false, 6)[0] + QPointF(20, 0)).toPoint(), QPoint(125, 20)}) {
        pointer->moveTo(at);
        settle();
        EXPECT_EQ(controlsOpacity(), 1) << at.x() << " " << at.y();
    }
}

TEST_F(WidgetPointerTest, aForcedHoverNeedsNoPointer)
{
    for (const bool compact : {false, true}) {
        show(compact);
        pointer->moveTo(onCard(compact));
        settle();
        WidgetView forced(engine, actions, frames, true);
        QImage image(forced.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        forced.render(&image, {}, {}, QWidget::DrawChildren);
        EXPECT_EQ(largestDifference(image, picture()), 0);
    }
}

TEST_F(WidgetPointerTest, aWidgetHiddenUnderThePointerComesBackUnhovered)
{
    for (const State state : {State::running, State::paused}) {
        show();
        reach(Phase::sitting, state);
        pointer->moveTo(onFullCard());
        settle();
        window->hide();
        pointer->leave();
        pass(10);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        pass(1);
        EXPECT_EQ(controlsOpacity(), 0) << static_cast<int>(state);
        EXPECT_EQ(picture(), pictureWithoutControls()) << static_cast<int>(state);
        engine.start(Phase::sitting);
    }
}
