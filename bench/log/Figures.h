#pragma once

#include <optional>
#include <string>

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
