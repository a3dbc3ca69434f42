#include "panel/LogsView.h"

#include "LogTest.h"
#include "panel/ClearButton.h"
#include "panel/LogList.h"
#include "panel/StatTile.h"
#include "panel/TextLabel.h"

#include <QScrollBar>

#include <memory>

namespace {

class LogsViewTest : public LogTest
{
protected:
    using Texts = std::vector<std::string>;

    void show()
    {
        view = std::make_unique<LogsView>(store);
        view->setFixedWidth(380);
        showActive(*view);
    }

    Texts tiles() const
    {
        Texts texts;
        for (const auto* tile : view->findChildren<StatTile*>())
            texts.push_back(tile->value().toStdString());
        return texts;
    }

    /// The texts outside the tiles, from top to bottom.
    Texts words() const
    {
        Texts texts;
        for (const auto* label : shownChildren<TextLabel>(*view))
            texts.push_back(label->text().toStdString());
        return texts;
    }

    LogList* list() const { return view->findChild<LogList*>(); }
    int rows() const { return list()->model()->rowCount(); }
    ClearButton* clear() const { return view->findChild<ClearButton*>(); }

    std::unique_ptr<LogsView> view;
};

} // namespace

TEST_F(LogsViewTest, anEmptyHistorySaysSo)
{
    show();
    EXPECT_EQ(tiles(), (Texts{"0m", "0m", "0m", "0"}));
    EXPECT_EQ(words(), (Texts{"No sessions yet", "Finished phases will show up here automatically.",
                              "0 recorded sessions"}));
    EXPECT_FALSE(list()->isVisible());
    EXPECT_EQ(clear()->text(), QStringLiteral("Clear History"));
}

TEST_F(LogsViewTest, theTilesAreSideBySideInTheirOrder)
{
    show();
    Texts names;
    int right = 0;
    for (const auto* tile : view->findChildren<StatTile*>()) {
        names.push_back(tile->accessibleName().toStdString());
        EXPECT_GT(tile->x(), right);
        right = tile->geometry().right();
    }
    EXPECT_EQ(names, (Texts{"Total desk time 0m", "Seated 0m", "Standing 0m", "Push-ups 0"}));
}

TEST_F(LogsViewTest, theTotalsAreThoseOfTheHistory)
{
    store.entries = {entryOf(0, 90 * 60, 0),     entryOf(1, 40 * 60, 0), entryOf(2, 0, 50),
                     entryOf(7, 24 * 3600.0, 0), entryOf(2, 0, 1950),    entryOf(1, 59, 0)};
    show();
    EXPECT_EQ(tiles(), (Texts{"26h 10m", "25h 30m", "40m", "2000"}));
    EXPECT_EQ(words(), (Texts{"6 recorded sessions"}));
    EXPECT_TRUE(list()->isVisible());
    EXPECT_EQ(rows(), 6);
}

TEST_F(LogsViewTest, theDeskTimeIsCutOffOnce)
{
    store.entries = {entryOf(0, 59, 0), entryOf(1, 59, 0)};
    show();
    EXPECT_EQ(tiles(), (Texts{"1m", "0m", "0m", "0"}));
}

TEST_F(LogsViewTest, theCountIsPlain)
{
    for (const int count : {1, 12, 1234}) {
        store.entries = historyOf(count);
        show();
        EXPECT_EQ(words(), (Texts{std::to_string(count) + " recorded sessions"}));
    }
}

TEST_F(LogsViewTest, aFinishedPhaseShowsAPassLater)
{
    show();
    store.log(Phase::sitting, 40 * 60, 0);
    EXPECT_EQ(tiles(), (Texts{"0m", "0m", "0m", "0"}));
    onePass();
    EXPECT_EQ(tiles(), (Texts{"40m", "40m", "0m", "0"}));
    EXPECT_EQ(words(), (Texts{"1 recorded sessions"}));
    EXPECT_TRUE(list()->isVisible());
    store.log(Phase::pushups, 0, 50);
    onePass();
    EXPECT_EQ(tiles(), (Texts{"40m", "40m", "0m", "50"}));
    EXPECT_TRUE(list()->model()->index(0, 0).data().toString().endsWith(QStringLiteral("50 reps")));
}

TEST_F(LogsViewTest, clearingEmptiesTheHistoryAndItsFileAtOnce)
{
    store.log(Phase::sitting, 40 * 60, 0);
    const std::string before = fileContent();
    show();
    QTest::mouseClick(clear(), Qt::LeftButton);
    EXPECT_TRUE(store.entries().empty());
    EXPECT_NE(fileContent(), before);
    EXPECT_FALSE(fileContent().empty());
    EXPECT_TRUE(SessionStore(clock, fileSystem, path()).entries().empty());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    onePass();
    EXPECT_EQ(tiles(), (Texts{"0m", "0m", "0m", "0"}));
    EXPECT_FALSE(list()->isVisible());
    EXPECT_EQ(words().front(), "No sessions yet");
    EXPECT_EQ(words().back(), "0 recorded sessions");

    store.log(Phase::standing, 900, 0);
    onePass();
    EXPECT_TRUE(list()->isVisible());
    EXPECT_EQ(rows(), 1);
}

TEST_F(LogsViewTest, clearingWorksByKeyboardToo)
{
    store.log(Phase::sitting, 40 * 60, 0);
    show();
    clear()->setFocus();
    QTest::keyClick(clear(), Qt::Key_Space);
    EXPECT_TRUE(store.entries().empty());
}

TEST_F(LogsViewTest, theTabKeyGoesFromTheListToTheButton)
{
    store.entries = historyOf(50);
    show();
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Down);
    QTest::keyClick(list(), Qt::Key_Tab);
    EXPECT_TRUE(clear()->hasFocus());
    QTest::keyClick(clear(), Qt::Key_Backtab);
    EXPECT_TRUE(list()->hasFocus());
}

TEST_F(LogsViewTest, enterInTheListClearsNothing)
{
    store.log(Phase::sitting, 40 * 60, 0);
    show();
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Return);
    EXPECT_EQ(store.entries().size(), 1U);
}

TEST_F(LogsViewTest, aHiddenViewReadsNothingUntilItIsShownAgain)
{
    store.log(Phase::sitting, 40 * 60, 0);
    show();
    view->hide();
    store.log(Phase::standing, 900, 0);
    onePass();
    EXPECT_EQ(tiles(), (Texts{"40m", "40m", "0m", "0"}));
    EXPECT_EQ(rows(), 1);
    view->show();
    EXPECT_EQ(tiles(), (Texts{"55m", "40m", "15m", "0"}));
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(words(), (Texts{"2 recorded sessions"}));
}

TEST_F(LogsViewTest, whatIsReadStaysWhereItIsWhileTheViewIsHidden)
{
    store.entries = historyOf(200);
    show();
    list()->verticalScrollBar()->setValue(list()->verticalScrollBar()->maximum() / 2);
    const QPersistentModelIndex seen = list()->indexAt({100, 100});
    const QRect before = list()->visualRect(seen);
    view->hide();
    store.log(Phase::standing, 900, 0);
    onePass();
    view->show();
    onePass();
    EXPECT_EQ(list()->visualRect(seen), before);
}

TEST_F(LogsViewTest, theEmptyStateIsAsHighAsTheSmallestList)
{
    show();
    const int empty = view->sizeHint().height();
    store.log(Phase::sitting, 40 * 60, 0);
    onePass();
    EXPECT_EQ(view->sizeHint().height(), empty);
}
