// The widget as assistive technology finds it.

#include "WidgetTest.h"

#include <QAccessible>

class WidgetAccessibilityTest : public WidgetTest
{
protected:
    using Interfaces = std::vector<QAccessibleInterface*>;

    static void collect(QAccessibleInterface* from, Interfaces& found)
    {
        for (int i = 0; i < from->childCount(); ++i) {
            QAccessibleInterface* child = from->child(i);
            if (child->state().invisible)
                continue;
            if (child->role() == QAccessible::Button)
                found.push_back(child);
            collect(child, found);
        }
    }

    /// The buttons that are there to be seen, as a screen reader comes to them.
    Interfaces buttons() const
    {
        Interfaces found;
        collect(QAccessible::queryAccessibleInterface(view), found);
        return found;
    }

    Strings names() const
    {
        Strings names;
        for (QAccessibleInterface* button : buttons())
            names.push_back(button->text(QAccessible::Name).toStdString());
        return names;
    }

    std::string spoken() const
    {
        return QAccessible::queryAccessibleInterface(view)->text(QAccessible::Name).toStdString();
    }

    /// Has assistive technology press the button of this name.
    void pressByName(const std::string& name)
    {
        for (QAccessibleInterface* button : buttons()) {
            if (button->text(QAccessible::Name).toStdString() != name)
                continue;
            QAccessibleActionInterface* interface = button->actionInterface();
            ASSERT_TRUE(
                interface->actionNames().contains(QAccessibleActionInterface::pressAction()));
            interface->doAction(QAccessibleActionInterface::pressAction());
            return;
        }
        FAIL() << "there is no " << name;
    }
};

TEST_F(WidgetAccessibilityTest, whatIsOfferedIsThereByNameAndNothingElse)
{
    show();
    EXPECT_EQ(names(), (Strings{words::pause, words::skip, words::compact, words::settings,
                                words::hide, words::quit}));
    reach(Phase::sitting, State::paused);
    EXPECT_EQ(names(), (Strings{words::resume, words::skip, words::compact, words::settings,
                                words::hide, words::quit}));
    engine.togglePause();
    reach(Phase::sitting, State::complete);
    EXPECT_EQ(names(),
              (Strings{words::skip, words::compact, words::settings, words::hide, words::quit}));
    reach(Phase::pushups, State::running);
    EXPECT_EQ(names(), Strings{words::done});
    show(true);
    EXPECT_EQ(names(), (Strings{words::done, words::skip, words::full, words::settings, words::hide,
                                words::quit}));
    reach(Phase::sitting, State::running);
    EXPECT_EQ(names(), (Strings{words::pause, words::skip, words::full, words::settings,
                                words::hide, words::quit}));
}

TEST_F(WidgetAccessibilityTest, whatIsOfferedCanBeUsedAndFocused)
{
    show();
    for (QAccessibleInterface* button : buttons()) {
        EXPECT_FALSE(button->state().disabled);
        EXPECT_TRUE(button->state().focusable);
        EXPECT_FALSE(button->state().checkable);
        EXPECT_TRUE(
            view->rect().translated(view->mapToGlobal(QPoint())).contains(button->rect().center()));
    }
}

TEST_F(WidgetAccessibilityTest, aControlOnItsWayOutIsDisabledAtOnce)
{
    show();
    reach(Phase::pushups, State::running);
    engine.advance(false);
    deliver();
    for (QAccessibleInterface* button : buttons()) {
        EXPECT_EQ(button->state().disabled,
                  button->text(QAccessible::Name).toStdString() == words::done);
    }
}

