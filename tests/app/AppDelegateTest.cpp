#include "app/AppDelegate.h"

#include "app/FloatingPanel.h"
#include "log/FileSystem.h"
#include "platform/ApplicationService.h"
#include "platform/SessionBus.h"
#include "support/Fakes.h"
#include "support/ManualClock.h"
#include "support/Pointer.h"
#include "support/Waiting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

/// The application without a display and without a bus, its windows found as a user finds them.
class AppDelegateTest : public testing::Test
{
protected:
    void launch()
    {
        delegate = std::make_unique<AppDelegate>(
            AppDelegate::Environment{clock,
                                     settings,
                                     sound,
                                     fileSystem,
                                     sessionBus,
                                     service,
                                     folder.filePath(QStringLiteral("sessions.json")),
                                     {}});
        delegate->applicationDidFinishLaunching();
    }

    template <typename Window>
    static Window* window()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* found = qobject_cast<Window*>(widget))
                return found;
        }
        return nullptr;
    }

    /// The tabs of the panel window, or null before the window was first opened.
    static QTabBar* tabs()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* found = widget->findChild<QTabBar*>())
                return found;
        }
        return nullptr;
    }

    static void choose(const QString& line)
    {
        Q_EMIT window<QMenu>()->aboutToShow();
        for (QAction* action : window<QMenu>()->actions()) {
            if (action->text() == line)
                return action->trigger();
        }
        FAIL() << "no line " << line.toStdString();
    }

    /// Clicks the widget's button of this name.
    static void click(const QString& name)
    {
        for (QAbstractButton* button : window<FloatingPanel>()->findChildren<QAbstractButton*>()) {
            if (button->isVisible() && button->isEnabled() && button->accessibleName() == name) {
                Pointer pointer(*window<FloatingPanel>());
                pointer.click(button->mapTo(window<FloatingPanel>(), button->rect().center()));
                return;
            }
        }
        FAIL() << "no button " << name.toStdString();
    }

    /// Lets everything that moves arrive.
    void settle()
    {
        QCoreApplication::processEvents();
        clock.passFrames(2, [] { QCoreApplication::processEvents(); });
    }

    QTemporaryDir folder;
    ManualClock clock;
    MemorySettings settings;
    SilentPlayer sound;
    FileSystem fileSystem;
    SessionBus sessionBus;
    ApplicationService service;
    std::unique_ptr<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, beforeItHasLaunchedThereIsNoWindow)
{
    delegate = std::make_unique<AppDelegate>(AppDelegate::Environment{
        clock, settings, sound, fileSystem, sessionBus, service, QString(), {}});
    EXPECT_EQ(window<FloatingPanel>(), nullptr);
    EXPECT_EQ(clock.tickSources(), 1) << "the engine counts already";
}

TEST_F(AppDelegateTest, theWidgetIsShownAtEveryLaunchInItsStoredForm)
{
    settings.values[QStringLiteral("compactMode")] = QStringLiteral("true");
    launch();
    EXPECT_TRUE(window<FloatingPanel>()->isVisible());
    EXPECT_EQ(window<FloatingPanel>()->size(), QSize(216, 76));
    EXPECT_EQ(tabs(), nullptr) << "the panel window waits until it is asked for";
}

TEST_F(AppDelegateTest, theCompactSwitchResizesTheWidgetFromItsTopEdge)
{
    settings.values[QStringLiteral("compactMode")] = QStringLiteral("true");
    launch();
    const QPoint corner = window<FloatingPanel>()->pos();
    choose(QStringLiteral("Settings…"));
    auto* compact = tabs()->window()->findChild<QCheckBox*>();
    ASSERT_TRUE(compact->isChecked());
    compact->click();
    EXPECT_EQ(window<FloatingPanel>()->size(), QSize(216, 76)) << "not before the next pass";
    settle();
    EXPECT_EQ(window<FloatingPanel>()->size(), QSize(250, 320));
    EXPECT_EQ(window<FloatingPanel>()->pos(), corner);
    EXPECT_EQ(settings.values.value(QStringLiteral("compactMode")), QStringLiteral("false"));
}

TEST_F(AppDelegateTest, thePanelWindowIsOneWindowThatKeepsItsPlace)
{
    launch();
    choose(QStringLiteral("Settings…"));
    QTabBar* panel = tabs();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->window()->width(), 380);
    EXPECT_EQ(panel->window()->windowTitle(), QStringLiteral("Vantora"));
    EXPECT_TRUE(waitUntil([&] { return panel->window()->isVisible(); }));
    EXPECT_EQ(panel->currentIndex(), 0);

    panel->window()->move(11, 22);
    choose(QStringLiteral("Logs…"));
    EXPECT_TRUE(waitUntil([&] { return panel->currentIndex() == 1; }));
    panel->window()->close();
    EXPECT_FALSE(panel->window()->isVisible());
    choose(QStringLiteral("Logs…"));
    EXPECT_EQ(tabs(), panel);
    EXPECT_TRUE(waitUntil([&] { return panel->window()->isVisible(); }));
    EXPECT_EQ(panel->window()->pos(), QPoint(11, 22));
    EXPECT_EQ(panel->currentIndex(), 1);
}

