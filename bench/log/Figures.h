#pragma once

#include <functional>
#include <optional>
#include <string>

/// How long each of two ways takes, in milliseconds: medians of runs that alternate, so that
/// whatever else the machine does falls on both.
struct Times
{
    double own = 0;
    double reference = 0;
};

Times timesOf(int runs, const std::function<void()>& own, const std::function<void()>& reference);

/// A line of the printed table.
struct Figure
{
    std::string name; ///< with its unit
    double own = 0;
    double reference = 0;
    std::optional<double> highestRatio{}; ///< the bar, where there is one
};

void printTableHead();
void print(const Figure& figure);
