#include "bench/support/Timing.h"

#include <algorithm>
#include <chrono>

namespace {

double millisecondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

} // namespace

Times timesOf(int runs, const std::function<void()>& own, const std::function<void()>& reference)
{
    std::vector<double> ownTimes;
    std::vector<double> referenceTimes;
    for (int run = 0; run < runs; ++run) {
        ownTimes.push_back(millisecondsOf(own));
        referenceTimes.push_back(millisecondsOf(reference));
    }
    return {median(ownTimes), median(referenceTimes)};
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}
