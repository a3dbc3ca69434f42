#pragma once

#include <cmath>

/// `value` less as many whole periods as leave it at 0 or above, and below `period`. Before 2001
/// times are negative.
inline double wrapped(double value, double period)
{
    const double rest = std::fmod(value, period);
    return rest < 0 ? rest + period : rest;
}