TEST_F(WidgetAccessibilityTest, everyButtonCanBePressed)
{
    show();
    pressByName(words::pause);
    EXPECT_TRUE(waitUntil([this] { return engine.state() == State::paused; }));
    settle();
    pressByName(words::resume);
    EXPECT_TRUE(waitUntil([this] { return engine.state() == State::running; }));
    pressByName(words::settings);
    EXPECT_TRUE(waitUntil([this] { return asked == Strings{"settings"}; }));
    pressByName(words::hide);
    EXPECT_TRUE(waitUntil([this] { return asked == Strings{"settings", "hide"}; }));
    pressByName(words::quit);
    EXPECT_TRUE(waitUntil([this] { return asked == Strings{"settings", "hide", "quit"}; }));
    pressByName(words::skip);
    EXPECT_TRUE(waitUntil([this] { return engine.phase() == Phase::standing; }));
    pressByName(words::compact);
    EXPECT_TRUE(waitUntil([this] { return engine.compactMode(); }));
    resizeTo(true);
    pressByName(words::full);
    EXPECT_TRUE(waitUntil([this] { return !engine.compactMode(); }));
    resizeTo(false);
    reach(Phase::pushups, State::running);
    pressByName(words::done);
    EXPECT_TRUE(waitUntil([this] { return engine.phase() == Phase::sitting; }));
    EXPECT_EQ(sound.played, QStringList{QStringLiteral("Funk")});
}

TEST_F(WidgetAccessibilityTest, theStateIsTheNameOfTheWidget)
{
    show();
    EXPECT_EQ(spoken(), "Deep Work, 40 minutes left, running");
    clock.pass(1);
    EXPECT_EQ(spoken(), "Deep Work, 40 minutes left, running") << "a part of a minute is one";
    clock.pass(60);
    EXPECT_EQ(spoken(), "Deep Work, 39 minutes left, running");
    engine.togglePause();
    EXPECT_EQ(spoken(), "Deep Work, 39 minutes left, paused");
    engine.togglePause();
    clock.pass(38 * 60);
    EXPECT_EQ(spoken(), "Deep Work, 1 minute left, running");
    clock.pass(60);
    EXPECT_EQ(spoken(), "Deep Work, done");
    engine.advance(false);
    EXPECT_EQ(spoken(), "Stand Up, 15 minutes left, running");
    engine.advance(false);
    EXPECT_EQ(spoken(), "Push-Ups, 50 repetitions to do");
    engine.pushupCount = 1;
    EXPECT_EQ(spoken(), "Push-Ups, 1 repetition to do");
}

TEST_F(WidgetAccessibilityTest, onlyACompletePhaseCanBeTapped)
{
    show();
    QAccessibleActionInterface* itsActions =
        QAccessible::queryAccessibleInterface(view)->actionInterface();
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_FALSE(itsActions->actionNames().contains(press));
    itsActions->doAction(press);
    EXPECT_EQ(engine.phase(), Phase::sitting);
    reach(Phase::sitting, State::complete);
    EXPECT_TRUE(itsActions->actionNames().contains(press));
    itsActions->doAction(press);
    EXPECT_EQ(engine.phase(), Phase::standing);
}

TEST_F(WidgetAccessibilityTest, milestonesAreAnnouncedAndSecondsAreNot)
{
    show();
    int announced = 0;
    QObject::connect(view, &WidgetView::milestoneReached, view, [&announced] { ++announced; });
    const auto announcedIn = [&](double seconds) {
        announced = 0;
        for (double passed = 0; passed < seconds; passed += 0.5) {
            clock.pass(0.5);
            deliver();
        }
        return announced;
    };
    EXPECT_EQ(announcedIn(engine.remaining() - 310), 0);
    EXPECT_EQ(announcedIn(20), 1) << "five minutes left";
    EXPECT_EQ(announcedIn(engine.remaining() - 70), 0);
    EXPECT_EQ(announcedIn(20), 1) << "one minute left";
    EXPECT_EQ(announcedIn(engine.remaining() - 10), 0);
    EXPECT_EQ(announcedIn(20), 1) << "done";
    engine.advance(false);
    EXPECT_EQ(announcedIn(1), 1) << "the next phase";
    engine.togglePause();
    EXPECT_EQ(announcedIn(5), 1) << "paused";
    engine.togglePause();
    EXPECT_EQ(announcedIn(5), 1) << "resumed";
}

TEST_F(WidgetAccessibilityTest, everyRoundButtonHasAToolTipOfItsName)
{
    for (const bool compact : {false, true}) {
        show(compact);
        for (const FadingButton* button : offered())
            EXPECT_EQ(button->toolTip(), button->accessibleName());
    }
}
