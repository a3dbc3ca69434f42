#include "FaultyFileSystem.h"
#include "Histories.h"
#include "InOnePiece.h"
#include "LogFolder.h"
#include "Unprivileged.h"
#include "log/SessionStore.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

const QStringList theFileAlone{QStringLiteral("sessions.json")};

std::string errorName(int error)
{
    return std::string(" with ") + strerrorname_np(error);
}

/// A folder with or without an old log, a store on it, and a newer history to save.
class Save
{
public:
    explicit Save(bool hasOldFile)
    {
        if (hasOldFile)
            putContent(m_folder.file(), m_oldText);
        else
            m_oldText.clear();
        m_store.emplace(m_clock, fileSystem, m_folder.file());
        m_store->entries = historyOf(20, 1);
        fileSystem.calls.clear();
    }

    FaultyFileSystem fileSystem;

    void run() { m_store->save(); }

    /// What the file holds; empty without a file.
    std::string content() const
    {
        return m_folder.names().contains(theFileAlone.front()) ? contentOf(m_folder.file()) : "";
    }
    bool isOld() const { return content() == m_oldText; }
    bool isNew() const { return content() == m_newText; }

    void expectNothingLost()
    {
        EXPECT_EQ(m_store->entries(), historyOf(20, 1));
        EXPECT_EQ(fileSystem.openFiles, 0);
    }

    /// The next save, in which nothing fails, writes everything and leaves nothing else behind.
    void expectNextSaveWritesEverything()
    {
        fileSystem = {};
        m_store->log(Phase::pushups, 0, 50);
        ASSERT_EQ(m_store->entries().size(), 21U);
        EXPECT_EQ(content(), textOf(m_store->entries()));
        EXPECT_EQ(m_folder.names(), theFileAlone);
    }

private:
    LogFolder m_folder;
    ManualClock m_clock;
    std::string m_oldText = textOf(historyOf(25));
    std::string m_newText = textOf(historyOf(20, 1));
    std::optional<SessionStore> m_store;
};

std::vector<std::string> callsOfASave(bool hasOldFile)
{
    Save save(hasOldFile);
    save.run();
    return save.fileSystem.calls;
}

std::ptrdiff_t placeOf(const std::vector<std::string>& calls, std::string_view name)
{
    return std::find(calls.begin(), calls.end(), name) - calls.begin();
}

} // namespace

TEST(DurableSave, TheContentIsOnTheDiskBeforeItTakesItsPlaceAndThePlaceAfter)
{
    for (const bool hasOldFile : {false, true}) {
        const std::vector<std::string> calls = callsOfASave(hasOldFile);
        const auto end = std::ssize(calls);
        EXPECT_LT(placeOf(calls, "write"), placeOf(calls, "sync"));
        EXPECT_LT(placeOf(calls, "sync"), placeOf(calls, "rename"));
        EXPECT_LT(placeOf(calls, "rename"), placeOf(calls, "sync folder"));
        EXPECT_LT(placeOf(calls, "sync folder"), end);
        EXPECT_EQ(placeOf(calls, "change mode") < end, hasOldFile);
    }
}

TEST(DurableSave, WhicheverCallFailsTheFileIsTheWholeOldOrTheWholeNewOne)
{
    for (const bool hasOldFile : {false, true}) {
        const std::vector<std::string> calls = callsOfASave(hasOldFile);
        for (std::size_t number = 0; number < calls.size(); ++number) {
            for (const int error : {EIO, ENOSPC, EACCES}) {
                for (const bool removingFails : {false, true}) {
                    SCOPED_TRACE(calls[number] + errorName(error) +
                                 (hasOldFile ? ", old file" : ", no old file") +
                                 (removingFails ? ", removing fails too" : ""));
                    Save save(hasOldFile);
                    save.fileSystem.faultAt = number;
                    save.fileSystem.faultError = error;
                    save.fileSystem.removingFails = removingFails;
                    save.run();
                    // What may not be opened is cleared away, and opened again.
                    const bool isMended = calls[number] == "open" && error == EACCES;
                    if (static_cast<std::ptrdiff_t>(number) <= placeOf(calls, "rename") &&
                        !isMended)
                        EXPECT_TRUE(save.isOld()) << save.content();
                    else
                        EXPECT_TRUE(save.isNew()) << save.content();
                    save.expectNothingLost();
                    save.expectNextSaveWritesEverything();
                }
            }
        }
    }
}

TEST(DurableSave, AFailedCallIsReported)
{
    const LogFolder folder;
    putContent(folder.file(), "old");
    FaultyFileSystem fileSystem;
    ASSERT_TRUE(replaceFile(fileSystem, folder.file(), "new"));
    const std::vector<std::string> calls = fileSystem.calls;
    for (std::size_t number = 0; number < calls.size(); ++number) {
        if (calls[number] == "close folder")
            continue;
        fileSystem = {};
        fileSystem.faultAt = number;
        EXPECT_FALSE(replaceFile(fileSystem, folder.file(), "newer")) << calls[number];
    }
}

