#include "Histories.h"
#include "InOnePiece.h"
#include "LogFolder.h"
#include "QuickFileSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <limits>

namespace {

const std::string oldText = textOf(historyOf(4));
const std::string newText = textOf(historyOf(3, 1));

/// A file system whose writes may take less than they are given.
class PartialWrites : public QuickFileSystem
{
public:
    /// What becomes of a write of `size` bytes when `taken` bytes are written already: how many
    /// are taken, or an error below zero.
    std::function<ssize_t(size_t taken, size_t size)> outcome;

    ssize_t write(int file, const char* data, size_t size) override
    {
        const ssize_t planned = outcome(m_taken, size);
        if (planned < 0) {
            errno = static_cast<int>(-planned);
            return -1;
        }
        const ssize_t count = FileSystem::write(file, data, static_cast<size_t>(planned));
        m_taken += static_cast<size_t>(count);
        return count;
    }

private:
    size_t m_taken = 0;
};

class DurableWrite : public testing::Test
{
protected:
    LogFolder folder;
    PartialWrites fileSystem;

    void SetUp() override { putContent(folder.file(), oldText); }

    bool replace()
    {
        return replaceFile(fileSystem, folder.file(), QByteArray::fromStdString(newText));
    }

    void expectOldFileAlone()
    {
        EXPECT_EQ(contentOf(folder.file()), oldText);
        EXPECT_EQ(folder.names(), QStringList{QStringLiteral("sessions.json")});
    }
};

} // namespace

TEST_F(DurableWrite, WritesThatTakeAByteEachAreGoneOnWith)
{
    fileSystem.outcome = [](size_t, size_t) { return 1; };
    EXPECT_TRUE(replace());
    EXPECT_EQ(contentOf(folder.file()), newText);
}

TEST_F(DurableWrite, AnInterruptedWriteIsTriedAgain)
{
    int calls = 0;
    fileSystem.outcome = [&calls](size_t, size_t size) {
        return ++calls % 3 != 0 ? -EINTR : static_cast<ssize_t>(std::min<size_t>(size, 100));
    };
    EXPECT_TRUE(replace());
    EXPECT_EQ(contentOf(folder.file()), newText);
}

TEST_F(DurableWrite, AWriteThatTakesNothingFailsTheSave)
{
    for (const size_t after : {size_t{0}, newText.size() / 2, newText.size() - 1}) {
        fileSystem = {};
        fileSystem.outcome = [after](size_t taken, size_t) {
            return static_cast<ssize_t>(taken < after ? after - taken : 0);
        };
        EXPECT_FALSE(replace());
        expectOldFileAlone();
    }
}

TEST_F(DurableWrite, ADiskThatIsFullAfterAnyByteFailsTheSave)
{
    for (size_t room = 0; room < newText.size(); ++room) {
        fileSystem = {};
        fileSystem.outcome = [room](size_t taken, size_t size) {
            const size_t left = room - taken;
            return left == 0 ? -ENOSPC : static_cast<ssize_t>(std::min(left, size));
        };
        ASSERT_FALSE(replace()) << room;
        ASSERT_EQ(contentOf(folder.file()), oldText) << room;
    }
    expectOldFileAlone();
}

TEST_F(DurableWrite, AnEmptyContentNeedsNoWrite)
{
    fileSystem.outcome = [](size_t, size_t) { return -EIO; };
    EXPECT_TRUE(replaceFile(fileSystem, folder.file(), QByteArray()));
    EXPECT_EQ(contentOf(folder.file()), "");
}
