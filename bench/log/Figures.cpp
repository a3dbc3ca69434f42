#include "bench/log/Figures.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

double millisecondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + std::ssize(values) / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
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

void printTableHead()
{
    std::printf("| Figure | vantora | Reference | Ratio | Bar | Holds |\n");
    std::printf("|---|--:|--:|--:|---|---|\n");
}

void print(const Figure& figure)
{
    const double ratio = figure.own / figure.reference;
    std::printf("| %s | %.3f | %.3f | %.2f | ", figure.name.c_str(), figure.own, figure.reference,
                ratio);
    if (figure.highestRatio)
        std::printf("at most %.2f | %s |\n", *figure.highestRatio,
                    ratio <= *figure.highestRatio ? "yes" : "**no**");
    else
        std::printf("– | – |\n");
    std::fflush(stdout);
}
