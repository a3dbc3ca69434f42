// The stepper by itself: what it asks for, by hand, by keyboard and by wheel.

#include "panel/Stepper.h"

#include "PanelTest.h"
#include "support/Waiting.h"

#include <QToolButton>

namespace {

using Values = std::vector<qint64>;

/// Counts the turns of the wheel that nobody below it took.
class Page : public QWidget
{
public:
    int turns = 0;

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        ++turns;
        event->accept();
    }
};

class StepperTest : public testing::Test
{
protected:
    StepperTest()
    {
        stepper->setParent(&page);
        elsewhere->setFocusPolicy(Qt::StrongFocus);
        QObject::connect(stepper, &Stepper::valueRequested, &page,
                         [this](qint64 value) { asked.push_back(value); });
        stepper->setValue(50);
        showActive(page);
        elsewhere->setFocus();
    }

    QToolButton* button(const char* name) const
    {
        for (auto* button : stepper->findChildren<QToolButton*>()) {
            if (button->accessibleName() == QLatin1String(name))
                return button;
        }
        return nullptr;
    }
    QToolButton* less() const { return button("Less Push-ups"); }
    QToolButton* more() const { return button("More Push-ups"); }

    Page page;
    Stepper* stepper = new Stepper(QStringLiteral("Push-ups"), {1, 500, 5}, QStringLiteral("reps"));
    QWidget* elsewhere = new QWidget(&page);
    Values asked;
};

} // namespace

TEST_F(StepperTest, itsButtonsAreNamed)
{
    EXPECT_NE(less(), nullptr);
    EXPECT_NE(more(), nullptr);
}

TEST_F(StepperTest, eachClickGoesOnFromTheOneBefore)
{
    more()->click();
    EXPECT_EQ(stepper->text(), QStringLiteral("55 reps"));
    more()->click();
    less()->click();
    EXPECT_EQ(asked, (Values{55, 60, 55}));
    EXPECT_EQ(stepper->value(), 55);
}

TEST_F(StepperTest, aValueThatIsSetIsNotAskedFor)
{
    stepper->setValue(60);
    stepper->setValue(501);
    EXPECT_EQ(asked, Values{});
    EXPECT_EQ(stepper->value(), 501);
}

TEST_F(StepperTest, onlyTheDirectionThatIsOpenCanBePressed)
{
    const struct
    {
        qint64 value;
        bool less;
        bool more;
    } values[] = {{1, false, true},   {2, true, true},   {499, true, true}, {500, true, false},
                  {501, true, false}, {-3, false, true}, {0, false, true}};
    for (const auto& expected : values) {
        stepper->setValue(expected.value);
        EXPECT_EQ(less()->isEnabled(), expected.less) << expected.value;
        EXPECT_EQ(more()->isEnabled(), expected.more) << expected.value;
    }
}

TEST_F(StepperTest, atItsBoundsTheKeyboardAsksForNothing)
{
    stepper->setFocus();
    stepper->setValue(500);
    QTest::keyClick(stepper, Qt::Key_Up);
    stepper->setValue(501);
    QTest::keyClick(stepper, Qt::Key_Up);
    stepper->setValue(1);
    QTest::keyClick(stepper, Qt::Key_Down);
    stepper->setValue(0);
    QTest::keyClick(stepper, Qt::Key_Down);
    EXPECT_EQ(asked, Values{});
}

TEST_F(StepperTest, arrowsAndSignsRaiseAndLower)
{
    stepper->setFocus();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Right, Qt::Key_Plus})
        QTest::keyClick(stepper, key);
    EXPECT_EQ(asked, (Values{55, 60, 65}));
    asked.clear();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Minus})
        QTest::keyClick(stepper, key);
    EXPECT_EQ(asked, (Values{60, 55, 50}));
    asked.clear();
    QTest::keyClick(stepper, Qt::Key_A);
    EXPECT_EQ(asked, Values{});
}

