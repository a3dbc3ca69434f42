#pragma once

#include <cmath>
#include <numbers>

/// Where the widget's curves should be, from their definitions: the part of the way that is done.

/// The cubic Bézier curve through (0, 0), (0.42, 0), (0.58, 1) and (1, 1) at `part` of the time.
inline double easedInOut(double part)
{
    const auto bezier = [](double first, double second, double t) {
        const double u = 1 - t;
        return 3 * u * u * t * first + 3 * u * t * t * second + t * t * t;
    };
    double low = 0;
    double high = 1;
    for (int i = 0; i < 60; ++i) {
        const double middle = (low + high) / 2;
        (bezier(0.42, 0.58, middle) < part ? low : high) = middle;
    }
    return bezier(0, 1, low);
}

/// A critically damped spring of this response, so many seconds after it set out from rest.
inline double sprung(double response, double seconds)
{
    const double omega = 2 * std::numbers::pi / response;
    return 1 - (1 + omega * seconds) * std::exp(-omega * seconds);
}
