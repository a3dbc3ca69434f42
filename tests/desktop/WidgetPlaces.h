#pragma once

#include <QPoint>
#include <QRect>

/// Where things are on the widget, from its top left corner.

inline constexpr QSize fullSize(250, 320);
inline constexpr QSize compactSize(216, 76);

inline constexpr QPoint ringCenter(125, 117);
inline constexpr int ringRadius = 74;

/// The box of the figure, and of the time below it.
inline constexpr QRect figureArea(79, 71, 92, 92);
inline constexpr QRect readoutArea(20, 205, 210, 48);

/// The middle of a button of the row, which has `count` of them.
constexpr QPoint buttonAt(int number, int count, bool compact)
{
    const int doubled = compact ? 216 : 250;
    const int step = compact ? 33 : 40;
    return {(doubled + (2 * number - count + 1) * step) / 2, compact ? 38 : 293};
}

/// A place where the row shows the card between two of its buttons.
constexpr QPoint gapAfter(int number, int count, bool compact)
{
    return (buttonAt(number, count, compact) + buttonAt(number + 1, count, compact)) / 2;
}
