#include "FaultyFileSystem.h"
#include "Histories.h"
#include "LogFolder.h"
#include "log/DurableFile.h"
#include "log/SessionStore.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace {

const QStringList theFileAlone{QStringLiteral("sessions.json")};

class SharedLog : public testing::Test
{
protected:
    LogFolder folder;
    ManualClock clock;
    QuickFileSystem plain;

    /// Where a save has its draft.
    QByteArray draft()
    {
        FaultyFileSystem fileSystem;
        const LogFolder other;
        replaceFile(fileSystem, other.file(), "[]");
        return QFile::encodeName(
            folder.file(QFileInfo(QFile::decodeName(fileSystem.written.at(0))).fileName()));
    }
};

} // namespace

TEST_F(SharedLog, ADraftLeftByAKilledProcessIsUsedAgain)
{
    putContent(QFile::decodeName(draft()), std::string(100'000, 'x'));
    ASSERT_EQ(folder.names().size(), 1);
    SessionStore store(clock, plain, folder.file());
    EXPECT_TRUE(store.entries().empty());
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
    EXPECT_EQ(folder.names(), theFileAlone);
}

TEST_F(SharedLog, ADraftThatAnotherProcessWritesIsLeftToIt)
{
    putContent(folder.file(), textOf(historyOf(3)));
    SessionStore store(clock, plain, folder.file());
    putContent(QFile::decodeName(draft()), "half of anoth");
    const int other = ::open(draft().constData(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);

    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(contentOf(folder.file()), textOf(historyOf(3)));
    EXPECT_EQ(contentOf(QFile::decodeName(draft())), "half of anoth");
    EXPECT_EQ(store.entries().size(), 4U);

    ::close(other);
    store.save();
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
    EXPECT_EQ(folder.names(), theFileAlone);
}

TEST_F(SharedLog, ALinkInPlaceOfTheDraftIsNotWrittenThrough)
{
    const QString precious = folder.file(QStringLiteral("precious"));
    putContent(precious, "precious");
    std::filesystem::create_symlink("precious", draft().toStdString());
    SessionStore store(clock, plain, folder.file());
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(contentOf(precious), "precious");

    ASSERT_TRUE(QFile::remove(precious));
    store.save();
    EXPECT_FALSE(QFile::exists(precious));
}

TEST_F(SharedLog, ADraftThatHasBecomeTheFileMeanwhileIsNotWritten)
{
    const std::string otherText = textOf(historyOf(30, 2));
    FaultyFileSystem fileSystem;
    bool isFirst = true;
    fileSystem.look = [&] {
        if (!isFirst || fileSystem.calls.empty() || fileSystem.calls.back() != "open")
            return;
        isFirst = false;
        ASSERT_TRUE(replaceFile(plain, folder.file(), QByteArray::fromStdString(otherText)));
        putContent(QFile::decodeName(draft()), "half of a third");
    };
    EXPECT_FALSE(replaceFile(fileSystem, folder.file(), "new"));
    EXPECT_FALSE(isFirst);
    EXPECT_EQ(contentOf(folder.file()), otherText);
}

TEST_F(SharedLog, TheLastOfTwoStoresToSaveWins)
{
    SessionStore one(clock, plain, folder.file());
    SessionStore two(clock, plain, folder.file());
    for (int i = 0; i < 5; ++i) {
        one.log(Phase::sitting, 1500, 0);
        EXPECT_EQ(contentOf(folder.file()), textOf(one.entries()));
        two.log(Phase::standing, 900, 0);
        EXPECT_EQ(contentOf(folder.file()), textOf(two.entries()));
    }
    EXPECT_EQ(folder.names(), theFileAlone);
}

TEST_F(SharedLog, ASaveWithinTheSaveOfAnotherStoreLeavesAWholeFile)
{
    const std::string oldText = textOf(historyOf(3));
    const std::string oneText = textOf(historyOf(40, 1));
    const std::string twoText = textOf(historyOf(30, 2));
    const auto isWhole = [&] {
        const std::string content = contentOf(folder.file());
        return content == oldText || content == oneText || content == twoText;
    };

    std::size_t looks = 1;
    for (std::size_t number = 0; number < looks; ++number) {
        SCOPED_TRACE(number);
        putContent(folder.file(), oldText);
        FaultyFileSystem fileSystem;
        std::size_t look = 0;
        fileSystem.look = [&] {
            if (look++ == number)
                replaceFile(plain, folder.file(), QByteArray::fromStdString(twoText));
            EXPECT_TRUE(isWhole());
        };
        replaceFile(fileSystem, folder.file(), QByteArray::fromStdString(oneText));
        looks = std::max(looks, look);
        EXPECT_TRUE(isWhole());
        fileSystem.look = [] {};
        EXPECT_TRUE(replaceFile(fileSystem, folder.file(), QByteArray::fromStdString(oneText)));
        EXPECT_EQ(contentOf(folder.file()), oneText);
        EXPECT_EQ(folder.names(), theFileAlone);
    }
    EXPECT_GT(looks, 10U);
}
