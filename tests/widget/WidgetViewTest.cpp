#include "widget/WidgetView.h"

#include "support/Fakes.h"
#include "support/ManualClock.h"
#include "support/Waiting.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

class WidgetViewTest : public testing::Test
{
protected:
    WidgetViewTest() { view.resize(WidgetView::preferredSize(false)); }

    /// What the view shows now, all notices delivered.
    QImage picture()
    {
        QCoreApplication::processEvents();
        return view.grab().toImage();
    }

    ManualClock clock;
    MemorySettings settings;
    SilentPlayer sound;
    ListLog log;
    TimerEngine engine{{clock, settings, sound, [this]() -> SessionLog& { return log; }}, {}};
    WidgetView view{engine};
};

TEST_F(WidgetViewTest, everyPhaseAndStateHasAFaceOfItsOwn)
{
    QList<QImage> faces{picture()};
    const auto expectNewFace = [&](const char* what) {
        const QImage face = picture();
        EXPECT_FALSE(faces.contains(face)) << what;
        faces.append(face);
    };
    clock.pass(1);
    expectNewFace("a second later");
    engine.togglePause();
    expectNewFace("paused");
    engine.togglePause();
    clock.pass(40 * 60);
    expectNewFace("complete");
    engine.advance(false);
    expectNewFace("standing");
    engine.advance(false);
    expectNewFace("push-ups");
}

TEST_F(WidgetViewTest, aTickThatChangesNothingToSeeRepaintsNothing)
{
    class PaintCounter : public QObject
    {
    public:
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint;
            return false;
        }
    };
    PaintCounter counter;
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    clock.jump(1.1);
    clock.fire();
    view.installEventFilter(&counter);
    ASSERT_TRUE(waitUntil([&] { return counter.paints > 0; }));
    counter.paints = 0;
    clock.jump(0.3);
    clock.fire();
    QCoreApplication::processEvents();
    clock.jump(0.7);
    clock.fire();
    ASSERT_TRUE(waitUntil([&] { return counter.paints > 0; }));
    EXPECT_EQ(counter.paints, 1) << "the tick within the same second painted too";
}

TEST_F(WidgetViewTest, aTapActsOnlyOnACompletePhase)
{
    QTest::mouseClick(&view, Qt::LeftButton);
    EXPECT_EQ(engine.phase(), Phase::sitting);
    engine.togglePause();
    QTest::mouseClick(&view, Qt::LeftButton);
    EXPECT_EQ(engine.state(), TimerEngine::State::paused);
    engine.togglePause();
    clock.pass(40 * 60);
    ASSERT_EQ(engine.state(), TimerEngine::State::complete);
    QTest::mouseClick(&view, Qt::RightButton);
    EXPECT_EQ(engine.phase(), Phase::sitting);
    QTest::mouseClick(&view, Qt::LeftButton);
    EXPECT_EQ(engine.phase(), Phase::standing);
    EXPECT_EQ(sound.played, QStringList{QStringLiteral("Glass")}) << "no second sound";
    EXPECT_EQ(log.entries, (std::vector<ListLog::Entry>{{Phase::sitting, 2400, 0}}));
}
