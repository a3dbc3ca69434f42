#include "log/SessionStore.h"

#include "core/Clock.h"
#include "core/Fatal.h"
#include "log/DurableFile.h"
#include "log/FileSystem.h"
#include "log/SessionJson.h"

#include <QFile>
#include <QFileInfo>

SessionStore::SessionStore(Clock& clock, FileSystem& fileSystem, const QString& path)
    : m_clock(clock)
    , m_fileSystem(fileSystem)
    , m_path(path)
{
    m_fileSystem.makeFolder(QFile::encodeName(QFileInfo(path).absolutePath()));
    if (const auto json = readFile(path)) {
        if (auto history = entriesFromJson(*json))
            entries = std::move(*history);
    }
}

void SessionStore::log(Phase phase, double seconds, qint64 reps)
{
    entries.mutate([&](std::vector<SessionEntry>& history) {
        history.push_back({QUuid::createUuid(), m_clock.now(), rawValue(phase), seconds, reps});
    });
    save();
}

void SessionStore::save()
{
    replaceFile(m_fileSystem, m_path,
                [this](const WritePiece& write) { return writeJson(entries(), write); });
}

double SessionStore::totalSittingSeconds() const
{
    return totalSeconds(Phase::sitting);
}

double SessionStore::totalStandingSeconds() const
{
    return totalSeconds(Phase::standing);
}

double SessionStore::totalSeconds(Phase phase) const
{
    double total = 0;
    for (const SessionEntry& entry : entries()) {
        if (phaseOf(entry) == phase)
            total += entry.seconds;
    }
    return total;
}

qint64 SessionStore::totalPushups() const
{
    qint64 total = 0;
    for (const SessionEntry& entry : entries())
        total = addOrStop(total, entry.reps);
    return total;
}

QString SessionStore::hoursString(double seconds)
{
    const qint64 minutes = wholeNumberOrStop(seconds / 60);
    if (minutes < 60)
        return QStringLiteral("%1m").arg(minutes % 60);
    return QStringLiteral("%1h %2m").arg(minutes / 60).arg(minutes % 60);
}
