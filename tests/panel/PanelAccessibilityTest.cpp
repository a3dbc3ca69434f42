// The controls of the panel as assistive technology finds them.

#include "PanelTest.h"
#include "panel/SettingsView.h"
#include "panel/Stepper.h"
#include "panel/Switch.h"

#include <QAccessible>

namespace {

class PanelAccessibilityTest : public PanelTest
{
protected:
    void SetUp() override { showActive(view); }

    Stepper* stepper(const char* title)
    {
        for (auto* stepper : view.findChildren<Stepper*>()) {
            if (stepper->accessibleName() == QLatin1String(title))
                return stepper;
        }
        return nullptr;
    }

    SettingsView view{engine};
};

} // namespace

TEST_F(PanelAccessibilityTest, aStepperIsAFieldWithAValue)
{
    const struct
    {
        const char* title;
        const char* text;
        int value;
        int most;
        int step;
    } steppers[] = {{"Deep Work (seated)", "40 min", 40, 240, 1},
                    {"Stand Up", "15 min", 15, 240, 1},
                    {"Push-ups", "50 reps", 50, 500, 5}};
    for (const auto& expected : steppers) {
        ASSERT_NE(stepper(expected.title), nullptr) << expected.title;
        QAccessibleInterface* interface =
            QAccessible::queryAccessibleInterface(stepper(expected.title));
        EXPECT_EQ(interface->role(), QAccessible::SpinBox);
        EXPECT_EQ(interface->text(QAccessible::Name), QLatin1String(expected.title));
        EXPECT_EQ(interface->text(QAccessible::Value), QLatin1String(expected.text));
        EXPECT_TRUE(interface->state().focusable);
        QAccessibleValueInterface* value = interface->valueInterface();
        ASSERT_NE(value, nullptr);
        EXPECT_EQ(value->currentValue().toLongLong(), expected.value);
        EXPECT_EQ(value->minimumValue().toLongLong(), 1);
        EXPECT_EQ(value->maximumValue().toLongLong(), expected.most);
        EXPECT_EQ(value->minimumStepSize().toLongLong(), expected.step);
    }
}

TEST_F(PanelAccessibilityTest, aValueThatIsSetIsBroughtIntoTheRange)
{
    QAccessibleValueInterface* value =
        QAccessible::queryAccessibleInterface(stepper("Push-ups"))->valueInterface();
    const struct
    {
        QVariant set;
        qint64 stored;
    } values[] = {{73, 73},
                  {0, 1},
                  {501, 500},
                  {-3.0, 1},
                  {std::numeric_limits<qint64>::max(), 500},
                  {std::numeric_limits<qint64>::min(), 1},
                  {12.0, 12}};
    for (const auto& expected : values) {
        engine.pushupCount = 200;
        onePass();
        value->setCurrentValue(expected.set);
        EXPECT_EQ(engine.pushupCount(), expected.stored) << expected.set.toString().toStdString();
    }
    engine.pushupCount = 200;
    value->setCurrentValue(QStringLiteral("many"));
    value->setCurrentValue(QVariant());
    EXPECT_EQ(engine.pushupCount(), 200);
}

TEST_F(PanelAccessibilityTest, theSwitchIsACheckBox)
{
    QAccessibleInterface* found = QAccessible::queryAccessibleInterface(view.findChild<Switch*>());
    EXPECT_EQ(found->role(), QAccessible::CheckBox);
    EXPECT_EQ(found->text(QAccessible::Name), QStringLiteral("Compact widget"));
    EXPECT_TRUE(found->state().checkable);
    EXPECT_FALSE(found->state().checked);
    engine.compactMode = true;
    onePass();
    EXPECT_TRUE(found->state().checked);
}

TEST_F(PanelAccessibilityTest, anEnormousValueIsTheMost)
{
    QAccessible::queryAccessibleInterface(stepper("Push-ups"))
        ->valueInterface()
        ->setCurrentValue(1e300);
    EXPECT_EQ(engine.pushupCount(), 500);
}

TEST_F(PanelAccessibilityTest, theSwitchCanBeToggled)
{
    QAccessibleActionInterface* actions =
        QAccessible::queryAccessibleInterface(view.findChild<Switch*>())->actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(engine.compactMode());
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(engine.compactMode());
}
