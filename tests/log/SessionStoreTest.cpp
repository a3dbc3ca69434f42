#include "log/SessionStore.h"

#include "Histories.h"
#include "LogFolder.h"
#include "QuickFileSystem.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

class SessionStoreTest : public testing::Test
{
protected:
    LogFolder folder;
    ManualClock clock;
    QuickFileSystem fileSystem;

    SessionStore open() { return SessionStore(clock, fileSystem, folder.file()); }
};

} // namespace

TEST_F(SessionStoreTest, AStoreWithoutAFileIsEmptyAndMakesNone)
{
    const SessionStore store = open();
    EXPECT_TRUE(store.entries().empty());
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST_F(SessionStoreTest, AStoreMakesItsFolderWithAllMissingOnesAboveIt)
{
    const QString path = folder.file(QStringLiteral("share/Vantora/sessions.json"));
    SessionStore store(clock, fileSystem, path);
    EXPECT_TRUE(QFileInfo(folder.file(QStringLiteral("share/Vantora"))).isDir());
    EXPECT_FALSE(QFileInfo::exists(path));
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(contentOf(path), textOf(store.entries()));
}

TEST_F(SessionStoreTest, AFolderThatCannotBeMadeIsNoError)
{
    putContent(folder.file(QStringLiteral("share")), "a file");
    const QString path = folder.file(QStringLiteral("share/Vantora/sessions.json"));
    SessionStore store(clock, fileSystem, path);
    store.log(Phase::sitting, 1500, 0);
    store.log(Phase::standing, 900, 0);
    EXPECT_EQ(store.entries().size(), 2U);
    EXPECT_EQ(contentOf(folder.file(QStringLiteral("share"))), "a file");

    ASSERT_TRUE(QFile::remove(folder.file(QStringLiteral("share"))));
    store.save();
    EXPECT_EQ(contentOf(path), textOf(store.entries()));
}

TEST_F(SessionStoreTest, TheFirstLoggedPhaseMakesTheFileWithOneEntry)
{
    SessionStore store = open();
    store.log(Phase::sitting, 1500, 0);
    const auto saved = readText(contentOf(folder.file()));
    ASSERT_TRUE(saved);
    ASSERT_EQ(saved->size(), 1U);
    EXPECT_EQ(saved->front().seconds, 1500);
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("sessions.json")});
}

TEST_F(SessionStoreTest, ALoggedPhaseIsKeptAsItIsGiven)
{
    const struct
    {
        Phase phase;
        double seconds;
        qint64 reps;
    } phases[] = {
        {Phase::sitting, 1500, 0}, {Phase::standing, 900.5, 0},
        {Phase::pushups, 0, 50},   {Phase::sitting, -0.25, -7},
        {Phase::sitting, 0, 0},    {Phase::pushups, 1e300, std::numeric_limits<qint64>::max()},
    };
    SessionStore store = open();
    for (const auto& [phase, seconds, reps] : phases) {
        store.log(phase, seconds, reps);
        const SessionEntry& entry = store.entries().back();
        EXPECT_EQ(entry.phaseRaw, rawValue(phase));
        EXPECT_EQ(entry.seconds, seconds);
        EXPECT_EQ(entry.reps, reps);
    }
    EXPECT_EQ(store.entries().size(), std::size(phases));
}

TEST_F(SessionStoreTest, AnEntryCarriesTheMomentItWasLogged)
{
    SessionStore store = open();
    clock.jump(0.125);
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(store.entries().back().date, clock.now());
    clock.jump(-3600);
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(store.entries().back().date, clock.now());
}

TEST_F(SessionStoreTest, AnEntryIsSavedWithItsWholeSecond)
{
    SessionStore store = open();
    ASSERT_EQ(clock.now(), Instant{763637213.75});
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(store.entries().back().date, Instant{763637213.75});
    EXPECT_NE(contentOf(folder.file()).find(R"("date":"2025-03-14T09:26:53Z")"), std::string::npos);
    EXPECT_EQ(open().entries().at(0).date, Instant{763637213});
}

TEST_F(SessionStoreTest, EveryEntryHasAFreshRandomId)
{
    SessionStore store = open();
    QSet<QUuid> ids;
    for (int i = 0; i < 100; ++i) {
        store.log(Phase::sitting, 1500, 0);
        const QUuid id = store.entries().back().id;
        EXPECT_EQ(id.version(), QUuid::Random);
        ids << id;
    }
    EXPECT_EQ(ids.size(), 100);
}

TEST_F(SessionStoreTest, EntriesAreInTheOrderInWhichTheyWereLoggedWhateverTheirDates)
{
    SessionStore store = open();
    for (int i = 0; i < 5; ++i) {
        store.log(Phase::sitting, i, 0);
        clock.jump(-60);
    }
    for (const auto& history :
         {store.entries(), readText(contentOf(folder.file())).value(), open().entries()}) {
        ASSERT_EQ(history.size(), 5U);
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_EQ(history[i].seconds, static_cast<double>(i));
    }
}

