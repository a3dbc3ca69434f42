#pragma once

#include <QtGlobal>

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

/// How often the present threads of a process went to sleep of their own accord, which is how
/// often they were woken.
qint64 wakeUpsOf(pid_t pid);
