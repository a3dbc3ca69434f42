#pragma once

#include <functional>
#include <vector>

/// How long each of two ways takes, in milliseconds: medians of runs that alternate, so that
/// whatever else the machine does falls on both.
struct Times
{
    double own = 0;
    double reference = 0;
};

Times timesOf(int runs, const std::function<void()>& own, const std::function<void()>& reference);

/// The middle value, or what is halfway between the two middle ones; 0 of none.
double median(std::vector<double> values);
