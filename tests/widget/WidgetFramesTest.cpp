// How often the widget paints, and how much of itself.

#include "WidgetTest.h"
#include "widget/CompletionPulse.h"
#include "widget/PhaseGlyph.h"
#include "widget/ProgressRing.h"

#include <QPaintEvent>

namespace {

/// Notes what a widget is asked to paint.
class Paints : public QObject
{
public:
    explicit Paints(QWidget* widget) { widget->installEventFilter(this); }

    QList<QRegion> regions;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            regions.append(static_cast<QPaintEvent*>(event)->region());
        return false;
    }

    /// All that was painted, once or more often.
    QRegion all() const
    {
        QRegion sum;
        for (const QRegion& region : regions)
            sum += region;
        return sum;
    }
};

} // namespace

class WidgetFramesTest : public WidgetTest
{
protected:
    /// Moves time to the next frame, if one is asked for, and delivers it.
    void passFrame() { pass(1.0 / 30); }

    QRect figure() const
    {
        const RingGeometry& ring = ringGeometry(engine.compactMode());
        return phaseGlyphMotionBounds(ring.glyph(), engine.phase()).toAlignedRect();
    }

    QRect readout() const
    {
        return (engine.compactMode() ? compact::geometry(Readout::Kind::time).readout
                                     : full::geometry().readout)
            .toAlignedRect();
    }

    /// How many pixels of the card are clearly not on the screen what they are when the widget is
    /// painted whole. The arc may be short of its end by a part of a pixel that is not seen.
    int pixelsLeftOnScreen()
    {
        const QImage onScreen = window->screen()->grabWindow(window->winId()).toImage();
        const QImage anew = picture();
        int different = onScreen.size() == anew.size() ? 0 : anew.width() * anew.height();
        for (int y = 0; y < anew.height(); ++y) {
            for (int x = 0; x < anew.width(); ++x) {
                if (view->isOnCard(QPointF(x, y) + QPointF(0.5, 0.5)))
                    different +=
                        std::abs(qGray(onScreen.pixel(x, y)) - qGray(anew.pixel(x, y))) > 40;
            }
        }
        return different;
    }
};

