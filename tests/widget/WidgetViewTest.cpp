// That the view follows the engine.

#include "WidgetTest.h"

class WidgetViewTest : public WidgetTest
{};

TEST_F(WidgetViewTest, theSizeIsThatOfTheForm)
{
    EXPECT_EQ(WidgetView::preferredSize(false), QSize(250, 320));
    EXPECT_EQ(WidgetView::preferredSize(true), QSize(216, 76));
    for (const bool compact : {false, true}) {
        show(compact);
        EXPECT_EQ(view->size(), WidgetView::preferredSize(compact));
        EXPECT_EQ(view->sizeHint(), WidgetView::preferredSize(compact));
    }
}

TEST_F(WidgetViewTest, everyPhaseAndStateHasAFaceOfItsOwn)
{
    for (const bool compact : {false, true}) {
        show(compact);
        QList<QImage> faces{picture()};
        const auto expectNewFace = [&](const char* what) {
            settle();
            const QImage face = picture();
            EXPECT_FALSE(faces.contains(face)) << what;
            faces.append(face);
        };
        engine.togglePause();
        expectNewFace("paused");
        engine.togglePause();
        clock.pass(40 * 60);
        expectNewFace("complete");
        engine.advance(false);
        expectNewFace("standing");
        engine.advance(false);
        expectNewFace("push-ups");
        engine.advance(false);
    }
}

TEST_F(WidgetViewTest, aNewCountdownTextIsSeenAPassLater)
{
    show();
    const QRect readout = full::geometry().readout.toAlignedRect();
    const QImage before = picture().copy(readout);
    clock.pass(1);
    const QImage after = picture().copy(readout);
    EXPECT_NE(after, before);
    clock.jump(0.2); // within the same second
    clock.fire();
    EXPECT_EQ(picture().copy(readout), after);
}

TEST_F(WidgetViewTest, theCycleAndTheCountAreShownAsPlainNumbers)
{
    show();
    reach(Phase::pushups, State::running);
    const QRect badge = full::geometry().badge.toAlignedRect().adjusted(-150, 0, 0, 0);
    const QRect readout = full::geometry().readout.toAlignedRect();
    const QImage before = picture();
    engine.cycle = 12345;
    engine.pushupCount = 54321;
    settle();
    const QImage after = picture();
    EXPECT_NE(after.copy(badge), before.copy(badge));
    EXPECT_NE(after.copy(readout), before.copy(readout));

    QLocale::setDefault(QLocale(QLocale::Hindi, QLocale::India));
    EXPECT_EQ(picture().copy(badge), after.copy(badge));
    EXPECT_EQ(picture().copy(readout), after.copy(readout));
    QLocale::setDefault(QLocale::c());
}

TEST_F(WidgetViewTest, theFirstFrameIsAnnouncedOnce)
{
    int announced = 0;
    WidgetView first(engine, actions, frames);
    QObject::connect(&first, &WidgetView::firstFramePainted, &first, [&] { ++announced; });
    deliver();
    EXPECT_EQ(announced, 0);
    first.show();
    ASSERT_TRUE(waitUntil([&] { return announced > 0; }));
    first.hide();
    first.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&first));
    settle();
    EXPECT_EQ(announced, 1);
}
