#include "FaultyFileSystem.h"
#include "Histories.h"
#include "InOnePiece.h"
#include "LogFolder.h"
#include "Unprivileged.h"
#include "log/SessionStore.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QStringList theFileAlone{QStringLiteral("sessions.json")};

/// A save during whose last step another process starts to write: it takes the draft and gets half
/// way before this one goes on.
class OtherWriterBeforeRename : public QuickFileSystem
{
public:
    int rename(const QByteArray& from, const QByteArray& to) override
    {
        struct HalfWriter : QuickFileSystem
        {
            std::function<void()> halfWay;

            ssize_t write(int file, const char* data, size_t size) override
            {
                QuickFileSystem::write(file, data, size / 2);
                halfWay();
                errno = EIO;
                return -1;
            }
            int remove(const QByteArray&) override { return 0; }
        };
        int result = -1;
        bool renamed = false;
        HalfWriter other;
        other.halfWay = [&] {
            result = QuickFileSystem::rename(from, to);
            renamed = true;
        };
        replaceFile(other, QFile::decodeName(to),
                    QByteArray::fromStdString(textOf(historyOf(9, 2))));
        return renamed ? result : QuickFileSystem::rename(from, to);
    }
};

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

TEST_F(SharedLog, ADraftThatAnotherProcessHasTakenIsNotPutInPlace)
{
    const std::string oldText = textOf(historyOf(3));
    const std::string newText = textOf(historyOf(5, 1));
    putContent(folder.file(), oldText);
    OtherWriterBeforeRename fileSystem;
    replaceFile(fileSystem, folder.file(), QByteArray::fromStdString(newText));
    const std::string content = contentOf(folder.file());
    EXPECT_TRUE(content == oldText || content == newText) << content;
}

TEST_F(SharedLog, ADraftOfAFileThatMayOnlyBeReadDoesNotBlockTheNextSaves)
{
    putContent(folder.file(), "[]");
    putContent(QFile::decodeName(draft()), "half");
    const Unprivileged user(folder);
    for (const QByteArray& path : {QFile::encodeName(folder.file()), draft()})
        std::filesystem::permissions(path.toStdString(), std::filesystem::perms::owner_read);
    SessionStore store(clock, plain, folder.file());
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
}

TEST_F(SharedLog, APipeInPlaceOfTheDraftIsNotWaitedFor)
{
    ASSERT_EQ(::mkfifo(draft().constData(), 0600), 0);
    SessionStore store(clock, plain, folder.file());
    ::alarm(5);
    store.log(Phase::sitting, 1500, 0);
    ::alarm(0);
    EXPECT_EQ(store.entries().size(), 1U);
}
