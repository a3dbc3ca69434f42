#pragma once

#include <QHash>
#include <QString>

#include <chrono>
#include <sys/types.h>

/// What a process holds in memory, in kB.
struct MemoryFigures
{
    qint64 anonymous = 0;    ///< its own pages, which no other process can share
    qint64 proportional = 0; ///< the same, plus its part of the pages that it does share
};

MemoryFigures memoryOf(pid_t pid);

/// Processor time of all threads, those that ended as well.
std::chrono::nanoseconds cpuTimeOf(pid_t pid);

/// How often each present thread of a process went to sleep of its own accord, which is how often
/// it was woken; by the threads' numbers.
QHash<QString, qint64> wakeUpsOf(pid_t pid);
