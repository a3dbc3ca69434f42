#include "bench/log/PeakMemory.h"

#include <QFile>

#include <cstdlib>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A figure of the process in MiB, such as VmRSS.
double statusFigure(const QByteArray& name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.simplified().split(' ').at(1).toDouble() / 1024;
    }
    return 0;
}

/// Makes the peak what the process has now.
void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        file.write("5");
}

} // namespace

double peakMemory(const std::function<void()>& warmUp, const std::function<void()>& work)
{
    int ends[2] = {};
    if (::pipe(ends) != 0)
        return 0;
    const pid_t child = ::fork();
    if (child == 0) {
        warmUp();
        ::malloc_trim(0);
        forgetPeak();
        const double before = statusFigure("VmRSS");
        work();
        const double peak = statusFigure("VmHWM") - before;
        ::_exit(::write(ends[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
    }
    ::close(ends[1]);
    double peak = 0;
    const bool told = ::read(ends[0], &peak, sizeof peak) == sizeof peak;
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    return told ? peak : 0;
}