TEST_F(SessionStoreTest, TheNextStoreGoesOnWithTheHistoryOfTheLast)
{
    open().log(Phase::sitting, 1500, 0);
    open().log(Phase::standing, 900.5, 0);
    SessionStore store = open();
    ASSERT_EQ(store.entries().size(), 2U);
    store.log(Phase::pushups, 0, 50);
    const SessionStore last = open();
    ASSERT_EQ(last.entries().size(), 3U);
    EXPECT_EQ(last.totalSittingSeconds(), 1500);
    EXPECT_EQ(last.totalStandingSeconds(), 900.5);
    EXPECT_EQ(last.totalPushups(), 50);
}

TEST_F(SessionStoreTest, AHistoryOfYearsIsSavedAndReadWhole)
{
    const auto history = historyOf(50'000);
    SessionStore store = open();
    store.entries = history;
    store.save();
    EXPECT_TRUE(open().entries() == history);
}

TEST_F(SessionStoreTest, TheFileIsReadOnceAndEditsOfOthersAreOverwritten)
{
    SessionStore store = open();
    store.log(Phase::sitting, 1500, 0);
    putContent(folder.file(), textOf(historyOf(7)));
    EXPECT_EQ(store.entries().size(), 1U);
    store.log(Phase::standing, 900, 0);
    EXPECT_EQ(store.entries().size(), 2U);
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
}

TEST_F(SessionStoreTest, AssigningSavesNothingByItself)
{
    SessionStore store = open();
    store.log(Phase::sitting, 1500, 0);
    const std::string before = contentOf(folder.file());
    store.entries = {};
    EXPECT_TRUE(store.entries().empty());
    EXPECT_EQ(contentOf(folder.file()), before);
}

TEST_F(SessionStoreTest, ClearingAndSavingLeavesAnEmptyArray)
{
    SessionStore store = open();
    store.log(Phase::sitting, 1500, 0);
    store.entries = {};
    store.save();
    EXPECT_EQ(contentOf(folder.file()), "[]");
    EXPECT_TRUE(open().entries().empty());
}

TEST_F(SessionStoreTest, SavingAnEmptyHistoryMakesTheFile)
{
    open().save();
    EXPECT_EQ(contentOf(folder.file()), "[]");
}

TEST_F(SessionStoreTest, NothingIsSavedWhenAStoreEnds)
{
    {
        SessionStore store = open();
        store.entries = historyOf(3);
    }
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST_F(SessionStoreTest, ObserversAreToldOncePerChangeBeforeItTakesEffect)
{
    SessionStore store = open();
    QObject observer;
    std::vector<std::size_t> seen;
    QObject::connect(&store, &SessionStore::willChange, &observer,
                     [&] { seen.push_back(store.entries().size()); });

    store.log(Phase::sitting, 1500, 0);
    store.log(Phase::standing, 900, 0);
    EXPECT_EQ(seen, (std::vector<std::size_t>{0, 1}));
    store.entries = historyOf(5);
    EXPECT_EQ(seen, (std::vector<std::size_t>{0, 1, 2}));
    store.entries = historyOf(5);
    EXPECT_EQ(seen, (std::vector<std::size_t>{0, 1, 2, 5}));
    store.entries = {};
    store.entries = {};
    EXPECT_EQ(seen, (std::vector<std::size_t>{0, 1, 2, 5, 5, 0}));
    store.save();
    EXPECT_EQ(seen.size(), 6U);
}

TEST_F(SessionStoreTest, TheFileIsWrittenAfterTheObserversAreTold)
{
    SessionStore store = open();
    QObject observer;
    int told = 0;
    QObject::connect(&store, &SessionStore::willChange, &observer, [&] {
        ++told;
        EXPECT_TRUE(folder.names().isEmpty());
    });
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(folder.names().isEmpty());
}

TEST_F(SessionStoreTest, AnEntryWithoutATextKeepsTheOldFileUntilItIsGone)
{
    SessionStore store = open();
    store.log(Phase::sitting, 1500, 0);
    const std::string before = contentOf(folder.file());
    for (const double seconds :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        store.log(Phase::sitting, seconds, 0);
        store.log(Phase::standing, 900, 0);
        EXPECT_EQ(contentOf(folder.file()), before);
    }
    EXPECT_EQ(store.entries().size(), 5U);

    store.entries.mutate([](auto& history) {
        std::erase_if(history,
                      [](const SessionEntry& entry) { return !std::isfinite(entry.seconds); });
    });
    store.save();
    EXPECT_EQ(store.entries().size(), 3U);
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
}

TEST_F(SessionStoreTest, AFileWithAnUnknownPhaseIsReadAndKeptAsItIs)
{
    std::vector<SessionEntry> history = historyOf(1);
    history.front().phaseRaw = 7;
    putContent(folder.file(), textOf(history));
    SessionStore store = open();
    EXPECT_EQ(store.totalSittingSeconds(), history.front().seconds);
    store.log(Phase::standing, 1, 0);
    EXPECT_EQ(open().entries().at(0).phaseRaw, 7);
}
