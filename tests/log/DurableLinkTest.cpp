#include "Histories.h"
#include "LogFolder.h"
#include "QuickFileSystem.h"
#include "log/SessionStore.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

/// A log at share/Vantora/sessions.json, reached over symbolic links.
class DurableLink : public testing::Test
{
protected:
    LogFolder folder;
    ManualClock clock;
    QuickFileSystem fileSystem;
    const fs::path root = folder.path().toStdString();
    const fs::path log = root / "share/Vantora/sessions.json";
    const fs::path real = root / "sync/real.json";

    void SetUp() override
    {
        fs::create_directories(log.parent_path());
        fs::create_directories(real.parent_path());
    }

    static QString named(const fs::path& path) { return QString::fromStdString(path.string()); }

    /// Three entries more than the log has, saved through the link.
    std::vector<SessionEntry> logMore()
    {
        SessionStore store(clock, fileSystem, named(log));
        for (const Phase phase : allPhases)
            store.log(phase, 60, 5);
        return store.entries();
    }

    /// The log is written where its link leads to, the link stays, and no file is left beside.
    void expectSavedThroughTheLink()
    {
        const fs::path target = fs::read_symlink(log);
        for (const std::size_t count : {3U, 6U}) {
            const auto history = logMore();
            EXPECT_EQ(history.size(), count);
            EXPECT_TRUE(fs::is_symlink(log));
            EXPECT_EQ(fs::read_symlink(log), target);
            EXPECT_FALSE(fs::is_symlink(real));
            ASSERT_TRUE(fs::is_regular_file(real));
            EXPECT_EQ(contentOf(named(real)), textOf(history));
            EXPECT_EQ(std::distance(fs::directory_iterator(log.parent_path()), {}), 1);
            EXPECT_EQ(std::distance(fs::directory_iterator(real.parent_path()), {}), 1);
        }
    }
};

} // namespace

TEST_F(DurableLink, AnAbsoluteLinkIsFollowed)
{
    putContent(named(real), "[]");
    fs::create_symlink(real, log);
    expectSavedThroughTheLink();
}

TEST_F(DurableLink, ARelativeLinkIsFollowed)
{
    putContent(named(real), "[]");
    fs::create_symlink("../../sync/real.json", log);
    expectSavedThroughTheLink();
}

TEST_F(DurableLink, ALinkThatLeadsNowhereIsWrittenWhereItLeads)
{
    fs::create_symlink("../../sync/real.json", log);
    expectSavedThroughTheLink();
}

TEST_F(DurableLink, ALinkIntoAMissingFolderHasItMade)
{
    fs::remove(real.parent_path());
    fs::create_symlink(real, log);
    expectSavedThroughTheLink();
}

TEST_F(DurableLink, AChainOfLinksIsFollowedToItsEnd)
{
    putContent(named(real), "[]");
    fs::create_directories(root / "links");
    fs::path next = real;
    for (int i = 0; i < 20; ++i) {
        const fs::path link = root / "links" / std::to_string(i);
        fs::create_symlink(i % 2 == 0 ? next : next.filename(), link);
        next = link;
    }
    fs::create_symlink(next, log);
    expectSavedThroughTheLink();
    EXPECT_EQ(std::distance(fs::directory_iterator(root / "links"), {}), 20);
}

TEST_F(DurableLink, AFolderThatIsALinkStaysOne)
{
    fs::create_directories(root / "elsewhere");
    fs::remove(log.parent_path());
    fs::create_directory_symlink("../elsewhere", log.parent_path());
    const auto history = logMore();
    EXPECT_TRUE(fs::is_symlink(log.parent_path()));
    EXPECT_EQ(contentOf(named(root / "elsewhere/sessions.json")), textOf(history));
}

TEST_F(DurableLink, ARelativeLinkStartsFromTheRealFolderWhenThatIsReachedOverALink)
{
    fs::create_directories(root / "deep/er/Vantora");
    fs::create_directories(root / "deep/sync");
    fs::remove(log.parent_path());
    fs::create_directory_symlink("../deep/er/Vantora", log.parent_path());
    fs::create_symlink("../../sync/real.json", log);
    putContent(named(root / "deep/sync/real.json"), "[]");
    const auto history = logMore();
    EXPECT_EQ(contentOf(named(root / "deep/sync/real.json")), textOf(history));
    EXPECT_FALSE(fs::exists(root / "sync/real.json"));
    EXPECT_EQ(SessionStore(clock, fileSystem, named(log)).entries().size(), 3U);
}

TEST_F(DurableLink, ALinkWhoseTargetIsNoUtf8IsFollowed)
{
    const fs::path target = real.parent_path() / "gr\xFC\xDF.json";
    fs::create_symlink(target, log);
    const auto history = logMore();
    EXPECT_TRUE(fs::exists(target));
    EXPECT_EQ(SessionStore(clock, fileSystem, named(log)).entries().size(), 3U);
}

TEST_F(DurableLink, ALoopOfLinksIsAnEmptyHistoryAndLosesNothing)
{
    fs::create_symlink("sessions.json", log);
    const auto own = logMore();
    EXPECT_EQ(own.size(), 3U);

    fs::remove(log);
    fs::create_symlink("b", log);
    fs::create_symlink("sessions.json", log.parent_path() / "b");
    SessionStore store(clock, fileSystem, named(log));
    EXPECT_TRUE(store.entries().empty());
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(store.entries().size(), 1U);
}

TEST_F(DurableLink, ALinkToAFolderLeavesTheFolder)
{
    fs::create_directory_symlink(real.parent_path(), log);
    const auto history = logMore();
    EXPECT_EQ(history.size(), 3U);
    EXPECT_TRUE(fs::is_symlink(log));
    EXPECT_TRUE(fs::is_directory(real.parent_path()));
    EXPECT_TRUE(fs::is_empty(real.parent_path()));
    EXPECT_EQ(std::distance(fs::directory_iterator(root), {}), 2);
}

TEST_F(DurableLink, ALinkToAnotherFileSystemIsFollowed)
{
    // It is another one when the temporary folder is on a disk.
    QTemporaryDir memory(QStringLiteral("/dev/shm/vantora-XXXXXX"));
    if (!memory.isValid())
        GTEST_SKIP() << "no memory file system";
    fs::create_symlink(memory.filePath(QStringLiteral("real.json")).toStdString(), log);
    const auto history = logMore();
    EXPECT_TRUE(fs::is_symlink(log));
    EXPECT_EQ(contentOf(memory.filePath(QStringLiteral("real.json"))), textOf(history));
}
