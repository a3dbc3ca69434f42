#pragma once

#include "PanelTest.h"
#include "log/FileSystem.h"
#include "log/SessionStore.h"

#include <QFile>
#include <QTemporaryDir>

/// The real file system without the waiting for the disk.
class HastyFileSystem : public FileSystem
{
public:
    int sync(int) override { return 0; }
};

/// A history in a folder of the test's own.
class LogTest : public testing::Test
{
protected:
    /// `count` entries a minute apart, the oldest first, that differ in their seconds.
    static std::vector<SessionEntry> historyOf(int count)
    {
        std::vector<SessionEntry> history;
        history.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            history.push_back(
                {QUuid::createUuid(), Instant{763637213.0 + 60 * i}, i % 2, 60.0 * i, 0});
        }
        return history;
    }

    static SessionEntry entryOf(qint64 phaseRaw, double seconds, qint64 reps)
    {
        return {QUuid::createUuid(), Instant{763637213}, phaseRaw, seconds, reps};
    }

    QString path() const { return folder.filePath(QStringLiteral("sessions.json")); }

    std::string fileContent() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }

    QTemporaryDir folder;
    ManualClock clock;
    HastyFileSystem fileSystem;
    SessionStore store{clock, fileSystem, path()};
};
