// The widget in the hands of a user without a mouse.

#include "WidgetTest.h"
#include "support/Pixels.h"

#include <numbers>

class WidgetKeyboardTest : public WidgetTest
{
protected:
    /// Shows the widget, with the focus on its card.
    void showWithKeyboard(bool compact, Phase phase = Phase::sitting, State state = State::running)
    {
        show(compact);
        reach(phase, state);
        giveKeyboard();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window->windowHandle(), key, modifiers);
        deliver();
    }

    /// What has the focus: a button by its name, "card", or nothing.
    std::string focused() const
    {
        const QWidget* focus = QApplication::focusWidget();
        if (focus == view)
            return "card";
        const auto* button = qobject_cast<const FadingButton*>(focus);
        return button ? nameOf(button) : "";
    }

    /// All that Tab comes to, from the card until it is back there.
    Strings tabRound(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        Strings round;
        do {
            round.push_back(focused());
            press(key, modifiers);
        } while (focused() != "card" && round.size() < 20);
        return round;
    }

    void tabTo(const std::string& name)
    {
        for (int i = 0; i < 20 && focused() != name; ++i)
            press(Qt::Key_Tab);
        ASSERT_EQ(focused(), name);
    }

    double controlsOpacity() const { return button(words::skip)->opacity(); }
};

TEST_F(WidgetKeyboardTest, tabGoesThroughTheButtonsOfTheMomentInTheirOrder)
{
    struct Case
    {
        bool compact;
        Phase phase;
        State state;
        Strings round;
    };
    for (const Case& one : {
             Case{false,
                  Phase::sitting,
                  State::running,
                  {"card", words::pause, words::skip, words::compact, words::settings, words::hide,
                   words::quit}},
             Case{false,
                  Phase::standing,
                  State::paused,
                  {"card", words::resume, words::skip, words::compact, words::settings, words::hide,
                   words::quit}},
             Case{false,
                  Phase::sitting,
                  State::complete,
                  {"card", words::skip, words::compact, words::settings, words::hide, words::quit}},
             Case{false, Phase::pushups, State::running, {"card", words::done}},
             Case{true,
                  Phase::sitting,
                  State::running,
                  {"card", words::pause, words::skip, words::full, words::settings, words::hide,
                   words::quit}},
             Case{true,
                  Phase::pushups,
                  State::running,
                  {"card", words::done, words::skip, words::full, words::settings, words::hide,
                   words::quit}},
         }) {
        showWithKeyboard(one.compact, one.phase, one.state);
        EXPECT_EQ(tabRound(Qt::Key_Tab), one.round);
        Strings back = one.round;
        std::reverse(back.begin() + 1, back.end());
        EXPECT_EQ(tabRound(Qt::Key_Tab, Qt::ShiftModifier), back);
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetKeyboardTest, theFocusOnAButtonShowsTheControlsAsThePointerDoes)
{
    for (const bool compact : {false, true}) {
        showWithKeyboard(compact);
        EXPECT_EQ(controlsOpacity(), 0) << "the card alone shows nothing";
        press(Qt::Key_Tab);
        pass(0.09);
        EXPECT_NEAR(controlsOpacity(), 0.5, 0.01);
        settle();
        EXPECT_EQ(controlsOpacity(), 1);
        press(Qt::Key_Tab);
        settle();
        EXPECT_EQ(controlsOpacity(), 1);
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        ASSERT_EQ(focused(), "card");
        settle();
        EXPECT_EQ(controlsOpacity(), 0);
    }
}

TEST_F(WidgetKeyboardTest, theControlsGoWhenTheKeyboardGoesElsewhere)
{
    showWithKeyboard(false);
    tabTo(words::settings);
    settle();
    elsewhere.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
    settle();
    EXPECT_EQ(controlsOpacity(), 0);
}

TEST_F(WidgetKeyboardTest, spaceAndReturnPressTheFocusedButton)
{
    for (const bool compact : {false, true}) {
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            showWithKeyboard(compact);
            asked.clear();
            tabTo(words::pause);
            press(key);
            EXPECT_EQ(engine.state(), State::paused);
            EXPECT_EQ(focused(), words::resume) << "the same button by its other name";
            press(key);
            EXPECT_EQ(engine.state(), State::running);
            for (const auto& name : {words::settings, words::hide, words::quit}) {
                tabTo(name);
                press(key);
            }
            EXPECT_EQ(asked, (Strings{"settings", "hide", "quit"}));
            tabTo(words::skip);
            press(key);
            EXPECT_EQ(engine.phase(), Phase::standing);
            EXPECT_EQ(sound.played, QStringList());
            engine.start(Phase::sitting);
        }
    }
}

TEST_F(WidgetKeyboardTest, thePushupsAreReportedDone)
{
    for (const bool compact : {false, true}) {
        showWithKeyboard(compact, Phase::pushups);
        tabTo(words::done);
        press(Qt::Key_Space);
        EXPECT_EQ(engine.phase(), Phase::sitting);
        EXPECT_EQ(sound.played, QStringList{QStringLiteral("Funk")});
        EXPECT_EQ(log.entries, (std::vector<ListLog::Entry>{{Phase::pushups, 0, 50}}));
    }
    EXPECT_EQ(engine.cycle(), 3);
}

