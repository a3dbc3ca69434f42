// The list on the screen: its height, and what stays where when entries come in.

#include "panel/LogList.h"

#include "LogTest.h"
#include "panel/LogListModel.h"
#include "panel/LogRowDelegate.h"

#include <QAccessible>
#include <QScrollBar>

#include <memory>

namespace {

/// Counts what is asked of it.
class CountingDelegate : public LogRowDelegate
{
public:
    using LogRowDelegate::LogRowDelegate;

    mutable int painted = 0;
    mutable int measured = 0;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        ++painted;
        LogRowDelegate::paint(painter, option, index);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        ++measured;
        return LogRowDelegate::sizeHint(option, index);
    }
};

class LogListTest : public LogTest
{
protected:
    void show(int entries)
    {
        store.entries = historyOf(entries);
        model = std::make_unique<LogListModel>(store, QLocale::c());
        list = std::make_unique<LogList>();
        list->setModel(model.get());
        list->resize(380, list->sizeHint().height());
        showActive(*list);
    }

    void log(int count = 1)
    {
        for (int i = 0; i < count; ++i)
            store.log(Phase::sitting, 3600, 0);
        model->reread();
        onePass();
    }

    int rowHeight() const { return list->visualRect(model->index(0)).height(); }

    /// The row at a point of the list.
    QPersistentModelIndex rowAt(int y) const { return list->indexAt({100, y}); }

    std::unique_ptr<LogListModel> model;
    std::unique_ptr<LogList> list;
};

} // namespace

TEST_F(LogListTest, itIsAsHighAsItsRowsWithinBounds)
{
    show(1);
    const int row = rowHeight();
    ASSERT_GT(row, 20);
    for (const int entries : {0, 1, 3, 220 / row, 220 / row + 1, 300 / row, 300 / row + 1, 5000}) {
        show(entries);
        const int height = std::clamp(entries * row, 220, 300);
        EXPECT_EQ(list->sizeHint().height(), height) << entries;
        EXPECT_EQ(list->minimumSizeHint().height(), height) << entries;
    }
}

TEST_F(LogListTest, itsHeightFollowsTheHistory)
{
    show(1);
    const int row = rowHeight();
    log(300 / row - 1);
    EXPECT_EQ(list->sizeHint().height(), 300 / row * row);
    log(100);
    EXPECT_EQ(list->sizeHint().height(), 300);
    store.entries = std::vector<SessionEntry>();
    model->reread();
    EXPECT_EQ(list->sizeHint().height(), 220);
}

TEST_F(LogListTest, thereIsAlwaysExactlyAsMuchToScrollAsThereAreRows)
{
    show(200);
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 200 * rowHeight() - list->viewport()->height());
    log(7);
    EXPECT_EQ(list->verticalScrollBar()->maximum(), 207 * rowHeight() - list->viewport()->height());
    EXPECT_EQ(list->verticalScrollBar()->minimum(), 0);
}

TEST_F(LogListTest, whatIsReadStaysWhereItIs)
{
    show(200);
    for (const int place : {1, 100 * rowHeight() + 7, list->verticalScrollBar()->maximum()}) {
        list->verticalScrollBar()->setValue(place);
        const QPersistentModelIndex seen = rowAt(100);
        ASSERT_TRUE(seen.isValid());
        const QRect before = list->visualRect(seen);
        log();
        EXPECT_EQ(list->visualRect(seen), before) << place;
        log(3);
        EXPECT_EQ(list->visualRect(seen), before) << place;
    }
}

TEST_F(LogListTest, thePictureStaysToo)
{
    show(200);
    list->verticalScrollBar()->setValue(100 * rowHeight() + 7);
    onePass();
    const QImage before = list->viewport()->grab().toImage();
    log();
    EXPECT_EQ(list->viewport()->grab().toImage(), before);
}

TEST_F(LogListTest, atTheTopTheNewestIsSeen)
{
    show(200);
    log();
    EXPECT_EQ(list->verticalScrollBar()->value(), 0);
    EXPECT_EQ(rowAt(1).row(), 0);
    EXPECT_EQ(model->row(0).amount, QStringLiteral("1h 0m"));
}

TEST_F(LogListTest, theSelectionStaysWithItsEntry)
{
    show(200);
    list->verticalScrollBar()->setValue(100 * rowHeight());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {100, 50});
    ASSERT_EQ(list->selectionModel()->selectedRows().size(), 1);
    const QString selected = list->selectionModel()->selectedRows()[0].data().toString();
    log();
    ASSERT_EQ(list->selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(list->selectionModel()->selectedRows()[0].data().toString(), selected);
}

TEST_F(LogListTest, aSelectedRowLooksSelected)
{
    show(20);
    const QImage before = list->viewport()->grab().toImage();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {100, 5});
    const QImage after = list->viewport()->grab().toImage();
    const QColor highlight = list->palette().color(QPalette::Highlight);
    EXPECT_NE(before.pixelColor(2, 5), highlight);
    EXPECT_EQ(after.pixelColor(2, 5), highlight);
    EXPECT_EQ(after.pixelColor(2, rowHeight() + 5), before.pixelColor(2, rowHeight() + 5));
}

TEST_F(LogListTest, anEntryMoreCostsNoMoreThanTheRowsThatAreSeen)
{
    show(10'000);
    CountingDelegate delegate;
    auto* own = list->itemDelegate();
    list->setItemDelegate(&delegate);
    list->grab();
    const int rowsSeen = 300 / rowHeight() + 2;
    for (const int place : {0, 5000 * rowHeight()}) {
        list->verticalScrollBar()->setValue(place);
        list->grab();
        delegate.painted = 0;
        delegate.measured = 0;
        log();
        list->grab();
        EXPECT_GT(delegate.painted, 0);
        EXPECT_LE(delegate.painted, 2 * rowsSeen) << place;
        EXPECT_LE(delegate.measured, 2 * rowsSeen) << place;
    }
    list->setItemDelegate(own);
}

TEST_F(LogListTest, itsRowsAreReadOutInWords)
{
    show(3);
    QAccessibleInterface* found = QAccessible::queryAccessibleInterface(list.get());
    EXPECT_EQ(found->text(QAccessible::Name), QStringLiteral("Logs"));
    QAccessibleTableInterface* table = found->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->columnCount(), 1);
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(table->cellAt(row, 0)->text(QAccessible::Name),
                  model->index(row).data(Qt::AccessibleTextRole).toString());
    }
}

TEST_F(LogListTest, rowsFollowTheFont)
{
    const QFont usual = QApplication::font();
    show(20);
    const int before = rowHeight();
    QFont large = usual;
    large.setPointSize(20);
    QApplication::setFont(large);
    onePass();
    const int after = rowHeight();
    QApplication::setFont(usual);
    onePass();
    EXPECT_GT(after, before);
    EXPECT_EQ(rowHeight(), before);
}