TEST_F(WidgetFramesTest, frameRatesAreThoseOfWhatMoves)
{
    for (const bool compact : {false, true}) {
        show(compact);
        EXPECT_EQ(clock.frameSources(), 1);
        EXPECT_GE(clock.framesPerSecond(), 10) << "the figure";
        EXPECT_LE(clock.framesPerSecond(), 30);
        reach(Phase::standing, State::running);
        EXPECT_EQ(clock.frameSources(), 1);
        EXPECT_GE(clock.framesPerSecond(), 10);
        EXPECT_LE(clock.framesPerSecond(), 30);
        reach(Phase::pushups, State::running);
        EXPECT_EQ(clock.frameSources(), 1);
        EXPECT_GE(clock.framesPerSecond(), 10);
        EXPECT_LE(clock.framesPerSecond(), 30);
        reach(Phase::pushups, State::complete);
        EXPECT_EQ(clock.framesPerSecond(), 30) << "the pulse";
        reach(Phase::sitting, State::complete);
        EXPECT_EQ(clock.frameSources(), 1);
        EXPECT_EQ(clock.framesPerSecond(), 30) << "the pulse";
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetFramesTest, changesComeAtTheFullRateAndEndInTheOneOfTheFigure)
{
    show();
    const double ofFigure = clock.framesPerSecond();
    ASSERT_LT(ofFigure, 30);
    pointer->moveTo(onFullCard());
    EXPECT_EQ(clock.framesPerSecond(), 30) << "the fading of the controls";
    settle();
    EXPECT_EQ(clock.framesPerSecond(), ofFigure);
    engine.compactMode = true;
    deliver();
    EXPECT_EQ(clock.framesPerSecond(), 30) << "the change of the form";
}

TEST_F(WidgetFramesTest, aPausedWidgetRestsWhenTheChangeIsOver)
{
    for (const bool compact : {false, true}) {
        show(compact);
        engine.togglePause();
        deliver();
        EXPECT_EQ(clock.frameSources(), 1);
        pass(0.2);
        EXPECT_EQ(clock.frameSources(), 1) << "the time fades for 0.3 s";
        pass(0.2);
        EXPECT_EQ(clock.frameSources(), 0);

        pointer->moveTo(onCard(compact));
        EXPECT_EQ(clock.frameSources(), 1);
        pass(0.25);
        EXPECT_EQ(clock.frameSources(), 0);

        pointer->leave();
        settle();
        engine.togglePause();
        deliver();
        EXPECT_EQ(clock.frameSources(), 1);
        settle();
        EXPECT_EQ(clock.frameSources(), 1) << "the figure moves again";
    }
}

TEST_F(WidgetFramesTest, aFigureUnderTheBandRestsUntilItIsSeenAgain)
{
    show(true);
    pointer->moveTo(onCard(true));
    settle();
    EXPECT_EQ(clock.frameSources(), 0);
    pointer->leave();
    EXPECT_EQ(clock.frameSources(), 1);
    settle();
    EXPECT_EQ(clock.frameSources(), 1);
    reach(Phase::pushups, State::running);
    pointer->moveTo(onCard(true));
    settle();
    EXPECT_EQ(clock.frameSources(), 1) << "the ring reaches beyond the band";
}

TEST_F(WidgetFramesTest, aPausedWidgetPaintsNothing)
{
    show();
    reach(Phase::sitting, State::paused);
    Paints paints(view);
    pass(2);
    clock.pass(2);
    deliver();
    EXPECT_EQ(paints.regions.size(), 0);
}

TEST_F(WidgetFramesTest, aHiddenWidgetAsksForNothing)
{
    show();
    pointer->moveTo(onFullCard());
    settle();
    window->hide();
    pointer->leave();
    passFrame();
    EXPECT_EQ(clock.frameSources(), 0);
    Paints paints(view);
    clock.pass(5); // the countdown goes on
    deliver();
    EXPECT_EQ(clock.frameSources(), 0) << "for the ticks";
    engine.advance(false);
    engine.compactMode = true;
    deliver();
    EXPECT_EQ(clock.frameSources(), 0) << "for a change of phase and form";
    EXPECT_EQ(paints.regions.size(), 0);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    deliver();
    EXPECT_EQ(clock.frameSources(), 1);
    EXPECT_LT(clock.framesPerSecond(), 30) << "what it missed has arrived";
}

TEST_F(WidgetFramesTest, nothingAsksForFramesBeforeTheWidgetIsShown)
{
    WidgetView unseen(engine, actions, frames);
    clock.pass(3);
    engine.advance(false);
    deliver();
    EXPECT_EQ(clock.frameSources(), 0);
}

TEST_F(WidgetFramesTest, whereNothingMayMoveThereAreNoFrames)
{
    for (const Phase phase : {Phase::sitting, Phase::standing, Phase::pushups}) {
        for (const State state : {State::running, State::complete}) {
            show();
            reach(phase, state);
            frames.setAnimated(false);
            passFrame();
            EXPECT_EQ(clock.frameSources(), 0);
            Paints paints(view);
            const QRect room = figure();
            pass(2);
            EXPECT_FALSE(paints.all().intersects(room));
            frames.setAnimated(true);
            settle();
            EXPECT_EQ(clock.frameSources(), 1);
            EXPECT_TRUE(paints.all().intersects(room));
            engine.start(Phase::sitting);
        }
    }
}

TEST_F(WidgetFramesTest, whereNothingMayMoveChangesArriveAtOnce)
{
    show();
    frames.setAnimated(false);
    pointer->moveTo(onFullCard());
    EXPECT_EQ(button(words::skip)->opacity(), 1);
    pointer->leave();
    EXPECT_EQ(button(words::skip)->opacity(), 0);
    engine.togglePause();
    deliver();
    const QImage paused = picture();
    settle();
    EXPECT_EQ(picture(), paused);
    reach(Phase::standing, State::running);
    const QImage running = picture();
    clock.jump(0.4);
    EXPECT_EQ(picture(), running) << "another pose";
    engine.compactMode = true;
    deliver();
    EXPECT_NE(button(words::full), nullptr);
    EXPECT_EQ(clock.frameSources(), 0);
}

TEST_F(WidgetFramesTest, animationsSwitchedOffInTheMiddleOfAChangeEndIt)
{
    show();
    pointer->moveTo(onFullCard());
    engine.advance(false);
    pass(0.1);
    frames.setAnimated(false);
    deliver();
    EXPECT_EQ(button(words::skip)->opacity(), 1);
    const QImage then = picture();
    settle();
    EXPECT_EQ(picture(), then);
}

TEST_F(WidgetFramesTest, aClockSetBackEndsAChangeForGood)
{
    show();
    pointer->moveTo(onFullCard());
    engine.advance(false);
    pass(0.1);
    clock.jump(-10);
    pass(0.1);
    EXPECT_EQ(button(words::skip)->opacity(), 1);
    pass(9.85); // the time of the change comes again
    const QImage then = picture();
    frames.setAnimated(false);
    deliver();
    frames.setAnimated(true);
    deliver();
    EXPECT_EQ(picture(), then);
}

TEST_F(WidgetFramesTest, aFrameIsOneRepaintOfNoMoreThanWhatMoves)
{
    for (const bool compact : {false, true}) {
        show(compact);
        const RingGeometry& ring = ringGeometry(compact);
        struct Case
        {
            Phase phase;
            State state;
            QRectF moving;
        };
        for (const Case& one : {
                 Case{Phase::sitting, State::running, ring.glyph()},
                 Case{Phase::standing, State::running, ring.glyph()},
                 Case{Phase::pushups, State::running, ringBounds(ring)},
                 Case{Phase::sitting, State::complete, pulseBounds(ring)},
             }) {
            reach(one.phase, one.state);
            Paints paints(view);
            for (int frame = 0; frame < 10; ++frame) {
                paints.regions.clear();
                passFrame();
                ASSERT_EQ(paints.regions.size(), 1);
                const QRegion painted = paints.regions.first();
                EXPECT_TRUE(painted.subtracted(one.moving.toAlignedRect()).isEmpty())
                    << static_cast<int>(one.phase);
            }
        }
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetFramesTest, aTickPaintsTheReadoutAloneAndTheEndOfTheArcWhenItIsSeenToMove)
{
    for (const bool compact : {false, true}) {
        show(compact);
        clock.pass(600.2);
        settle();
        clock.fire();
        deliver();
        Paints paints(view);
        int readouts = 0;
        int ends = 0;
        for (int tick = 0; tick < 40; ++tick) {
            paints.regions.clear();
            clock.pass(0.5);
            deliver();
            for (const QRegion& region : paints.regions) {
                readouts += region.intersects(readout());
                const QRegion rest = region - readout();
                ends += !rest.isEmpty();
                // An end of the line with its glow, not the ring.
                const RingGeometry& ring = ringGeometry(compact);
                EXPECT_LE(rest.boundingRect().width(), ring.diameter / 2);
                EXPECT_LE(rest.boundingRect().height(), ring.diameter / 2);
                EXPECT_FALSE(rest.intersects(figure()));
            }
        }
        EXPECT_EQ(readouts, 20) << "once a second";
        // In 20 s the end of a 40-minute arc goes 3.9 px on the full card and 1.3 px on the strip.
        EXPECT_GE(ends, compact ? 3 : 10);
        EXPECT_LE(ends, compact ? 6 : 18);
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetFramesTest, whatTheTicksLeftOnTheScreenIsWhatIsPaintedAnew)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::running);
        for (int tick = 0; tick < 60; ++tick) {
            clock.pass(7.5);
            pass(0.6);
        }
        EXPECT_EQ(pixelsLeftOnScreen(), 0);
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetFramesTest, whatTheEndOfAPhaseLeavesOnTheScreenIsWhatIsPaintedAnew)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::running);
        clock.pass(*engine.duration(Phase::sitting) - 5);
        settle();
        clock.pass(6);
        ASSERT_EQ(engine.state(), State::complete);
        pass(2);
        EXPECT_EQ(pixelsLeftOnScreen(), 0);
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetFramesTest, aTickWithinTheSameSecondPaintsNothing)
{
    show();
    clock.jump(1.1);
    clock.fire();
    settle();
    Paints paints(view);
    clock.jump(0.3);
    clock.fire();
    deliver();
    EXPECT_FALSE(paints.all().intersects(readout()));
    clock.jump(0.7);
    clock.fire();
    deliver();
    EXPECT_TRUE(paints.all().intersects(readout()));
}

TEST_F(WidgetFramesTest, theFadingOfTheControlsPaintsNoMoreThanTheirRoom)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::paused);
        Paints paints(view);
        pointer->moveTo(onCard(compact));
        settle();
        const QRect room = compact
                               ? QRect(0, 14, 216, 48)
                               : full::geometry().controls.adjusted(0, -2, 0, 2).toAlignedRect();
        EXPECT_FALSE(paints.regions.isEmpty());
        EXPECT_TRUE((paints.all() - room).isEmpty());
        engine.start(Phase::sitting);
    }
}
