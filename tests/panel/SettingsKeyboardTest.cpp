// The form without a mouse.

#include "SettingsTest.h"
#include "panel/Branding.h"
#include "panel/LinkButton.h"

class SettingsKeyboardTest : public SettingsTest
{
protected:
    void SetUp() override { show(); }
};

TEST_F(SettingsKeyboardTest, theTabKeyGoesFromTopToBottom)
{
    compact()->setFocus();
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), stepper(i)) << i;
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const auto* link = qobject_cast<LinkButton*>(QApplication::focusWidget());
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->accessibleName(), branding::linkTitle());
    compact()->setFocus();
    QTest::keyClick(compact(), Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), link);
}

TEST_F(SettingsKeyboardTest, spaceTogglesTheSwitch)
{
    compact()->setFocus();
    QTest::keyClick(compact(), Qt::Key_Space);
    EXPECT_TRUE(engine.compactMode());
    onePass();
    QTest::keyClick(compact(), Qt::Key_Space);
    EXPECT_FALSE(engine.compactMode());
}

TEST_F(SettingsKeyboardTest, arrowsAndSignsMoveTheValue)
{
    stepper(2)->setFocus();
    qint64 expected = 50;
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Right, Qt::Key_Plus}) {
        QTest::keyClick(stepper(2), key);
        EXPECT_EQ(engine.pushupCount(), expected += 5);
        onePass();
    }
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Minus}) {
        QTest::keyClick(stepper(2), key);
        EXPECT_EQ(engine.pushupCount(), expected -= 5);
        onePass();
    }
}