TEST_F(StepperTest, aHeldButtonGoesOnUntilTheBound)
{
    stepper->setValue(480);
    more()->setAutoRepeatDelay(0);
    more()->setAutoRepeatInterval(0);
    QTest::mousePress(more(), Qt::LeftButton);
    EXPECT_TRUE(waitUntil([this] { return stepper->value() == 500; }));
    QTest::mouseRelease(more(), Qt::LeftButton);
    EXPECT_EQ(asked, (Values{485, 490, 495, 500}));
}

TEST_F(StepperTest, theButtonsAreNoStopsOfTheKeyboard)
{
    EXPECT_EQ(less()->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(more()->focusPolicy(), Qt::NoFocus);
    QTest::keyClick(elsewhere, Qt::Key_Tab);
    EXPECT_TRUE(stepper->hasFocus());
    QTest::keyClick(stepper, Qt::Key_Tab);
    EXPECT_TRUE(elsewhere->hasFocus());
}

TEST_F(StepperTest, aClickGivesItTheKeyboard)
{
    QTest::mouseClick(page.windowHandle(), Qt::LeftButton, {},
                      more()->mapTo(&page, more()->rect().center()));
    EXPECT_TRUE(stepper->hasFocus());
    EXPECT_EQ(asked, Values{55});
}

TEST_F(StepperTest, withoutFocusTheWheelIsLeftToThePage)
{
    turnWheel(*stepper, 120);
    turnWheel(*more(), -120);
    EXPECT_EQ(asked, Values{});
    EXPECT_EQ(page.turns, 2);
}

TEST_F(StepperTest, withFocusANotchIsAStepAndNotThePages)
{
    stepper->setFocus();
    turnWheel(*stepper, 120);
    EXPECT_EQ(asked, Values{55});
    turnWheel(*more(), -120);
    EXPECT_EQ(asked, (Values{55, 50}));
    EXPECT_EQ(page.turns, 0);
}

TEST_F(StepperTest, smallTurnsAddUpToANotch)
{
    stepper->setFocus();
    for (int i = 0; i < 7; ++i)
        turnWheel(*stepper, 15);
    EXPECT_EQ(asked, Values{});
    turnWheel(*stepper, 15);
    EXPECT_EQ(asked, Values{55});
    turnWheel(*stepper, -119);
    EXPECT_EQ(asked, Values{55});
    turnWheel(*stepper, -1);
    EXPECT_EQ(asked, (Values{55, 50}));
}

TEST_F(StepperTest, aTurnThatWasNotFinishedIsForgottenWithTheFocus)
{
    stepper->setFocus();
    turnWheel(*stepper, 119);
    elsewhere->setFocus();
    stepper->setFocus();
    turnWheel(*stepper, 1);
    EXPECT_EQ(asked, Values{});
}

TEST_F(StepperTest, aWideTurnIsAsManySteps)
{
    stepper->setFocus();
    turnWheel(*stepper, 360);
    EXPECT_EQ(stepper->value(), 65);
    turnWheel(*stepper, -240);
    EXPECT_EQ(stepper->value(), 55);
}

TEST_F(StepperTest, focusShows)
{
    const QImage without = stepper->grab().toImage();
    stepper->setFocus();
    EXPECT_NE(stepper->grab().toImage(), without);
    elsewhere->setFocus();
    EXPECT_EQ(stepper->grab().toImage(), without);
}

TEST_F(StepperTest, numbersAreNotGrouped)
{
    stepper->setValue(1234567);
    EXPECT_EQ(stepper->text(), QStringLiteral("1234567 reps"));
    stepper->setValue(std::numeric_limits<qint64>::min());
    EXPECT_EQ(stepper->text(), QStringLiteral("-9223372036854775808 reps"));
}

TEST(StepperAtZeroTest, onlyMoreCanBePressed)
{
    Stepper stepper(QStringLiteral("Push-ups"), {1, 500, 5}, QStringLiteral("reps"));
    stepper.setValue(0);
    const auto buttons = stepper.findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 2);
    EXPECT_FALSE(buttons[0]->isEnabled());
    EXPECT_TRUE(buttons[1]->isEnabled());
}