TEST_F(AppDelegateTest, aSkippedPhaseIsWrittenWhenItLastedAMinute)
{
    launch();
    clock.pass(59);
    choose(QStringLiteral("Skip to Next Phase"));
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("sessions.json"))));
    clock.pass(61);
    choose(QStringLiteral("Skip to Next Phase"));
    QFile file(folder.filePath(QStringLiteral("sessions.json")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains(R"("phaseRaw":1,"seconds":61,"reps":0)"));
}

TEST_F(AppDelegateTest, theMenuTellsWhatItWillDo)
{
    launch();
    const auto hasLine = [](const QString& text) {
        Q_EMIT window<QMenu>()->aboutToShow();
        const auto actions = window<QMenu>()->actions();
        return std::any_of(actions.begin(), actions.end(), [&](const QAction* action) {
            return action->isVisible() && action->text() == text;
        });
    };
    EXPECT_TRUE(hasLine(QStringLiteral("Pause")));
    choose(QStringLiteral("Pause"));
    EXPECT_TRUE(hasLine(QStringLiteral("Resume")));
    choose(QStringLiteral("Hide Widget"));
    EXPECT_FALSE(window<FloatingPanel>()->isVisible());
    EXPECT_TRUE(hasLine(QStringLiteral("Show Widget")));
    choose(QStringLiteral("Resume"));
    clock.pass(40 * 60);
    EXPECT_EQ(sound.played, QStringList{QStringLiteral("Glass")});
    EXPECT_FALSE(hasLine(QStringLiteral("Pause"))) << "there is nothing left to pause";
    choose(QStringLiteral("Restart Cycle"));
    EXPECT_TRUE(hasLine(QStringLiteral("Pause")));
}

TEST_F(AppDelegateTest, theWidgetsButtonsDoWhatTheMenuDoes)
{
    launch();
    settle();
    click(QStringLiteral("Hide widget"));
    EXPECT_FALSE(window<FloatingPanel>()->isVisible());
    choose(QStringLiteral("Show Widget"));
    EXPECT_TRUE(window<FloatingPanel>()->isVisible());

    choose(QStringLiteral("Logs…"));
    ASSERT_TRUE(waitUntil([] { return tabs()->currentIndex() == 1; }));
    click(QStringLiteral("Settings"));
    EXPECT_TRUE(waitUntil([] { return tabs()->currentIndex() == 0; }));

    click(QStringLiteral("Skip to next phase"));
    settle();
    choose(QStringLiteral("Skip to Next Phase"));
    settle();
    click(QStringLiteral("Done — next cycle"));
    EXPECT_EQ(sound.played, QStringList{QStringLiteral("Funk")});
    QFile file(folder.filePath(QStringLiteral("sessions.json")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains(R"("phaseRaw":2,"seconds":0,"reps":50)"));
}

TEST_F(AppDelegateTest, theWidgetsQuitButtonEndsTheEventLoop)
{
    launch();
    settle();
    QTimer::singleShot(0, delegate.get(), [] { click(QStringLiteral("Quit")); });
    QTimer::singleShot(20'000, delegate.get(), [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(AppDelegateTest, theFormButtonResizesTheWidgetFromItsTopEdge)
{
    launch();
    settle();
    const QPoint corner = window<FloatingPanel>()->pos();
    click(QStringLiteral("Compact widget"));
    settle();
    EXPECT_EQ(window<FloatingPanel>()->geometry(), QRect(corner, QSize(216, 76)));
    click(QStringLiteral("Full widget"));
    settle();
    EXPECT_EQ(window<FloatingPanel>()->geometry(), QRect(corner, QSize(250, 320)));
}

TEST_F(AppDelegateTest, settingTheFormThatIsThereAlreadyResizesNothing)
{
    launch();
    settle();
    choose(QStringLiteral("Settings…"));
    auto* compact = tabs()->window()->findChild<QCheckBox*>();
    compact->click();
    compact->click();
    QCoreApplication::processEvents();
    settle();
    EXPECT_EQ(window<FloatingPanel>()->size(), QSize(250, 320));
}

TEST_F(AppDelegateTest, aHiddenWidgetHasItsNewFormWhenItComesBack)
{
    launch();
    settle();
    choose(QStringLiteral("Settings…"));
    choose(QStringLiteral("Hide Widget"));
    tabs()->window()->findChild<QCheckBox*>()->click();
    QCoreApplication::processEvents();
    choose(QStringLiteral("Show Widget"));
    EXPECT_EQ(window<FloatingPanel>()->size(), QSize(216, 76));
}

TEST_F(AppDelegateTest, aHiddenWidgetCostsNoFrames)
{
    launch();
    settle();
    EXPECT_EQ(clock.frameSources(), 1);
    choose(QStringLiteral("Hide Widget"));
    clock.passFrames(0.1, [] { QCoreApplication::processEvents(); });
    clock.pass(3);
    QCoreApplication::processEvents();
    EXPECT_EQ(clock.frameSources(), 0);
}
