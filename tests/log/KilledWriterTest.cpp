#include "Histories.h"
#include "LogFolder.h"
#include "QuickFileSystem.h"
#include "log/SessionStore.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <ctime>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kills = 150;

/// Writes in small pieces, so that a kill often falls between two of them.
class SmallWrites : public QuickFileSystem
{
public:
    ssize_t write(int file, const char* data, size_t size) override
    {
        return QuickFileSystem::write(file, data, std::min<size_t>(size, 2000));
    }
};

/// The history that the writer saves in its `generation`: of a size of its own, so that a mixture
/// of two generations is no array.
std::vector<SessionEntry> generationOf(int generation)
{
    return historyOf(100 + generation * 37 % 100, generation);
}

/// Saves one generation after the other for ever, telling of the first that it is saved.
[[noreturn]] void write(const QString& path, int firstGeneration, FileSystem& fileSystem, int tell)
{
    ManualClock clock;
    SessionStore store(clock, fileSystem, path);
    for (int generation = firstGeneration;; ++generation) {
        store.entries = generationOf(generation);
        store.save();
        if (generation == firstGeneration && ::write(tell, "", 1) != 1)
            ::_exit(1);
    }
}

void waitFor(std::chrono::nanoseconds time)
{
    const timespec delay{0, time.count()};
    ::nanosleep(&delay, nullptr);
}

/// Runs a writer from `generation` on and kills it some time after its first save.
void writeUntilKilled(const QString& path, int generation, FileSystem& fileSystem,
                      std::chrono::nanoseconds time)
{
    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t writer = ::fork();
    if (writer == 0)
        write(path, generation, fileSystem, ends[1]);
    ::close(ends[1]);
    ASSERT_GT(writer, 0);
    char told = 0;
    EXPECT_EQ(::read(ends[0], &told, 1), 1);
    ::close(ends[0]);
    waitFor(time);
    ::kill(writer, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(writer, &status, 0), writer);
    ASSERT_TRUE(WIFSIGNALED(status)) << status;
    ASSERT_EQ(WTERMSIG(status), SIGKILL);
}

/// The generation that `content` is, which must be a whole one.
int expectWholeGeneration(const std::string& content)
{
    const auto history = readText(content);
    if (!history || history->empty()) {
        ADD_FAILURE() << content.size() << " bytes that are no history: " << content;
        return 0;
    }
    const int generation = static_cast<int>(history->front().reps);
    EXPECT_EQ(content, textOf(generationOf(generation)));
    return generation;
}

void expectWholeFileAfterEachKill(FileSystem& fileSystem, int count, unsigned seed)
{
    const LogFolder folder;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> microseconds(0, 3000);
    int generation = 0;
    int draftsLeft = 0;
    for (int i = 0; i < count; ++i) {
        const int first = generation + 1;
        ASSERT_NO_FATAL_FAILURE(writeUntilKilled(folder.file(), first, fileSystem,
                                                 std::chrono::microseconds(microseconds(random))));
        generation = expectWholeGeneration(contentOf(folder.file()));
        ASSERT_GE(generation, first);
        ASSERT_LE(folder.names().size(), 2);
        draftsLeft += static_cast<int>(folder.names().size()) - 1;
    }
    EXPECT_GT(draftsLeft, 0) << "no kill fell into a save";

    ManualClock clock;
    SessionStore store(clock, fileSystem, folder.file());
    EXPECT_EQ(store.entries(), generationOf(generation));
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("sessions.json")});
}

} // namespace

TEST(KilledWriter, LeavesAWholeGenerationWhereverItIsKilled)
{
    SmallWrites fileSystem;
    expectWholeFileAfterEachKill(fileSystem, kills, 9);
}

TEST(KilledWriter, LeavesAWholeGenerationAlsoWhenItWaitsForTheDisk)
{
    FileSystem fileSystem;
    expectWholeFileAfterEachKill(fileSystem, kills / 5, 26);
}
