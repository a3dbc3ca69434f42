#include "panel/LogListModel.h"

#include "LogTest.h"

#include <QSignalSpy>

#include <limits>

namespace {

class LogListModelTest : public LogTest
{
protected:
    /// The amounts of the rows, from the first.
    static std::vector<std::string> amountsOf(const LogListModel& model)
    {
        std::vector<std::string> amounts;
        for (int i = 0; i < model.rowCount(); ++i)
            amounts.push_back(model.row(i).amount.toStdString());
        return amounts;
    }
    using Texts = std::vector<std::string>;
};

} // namespace

TEST_F(LogListModelTest, anEmptyHistoryHasNoRows)
{
    const LogListModel model(store, QLocale::c());
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.index(0).isValid());
    EXPECT_EQ(model.row(0).amount, QString());
}

TEST_F(LogListModelTest, theNewestComesFirst)
{
    store.log(Phase::sitting, 40 * 60, 0);
    store.log(Phase::standing, 15 * 60, 0);
    store.log(Phase::pushups, 0, 50);
    const LogListModel model(store, QLocale::c());
    EXPECT_EQ(amountsOf(model), (Texts{"50 reps", "15m", "40m"}));
    EXPECT_EQ(model.row(0).phase, Phase::pushups);
    EXPECT_EQ(model.row(1).phase, Phase::standing);
    EXPECT_EQ(model.row(2).phase, Phase::sitting);
}

TEST_F(LogListModelTest, theEntriesStayInTheOrderOfTheHistory)
{
    store.entries = {{QUuid::createUuid(), Instant{300}, 0, 60, 0},
                     {QUuid::createUuid(), Instant{100}, 0, 120, 0},
                     {QUuid::createUuid(), Instant{200}, 0, 180, 0}};
    EXPECT_EQ(amountsOf(LogListModel(store, QLocale::c())), (Texts{"3m", "2m", "1m"}));
}

TEST_F(LogListModelTest, amountsAreTimesOrPushups)
{
    const struct
    {
        SessionEntry entry;
        Phase phase;
        const char* amount;
    } rows[] = {
        {entryOf(0, 59, 0), Phase::sitting, "0m"},
        {entryOf(1, 59 * 60 + 59, 0), Phase::standing, "59m"},
        {entryOf(1, 25 * 3600, 0), Phase::standing, "25h 0m"},
        {entryOf(0, 12345.0 * 3600, 0), Phase::sitting, "12345h 0m"},
        {entryOf(7, 25 * 60, 9), Phase::sitting, "25m"},
        {entryOf(-1, 61 * 60, 9), Phase::sitting, "1h 1m"},
        {entryOf(2, 600, 0), Phase::pushups, "0 reps"},
        {entryOf(2, 0, 1), Phase::pushups, "1 reps"},
        {entryOf(2, 0, 1234567), Phase::pushups, "1234567 reps"},
        {entryOf(2, 0, std::numeric_limits<qint64>::max()), Phase::pushups,
         "9223372036854775807 reps"},
    };
    for (const auto& row : rows) {
        store.entries = {row.entry};
        const LogListModel model(store, QLocale::c());
        EXPECT_EQ(model.row(0).amount.toStdString(), row.amount);
        EXPECT_EQ(model.row(0).phase, row.phase) << row.amount;
    }
}

TEST_F(LogListModelTest, aRowIsReadOutInWords)
{
    store.entries = {entryOf(7, 25 * 60, 0), entryOf(2, 0, 50)};
    const LogListModel model(store, QLocale::c());
    const QString date = DateText(QLocale::c()).of(store.entries()[0].date);
    for (const int role : {int{Qt::DisplayRole}, int{Qt::AccessibleTextRole}}) {
        EXPECT_EQ(model.data(model.index(0), role).toString(), factsOf(Phase::pushups).title +
                                                                   QStringLiteral(", ") + date +
                                                                   QStringLiteral(", 50 reps"));
        EXPECT_EQ(model.data(model.index(1), role).toString(),
                  QStringLiteral("Deep Work, ") + date + QStringLiteral(", 25m"));
    }
    EXPECT_FALSE(model.data(model.index(0), Qt::EditRole).isValid());
}

