// The controls and the engine, both ways.

#include "SettingsTest.h"

#include <limits>

namespace {

constexpr qint64 largest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();

} // namespace

class SettingsBindingTest : public SettingsTest
{};

TEST_F(SettingsBindingTest, aPressWritesAtOnceAndShowsAPassLater)
{
    show();
    click(more(0));
    EXPECT_EQ(engine.sittingMinutes(), 41);
    EXPECT_EQ(values(), (Texts{"40 min", "15 min", "50 reps"}));
    onePass();
    EXPECT_EQ(values(), (Texts{"41 min", "15 min", "50 reps"}));
    click(less(1));
    EXPECT_EQ(engine.standingMinutes(), 14);
    click(more(2));
    EXPECT_EQ(engine.pushupCount(), 55);
    onePass();
    EXPECT_EQ(values(), (Texts{"41 min", "14 min", "55 reps"}));
    EXPECT_EQ(settings.values.value(QStringLiteral("pushupCount")), QStringLiteral("55"));
}

TEST_F(SettingsBindingTest, theSwitchWritesAtOnce)
{
    show();
    click(compact());
    EXPECT_TRUE(engine.compactMode());
    onePass();
    EXPECT_TRUE(compact()->isChecked());
    click(compact());
    EXPECT_FALSE(engine.compactMode());
    onePass();
    EXPECT_FALSE(compact()->isChecked());
}

TEST_F(SettingsBindingTest, whatIsChangedElsewhereShowsAPassLater)
{
    show();
    engine.sittingMinutes = 90;
    engine.standingMinutes = 7;
    engine.pushupCount = 1234567;
    engine.compactMode = true;
    EXPECT_EQ(values(), (Texts{"40 min", "15 min", "50 reps"}));
    EXPECT_FALSE(compact()->isChecked());
    onePass();
    EXPECT_EQ(values(), (Texts{"90 min", "7 min", "1234567 reps"}));
    EXPECT_TRUE(compact()->isChecked());
}

TEST_F(SettingsBindingTest, readingWritesNothing)
{
    show();
    settings.writes.clear();
    engine.cycle = 2;
    clock.pass(90);
    onePass();
    EXPECT_TRUE(settings.writes.isEmpty());
}

TEST_F(SettingsBindingTest, twoPressesInOnePassAreTwoSteps)
{
    show();
    click(more(0));
    click(more(0));
    EXPECT_EQ(engine.sittingMinutes(), 42);
    stepper(2)->setFocus();
    QTest::keyClick(stepper(2), Qt::Key_Down);
    QTest::keyClick(stepper(2), Qt::Key_Down);
    EXPECT_EQ(engine.pushupCount(), 40);
}

TEST_F(SettingsBindingTest, twoNotchesInOneTurnAreTwoSteps)
{
    show();
    stepper(1)->setFocus();
    turnWheel(*stepper(1), 240);
    EXPECT_EQ(engine.standingMinutes(), 17);
}

TEST_F(SettingsBindingTest, theBoundsAreTheLastValues)
{
    engine.sittingMinutes = 239;
    engine.standingMinutes = 2;
    engine.pushupCount = 498;
    show();
    click(more(0));
    click(less(1));
    click(more(2));
    onePass();
    EXPECT_EQ(values(), (Texts{"240 min", "1 min", "500 reps"}));
    EXPECT_FALSE(more(0)->isEnabled());
    EXPECT_FALSE(less(1)->isEnabled());
    EXPECT_FALSE(more(2)->isEnabled());
    click(more(0));
    click(less(1));
    click(more(2));
    EXPECT_EQ(engine.sittingMinutes(), 240);
    EXPECT_EQ(engine.standingMinutes(), 1);
    EXPECT_EQ(engine.pushupCount(), 500);
}

TEST_F(SettingsBindingTest, aStoredValueFromOutsideIsShownAndNotTouched)
{
    for (const qint64 outside : {qint64{500}, largest}) {
        engine.standingMinutes = outside;
        settings.writes.clear();
        show();
        view->hide();
        view->show();
        onePass();
        EXPECT_EQ(values()[1], QString::number(outside).toStdString() + " min");
        EXPECT_FALSE(more(1)->isEnabled());
        view.reset();
        onePass();
        EXPECT_EQ(engine.standingMinutes(), outside);
        EXPECT_TRUE(settings.writes.isEmpty());

        show();
        click(less(1));
        EXPECT_EQ(engine.standingMinutes(), 240);
    }
    for (const qint64 outside : {qint64{-3}, smallest}) {
        engine.pushupCount = outside;
        settings.writes.clear();
        show();
        EXPECT_EQ(values()[2], QString::number(outside).toStdString() + " reps");
        EXPECT_FALSE(less(2)->isEnabled());
        click(less(2));
        view.reset();
        onePass();
        EXPECT_EQ(engine.pushupCount(), outside);
        EXPECT_TRUE(settings.writes.isEmpty());

        show();
        click(more(2));
        EXPECT_GE(engine.pushupCount(), 1);
        EXPECT_LE(engine.pushupCount(), 5);
    }
}

TEST_F(SettingsBindingTest, atZeroOnlyMoreCanBePressed)
{
    engine.pushupCount = 0;
    show();
    EXPECT_EQ(values()[2], "0 reps");
    EXPECT_FALSE(less(2)->isEnabled());
    EXPECT_TRUE(more(2)->isEnabled());
}

TEST_F(SettingsBindingTest, aNewLengthKeepsTheTimeAlreadySpent)
{
    show();
    clock.pass(10 * 60);
    click(more(0));
    EXPECT_DOUBLE_EQ(engine.remaining(), 31 * 60);
    onePass();
    click(less(0));
    onePass();
    click(less(0));
    EXPECT_DOUBLE_EQ(engine.remaining(), 29 * 60);
    EXPECT_EQ(engine.state(), TimerEngine::State::running);
}

TEST_F(SettingsBindingTest, aHiddenViewReadsNothingUntilItIsShownAgain)
{
    show();
    view->hide();
    engine.sittingMinutes = 90;
    engine.compactMode = true;
    onePass();
    EXPECT_EQ(values(), (Texts{"40 min", "15 min", "50 reps"}));
    EXPECT_FALSE(compact()->isChecked());
    view->show();
    EXPECT_EQ(values(), (Texts{"90 min", "15 min", "50 reps"}));
    EXPECT_TRUE(compact()->isChecked());
}

TEST_F(SettingsBindingTest, aPressOnAViewThatWasHiddenGoesOnFromTheValueOfNow)
{
    show();
    view->hide();
    engine.pushupCount = 100;
    view->show();
    click(more(2));
    EXPECT_EQ(engine.pushupCount(), 105);
}