TEST_F(WidgetKeyboardTest, theCardIsTappedWithReturnAndSpace)
{
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        showWithKeyboard(false, Phase::sitting, State::complete);
        press(Qt::Key_A);
        EXPECT_EQ(engine.state(), State::complete);
        press(key);
        EXPECT_EQ(engine.phase(), Phase::standing);
        EXPECT_EQ(sound.played, QStringList());
        press(key);
        EXPECT_EQ(engine.phase(), Phase::standing) << "there is nothing to acknowledge";
        EXPECT_EQ(engine.state(), State::running);
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetKeyboardTest, theFocusGoesOnToTheControlsThatComeInPlaceOfOthers)
{
    showWithKeyboard(false);
    tabTo(words::compact);
    press(Qt::Key_Space);
    resizeTo(true);
    EXPECT_EQ(focused(), words::full);
    EXPECT_EQ(controlsOpacity(), 1);
    press(Qt::Key_Space);
    resizeTo(false);
    EXPECT_EQ(focused(), words::compact);

    tabTo(words::skip);
    press(Qt::Key_Space);
    EXPECT_EQ(focused(), words::skip);
    press(Qt::Key_Space);
    settle();
    ASSERT_EQ(engine.phase(), Phase::pushups);
    EXPECT_EQ(focused(), words::done);
    press(Qt::Key_Space);
    settle();
    EXPECT_EQ(engine.phase(), Phase::sitting);
    EXPECT_NE(focused(), "");
    EXPECT_NE(focused(), words::done);
}

TEST_F(WidgetKeyboardTest, aButtonThatGoesHandsTheFocusOn)
{
    for (const bool compact : {false, true}) {
        showWithKeyboard(compact);
        tabTo(words::pause);
        clock.pass(40 * 60);
        settle();
        ASSERT_EQ(engine.state(), State::complete);
        EXPECT_EQ(focused(), words::skip);
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetKeyboardTest, theFocusOnTheCheckMarkStaysWhenThePointerComes)
{
    showWithKeyboard(true, Phase::pushups);
    tabTo(words::done);
    settle();
    EXPECT_EQ(focused(), words::done);
    pointer->moveTo(onCard(true));
    settle();
    EXPECT_EQ(focused(), words::done);
    press(Qt::Key_Space);
    EXPECT_EQ(sound.played, QStringList{QStringLiteral("Funk")}) << "it was skipped instead";
}

TEST_F(WidgetKeyboardTest, clickingNeverGivesTheFocus)
{
    for (const bool compact : {false, true}) {
        show(compact);
        for (const std::string& name : offeredNames()) {
            pointer->press(centerOf(button(name)));
            EXPECT_EQ(focused(), "") << name;
            pointer->moveTo(onCard(compact));
            pointer->release();
            EXPECT_EQ(focused(), "") << name;
        }
        pointer->click(onCard(compact));
        EXPECT_EQ(focused(), "");
        // Nor does it where the widget has the keyboard.
        giveKeyboard();
        tabTo(words::quit);
        pointer->click(onCard(compact));
        EXPECT_EQ(focused(), words::quit);
        pointer->click(centerOf(button(words::settings)));
        EXPECT_EQ(focused(), words::quit);
    }
}

// --- the ring around what has the focus -----------------------------------------------------

TEST_F(WidgetKeyboardTest, theFocusedButtonAloneHasAWholeRing)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::paused);
        pointer->moveTo(onCard(compact));
        settle();
        const QImage without = picture();
        giveKeyboard();
        tabTo(words::settings);
        settle();
        const QImage with = picture();
        const double radius = compact ? 13 : 15;
        const QPointF center = rowCenters(compact, 6)[3];
        // 1.5 px away from the button and 1.5 px wide.
        const QPointF around(radius + 3, radius + 3);
        EXPECT_EQ(changedBox(without, with),
                  QRectF(QRectF(center - around, center + around).toAlignedRect()));
        for (int degrees = 0; degrees < 360; degrees += 5) {
            const double angle = degrees * std::numbers::pi / 180;
            const double away = radius + 2.25;
            const QPointF on = center + away * QPointF(std::cos(angle), std::sin(angle));
            const int x = static_cast<int>(std::floor(on.x()));
            const int y = static_cast<int>(std::floor(on.y()));
            EXPECT_GT(qGray(with.pixel(x, y)), qGray(without.pixel(x, y)) + 60) << degrees;
        }
        engine.start(Phase::sitting);
    }
}

TEST_F(WidgetKeyboardTest, theFocusedCardHasARingWithinItsEdge)
{
    for (const bool compact : {false, true}) {
        show(compact);
        reach(Phase::sitting, State::paused);
        const QImage without = picture();
        giveKeyboard();
        const QImage with = picture();
        const QRectF changed = changedBox(without, with);
        EXPECT_TRUE(QRectF(QPointF(), view->size()).contains(changed));
        EXPECT_GT(changed.width(), view->width() - 8);
        EXPECT_GT(changed.height(), view->height() - 8);
        const QRect inner = view->rect().adjusted(12, 12, -12, -12);
        EXPECT_EQ(changedBox(partOf(without, inner), partOf(with, inner)), QRectF());
        press(Qt::Key_Tab);
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        settle();
        EXPECT_EQ(picture(), with);
        press(Qt::Key_Tab);
        settle();
        EXPECT_EQ(changedBox(without, picture()).width() < view->width() - 8, !compact)
            << "the ring stayed on the card";
        engine.start(Phase::sitting);
    }
}