TEST_F(LogListModelTest, addedEntriesAreRowsAtTheTop)
{
    store.entries = historyOf(3);
    LogListModel model(store, QLocale::c());
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    store.log(Phase::sitting, 59 * 60, 0);
    EXPECT_EQ(model.rowCount(), 3) << "not before the history is read again";
    EXPECT_EQ(amountsOf(model), (Texts{"2m", "1m", "0m"}));
    model.reread();
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 0);
    EXPECT_EQ(inserted[0][2].toInt(), 0);
    EXPECT_EQ(amountsOf(model), (Texts{"59m", "2m", "1m", "0m"}));

    store.log(Phase::sitting, 58 * 60, 0);
    store.log(Phase::sitting, 57 * 60, 0);
    model.reread();
    ASSERT_EQ(inserted.size(), 2);
    EXPECT_EQ(inserted[1][1].toInt(), 0);
    EXPECT_EQ(inserted[1][2].toInt(), 1);
    EXPECT_EQ(amountsOf(model), (Texts{"57m", "58m", "59m", "2m", "1m", "0m"}));
    EXPECT_EQ(reset.size(), 0);
}

TEST_F(LogListModelTest, readingAgainWithoutAChangeTellsNothing)
{
    store.entries = historyOf(3);
    LogListModel model(store, QLocale::c());
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.reread();
    EXPECT_EQ(inserted.size() + reset.size(), 0);
}

TEST_F(LogListModelTest, anotherHistoryIsAReset)
{
    const std::vector<SessionEntry> before = historyOf(3);
    const auto resetsFor = [&](const std::vector<SessionEntry>& after) {
        store.entries = before;
        LogListModel model(store, QLocale::c());
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        store.entries = after;
        model.reread();
        EXPECT_EQ(inserted.size(), 0);
        EXPECT_EQ(model.rowCount(), static_cast<int>(after.size()));
        return reset.size();
    };
    EXPECT_EQ(resetsFor({}), 1);
    EXPECT_EQ(resetsFor(historyOf(3)), 1) << "as many others";
    EXPECT_EQ(resetsFor(historyOf(5)), 1) << "more, but others";
    EXPECT_EQ(resetsFor({before[0], before[1]}), 1) << "without the newest";
    EXPECT_EQ(resetsFor({before[1], before[2]}), 1) << "without the oldest";
    EXPECT_EQ(resetsFor({before[1], before[0], before[2]}), 1) << "in another order";
    EXPECT_EQ(resetsFor({before[0], before[2], before[1]}), 1) << "in another order";
    EXPECT_EQ(resetsFor({before[0], before[1], entryOf(0, 60, 0), before[2]}), 1)
        << "with one in between";
    EXPECT_EQ(resetsFor({entryOf(0, 60, 0), before[0], before[1], before[2]}), 1)
        << "with one before";
}

TEST_F(LogListModelTest, clearedAndBegunAnewIsAReset)
{
    store.entries = historyOf(1);
    LogListModel model(store, QLocale::c());
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    store.entries = std::vector<SessionEntry>();
    store.log(Phase::standing, 900, 0);
    model.reread();
    EXPECT_EQ(reset.size(), 1);
    EXPECT_EQ(amountsOf(model), (Texts{"15m"}));
}

TEST_F(LogListModelTest, rowsOfAHistoryThatHasBecomeShorterAreEmpty)
{
    store.entries = historyOf(3);
    LogListModel model(store, QLocale::c());
    store.entries = std::vector<SessionEntry>();
    for (int i = 0; i < model.rowCount(); ++i)
        EXPECT_EQ(model.row(i).amount, QString());
}

TEST_F(LogListModelTest, rowsHaveNoRowsOfTheirOwn)
{
    store.entries = historyOf(3);
    const LogListModel model(store, QLocale::c());
    EXPECT_EQ(model.rowCount(model.index(0)), 0);
}