TEST(DurableSave, AFileSystemWithoutLocksIsSavedToAllTheSame)
{
    const LogFolder folder;
    for (const int error : {ENOLCK, EOPNOTSUPP}) {
        FaultyFileSystem fileSystem;
        ASSERT_TRUE(replaceFile(fileSystem, folder.file(), "old"));
        const std::vector<std::string> calls = fileSystem.calls;
        fileSystem = {};
        fileSystem.faultAt = placeOf(calls, "lock");
        fileSystem.faultError = error;
        EXPECT_TRUE(replaceFile(fileSystem, folder.file(), "new"));
        EXPECT_EQ(contentOf(folder.file()), "new");
    }
}

TEST(DurableSave, AtEveryInstantOfASaveTheFileIsTheWholeOldOrTheWholeNewOne)
{
    for (const bool hasOldFile : {false, true}) {
        Save save(hasOldFile);
        int looks = 0;
        bool wasNew = false;
        save.fileSystem.look = [&] {
            ++looks;
            ASSERT_TRUE(save.isNew() || (save.isOld() && !wasNew)) << save.content();
            wasNew = save.isNew();
        };
        save.run();
        EXPECT_TRUE(wasNew);
        EXPECT_GT(looks, 10);
        EXPECT_EQ(save.fileSystem.written.size(), 1U);
        save.fileSystem.look = [] {};
        save.expectNextSaveWritesEverything();
    }
}

TEST(DurableSave, AFolderThatIsGoneIsMadeAgain)
{
    const LogFolder folder;
    const QString path = folder.file(QStringLiteral("Vantora/sessions.json"));
    ManualClock clock;
    FileSystem fileSystem;
    SessionStore store(clock, fileSystem, path);
    store.log(Phase::sitting, 1500, 0);
    ASSERT_TRUE(QDir(folder.file(QStringLiteral("Vantora"))).removeRecursively());
    store.log(Phase::standing, 900, 0);
    EXPECT_EQ(contentOf(path), textOf(store.entries()));
}

TEST(DurableSave, AFolderThatMayNotBeWrittenKeepsTheOldFileUntilItMay)
{
    const LogFolder folder;
    putContent(folder.file(), textOf(historyOf(3)));
    const Unprivileged user(folder);
    ManualClock clock;
    FileSystem fileSystem;
    SessionStore store(clock, fileSystem, folder.file());

    using std::filesystem::perms;
    std::filesystem::permissions(folder.path().toStdString(),
                                 perms::owner_read | perms::owner_exec);
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(contentOf(folder.file()), textOf(historyOf(3)));
    EXPECT_EQ(store.entries().size(), 4U);

    std::filesystem::permissions(folder.path().toStdString(), perms::owner_all);
    store.save();
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
    EXPECT_EQ(folder.names(), theFileAlone);
}

TEST(DurableSave, TheModeOfTheFileIsKept)
{
    for (const int mode : {0600, 0640, 0644, 0660, 0755}) {
        const LogFolder folder;
        putContent(folder.file(), "[]");
        const auto permissions = static_cast<std::filesystem::perms>(mode);
        std::filesystem::permissions(folder.file().toStdString(), permissions);
        FileSystem fileSystem;
        ASSERT_TRUE(replaceFile(fileSystem, folder.file(), "new"));
        EXPECT_EQ(std::filesystem::status(folder.file().toStdString()).permissions(), permissions);
        EXPECT_EQ(contentOf(folder.file()), "new");
    }
}

TEST(DurableSave, AFileThatMayOnlyBeReadIsReplacedWithItsModeKept)
{
    const LogFolder folder;
    putContent(folder.file(), "[]");
    const Unprivileged user(folder);
    const auto permissions = static_cast<std::filesystem::perms>(0400);
    std::filesystem::permissions(folder.file().toStdString(), permissions);
    FileSystem fileSystem;
    EXPECT_TRUE(replaceFile(fileSystem, folder.file(), "new"));
    EXPECT_EQ(std::filesystem::status(folder.file().toStdString()).permissions(), permissions);
    EXPECT_EQ(contentOf(folder.file()), "new");
}

TEST(DurableSave, NamesOfAnyCharactersAreWrittenAndReadBack)
{
    for (const auto* name : {u"with space.json", u"Grüße/sessions.json", u"日本語.json",
                             u"🪑/🧍.json", u"a\u0308.json", u"%1%20\"quoted\".json",
                             u"back\\slash\nline.json", u".hidden", u"-dash", u"sessions"}) {
        const LogFolder folder;
        const QString path = folder.file(QString::fromUtf16(name));
        ManualClock clock;
        FileSystem fileSystem;
        SessionStore store(clock, fileSystem, path);
        store.log(Phase::sitting, 1500, 0);
        store.log(Phase::standing, 900, 0);
        const SessionStore next(clock, fileSystem, path);
        EXPECT_EQ(next.entries().size(), 2U) << path.toStdString();
        EXPECT_EQ(QDir(QFileInfo(path).path())
                      .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                  QStringList{QFileInfo(path).fileName()});
    }
}
