#pragma once

#include "core/Published.h"
#include "core/SessionLog.h"
#include "log/SessionEntry.h"

#include <QString>

#include <vector>

class Clock;
class FileSystem;

/// The history of finished phases, oldest first, in memory and in its file. The file is read once,
/// here, and written whole after each change: what others write into it meanwhile is lost.
class SessionStore : public Observable, public SessionLog
{
    Q_OBJECT

public:
    /// Makes the folder of the file at `path`, and reads the history. A missing or bad file is an
    /// empty history; it is left as it is until the next save.
    SessionStore(Clock& clock, FileSystem& fileSystem, const QString& path);

    /// The history. Assigning to it does not save it.
    Published<std::vector<SessionEntry>> entries{*this};

    /// Appends an entry of this moment and saves.
    void log(Phase phase, double seconds, qint64 reps) override;

    /// Writes the whole history to the file. When that fails, the old file and the history in
    /// memory stay, and the next save tries again.
    void save();

    /// Seconds of all sitting entries, among them those of unknown phases.
    double totalSittingSeconds() const;
    double totalStandingSeconds() const;

    /// Push-ups of all entries of all phases; stops the process when the sum does not fit.
    qint64 totalPushups() const;

    /// A time such as "59m" or "1h 5m": whole minutes, the rest cut off. Stops the process when
    /// `seconds` is not finite or too large.
    static QString hoursString(double seconds);

private:
    double totalSeconds(Phase phase) const;

    Clock& m_clock;
    FileSystem& m_fileSystem;
    QString m_path;
};
