#include "panel/AppPanelView.h"

#include "LogTest.h"
#include "panel/LogsView.h"
#include "panel/SettingsView.h"
#include "panel/Stepper.h"
#include "panel/ValueLabel.h"
#include "support/Waiting.h"

#include <QLayout>
#include <QTabBar>

#include <memory>

namespace {

class AppPanelViewTest : public PanelTest
{
protected:
    void show()
    {
        view = std::make_unique<AppPanelView>(engine, selection, [this]() -> SessionStore& {
            ++timesStoreWasNeeded;
            if (!store) {
                store = std::make_unique<SessionStore>(
                    clock, fileSystem, folder.filePath(QStringLiteral("sessions.json")));
            }
            return *store;
        });
        showActive(*view);
    }

    QTabBar* tabs() const { return view->findChild<QTabBar*>(); }
    SettingsView* settingsView() const { return view->findChild<SettingsView*>(); }
    LogsView* logsView() const { return view->findChild<LogsView*>(); }

    void clickTab(int tab)
    {
        QTest::mouseClick(tabs(), Qt::LeftButton, {}, tabs()->tabRect(tab).center());
    }

    void expectSettings() const
    {
        EXPECT_EQ(tabs()->currentIndex(), 0);
        EXPECT_TRUE(settingsView()->isVisible());
        EXPECT_TRUE(!logsView() || !logsView()->isVisible());
    }
    void expectLogs() const
    {
        EXPECT_EQ(tabs()->currentIndex(), 1);
        EXPECT_FALSE(settingsView()->isVisible());
        ASSERT_NE(logsView(), nullptr);
        EXPECT_TRUE(logsView()->isVisible());
    }

    QTemporaryDir folder;
    HastyFileSystem fileSystem;
    std::unique_ptr<SessionStore> store;
    int timesStoreWasNeeded = 0;
    PanelTabSelection selection;
    std::unique_ptr<AppPanelView> view;
};

} // namespace

TEST_F(AppPanelViewTest, thereAreTwoTabsAndSettingsComesFirst)
{
    show();
    ASSERT_EQ(tabs()->count(), 2);
    EXPECT_EQ(tabs()->tabText(0), QStringLiteral("Settings"));
    EXPECT_EQ(tabs()->tabText(1), QStringLiteral("Logs"));
    EXPECT_FALSE(tabs()->tabIcon(0).isNull());
    EXPECT_FALSE(tabs()->tabIcon(1).isNull());
    expectSettings();
    EXPECT_EQ(selection.tab(), 0);
}

TEST_F(AppPanelViewTest, itOpensOnTheTabThatIsSelected)
{
    selection.tab = 1;
    show();
    expectLogs();
    EXPECT_EQ(timesStoreWasNeeded, 1);
}

TEST_F(AppPanelViewTest, theSelectionSwitchesAPassLater)
{
    show();
    selection.tab = 1;
    expectSettings();
    onePass();
    expectLogs();
    selection.tab = 0;
    onePass();
    expectSettings();
    selection.tab = 1;
    selection.tab = 0;
    onePass();
    expectSettings();
}

TEST_F(AppPanelViewTest, aClickIsWrittenBack)
{
    show();
    clickTab(1);
    EXPECT_EQ(selection.tab(), 1);
    onePass();
    expectLogs();
    clickTab(0);
    EXPECT_EQ(selection.tab(), 0);
    onePass();
    expectSettings();
}

TEST_F(AppPanelViewTest, controlAndTabGoToTheOther)
{
    show();
    QTest::keyClick(view.get(), Qt::Key_Tab, Qt::ControlModifier);
    onePass();
    expectLogs();
    EXPECT_EQ(selection.tab(), 1);
    QTest::keyClick(view.get(), Qt::Key_Tab, Qt::ControlModifier);
    onePass();
    expectSettings();
    QTest::keyClick(view.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    onePass();
    expectLogs();
}

TEST_F(AppPanelViewTest, controlAndTabWorkWhereverTheFocusIs)
{
    show();
    settingsView()->findChild<Stepper*>()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    onePass();
    expectLogs();
}

TEST_F(AppPanelViewTest, theHistoryIsNeededOnceAndNotBeforeItIsShown)
{
    show();
    engine.cycle = 2;
    selection.tab = 0;
    onePass();
    EXPECT_EQ(timesStoreWasNeeded, 0);
    for (const int tab : {1, 0, 1, 1}) {
        selection.tab = tab;
        onePass();
    }
    view->hide();
    view->show();
    EXPECT_EQ(timesStoreWasNeeded, 1);
}

TEST_F(AppPanelViewTest, aTabThatIsNotThereChangesNothing)
{
    show();
    for (const int tab : {7, -1, 2}) {
        selection.tab = tab;
        onePass();
        expectSettings();
    }
    EXPECT_EQ(timesStoreWasNeeded, 0);
    clickTab(1);
    onePass();
    expectLogs();
    selection.tab = 7;
    onePass();
    expectLogs();
    EXPECT_GT(view->sizeHint().height(), 200);
}

TEST_F(AppPanelViewTest, aStartOnATabThatIsNotThereIsAStartOnSettings)
{
    selection.tab = 7;
    show();
    expectSettings();
}

TEST_F(AppPanelViewTest, itIsAsWideAsEverAndAsHighAsItsTab)
{
    show();
    const int settingsHeight = view->sizeHint().height();
    const auto heightNeeded = [](const QWidget* tab) {
        return tab->layout()->totalHeightForWidth(380);
    };
    EXPECT_EQ(view->width(), 380);
    EXPECT_GE(settingsHeight, heightNeeded(settingsView()));
    clickTab(1);
    onePass();
    const int logsHeight = view->sizeHint().height();
    EXPECT_EQ(view->width(), 380);
    EXPECT_EQ(logsHeight - settingsHeight, heightNeeded(logsView()) - heightNeeded(settingsView()));
    clickTab(0);
    onePass();
    EXPECT_EQ(view->sizeHint().height(), settingsHeight);
    EXPECT_EQ(view->minimumWidth(), 380);
    EXPECT_EQ(view->maximumWidth(), 380);
}

TEST_F(AppPanelViewTest, itGrowsWithTheHistory)
{
    selection.tab = 1;
    show();
    const int before = view->sizeHint().height();
    for (int i = 0; i < 50; ++i)
        store->log(Phase::sitting, 3600, 0);
    EXPECT_TRUE(waitUntil([&] { return view->sizeHint().height() == before + 300 - 220; }))
        << view->sizeHint().height() - before;
}

TEST_F(AppPanelViewTest, aTabThatIsNotSeenReadsNothing)
{
    show();
    selection.tab = 1;
    onePass();
    engine.sittingMinutes = 90;
    onePass();
    const auto* value = settingsView()->findChild<ValueLabel*>();
    EXPECT_EQ(value->text(), QStringLiteral("40 min"));
    selection.tab = 0;
    onePass();
    EXPECT_EQ(value->text(), QStringLiteral("90 min"));
}
