#include "app/Snapshot.h"

#include <gtest/gtest.h>

namespace {

using Arguments = std::vector<const char*>;

/// The folder that the arguments ask for; "none" where they do not ask for snapshot mode.
std::string folderOf(const Arguments& arguments)
{
    QStringList list;
    for (const char* argument : arguments)
        list.append(QString::fromUtf8(argument));
    return Snapshot::requestedFolder(list).value_or(QStringLiteral("none")).toStdString();
}

} // namespace

TEST(SnapshotTest, theFolderIsTheArgumentAfterTheOption)
{
    EXPECT_EQ(folderOf({"vantora", "--snapshot", "/tmp/out"}), "/tmp/out");
    EXPECT_EQ(folderOf({"vantora", "--demo", "--snapshot", "shots", "--more"}), "shots");
}

TEST(SnapshotTest, withoutTheOptionThereIsNoSnapshot)
{
    EXPECT_EQ(folderOf({}), "none");
    EXPECT_EQ(folderOf({"vantora"}), "none");
    EXPECT_EQ(folderOf({"vantora", "--demo", "/tmp/out"}), "none");
}

TEST(SnapshotTest, onlyTheExactWordIsTheOption)
{
    for (const char* other : {"--snapshots", "-snapshot", "snapshot", "--Snapshot", "--snapshot ",
                              "--snapshot=/tmp/out", ""})
        EXPECT_EQ(folderOf({"vantora", other, "/tmp/out"}), "none") << other;
}

TEST(SnapshotTest, anOptionAtTheEndIsNone)
{
    EXPECT_EQ(folderOf({"vantora", "--snapshot"}), "none");
    EXPECT_EQ(folderOf({"vantora", "--demo", "--snapshot"}), "none");
    EXPECT_EQ(folderOf({"--snapshot"}), "none");
}

TEST(SnapshotTest, theFirstOptionCounts)
{
    EXPECT_EQ(folderOf({"vantora", "--snapshot", "a", "--snapshot", "b"}), "a");
    EXPECT_EQ(folderOf({"vantora", "--snapshot", "a", "--snapshot"}), "a");
}

TEST(SnapshotTest, theFolderMayLookLikeAnything)
{
    EXPECT_EQ(folderOf({"vantora", "--snapshot", "--demo"}), "--demo");
    EXPECT_EQ(folderOf({"vantora", "--snapshot", "--snapshot"}), "--snapshot");
    EXPECT_EQ(folderOf({"vantora", "--snapshot", "--snapshot", "c"}), "--snapshot");
    EXPECT_EQ(folderOf({"vantora", "--snapshot", ""}), "");
    EXPECT_EQ(folderOf({"vantora", "--snapshot", "a b/ü"}), "a b/ü");
}

TEST(SnapshotTest, theProgramsOwnPathIsLookedAtToo)
{
    EXPECT_EQ(folderOf({"--snapshot", "out"}), "out");
}
