#include "bench/desktop/ProcessFigures.h"

#include <QDir>
#include <QFile>

#include <ctime>

namespace {

/// The number in the line "NAME: number ..." of a file of the kernel's; 0 when there is none.
qint64 figure(const QString& path, const QByteArray& name)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return 0;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').first().toLongLong();
    }
    return 0;
}

QString folderOf(pid_t pid)
{
    return QStringLiteral("/proc/%1").arg(pid);
}

} // namespace

MemoryFigures memoryOf(pid_t pid)
{
    const QString file = folderOf(pid) + QStringLiteral("/smaps_rollup");
    return {figure(file, "Anonymous"), figure(file, "Pss")};
}

std::chrono::nanoseconds cpuTimeOf(pid_t pid)
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &time) != 0)
        return {};
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

QHash<QString, qint64> wakeUpsOf(pid_t pid)
{
    const QString tasks = folderOf(pid) + QStringLiteral("/task/");
    QHash<QString, qint64> wakeUps;
    const QStringList threads = QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& thread : threads)
        wakeUps[thread] =
            figure(tasks + thread + QStringLiteral("/status"), "voluntary_ctxt_switches");
    return wakeUps;
}
