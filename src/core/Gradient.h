#pragma once

#include <vector>

/// An sRGB colour; every component from 0 to 1.
struct Color
{
    double red = 0;
    double green = 0;
    double blue = 0;
    double opacity = 1;

    bool operator==(const Color&) const = default;
};

/// A point in a rectangle's own terms: (0, 0) is its top left corner, (1, 1) its bottom right one.
struct UnitPoint
{
    double x = 0;
    double y = 0;

    bool operator==(const UnitPoint&) const = default;
};

/// Colours evenly spread along the line from `start` to `end`.
struct LinearGradient
{
    std::vector<Color> stops;
    UnitPoint start;
    UnitPoint end;
};

/// Colours evenly spread over the angles from `startDegrees` to `endDegrees`, clockwise.
struct AngularGradient
{
    std::vector<Color> stops;
    UnitPoint center;
    double startDegrees = 0;
    double endDegrees = 360;
};
