#pragma once

#include <functional>

/// The MiB of memory that `work` needs at its peak beyond what the process has before, measured in
/// a forked process. `warmUp` runs there first, so that code and allocator are not counted.
double peakMemory(const std::function<void()>& warmUp, const std::function<void()>& work);
