#pragma once

#include <cstdint>
#include <span>

/// Symbols are drawn on a grid of this many units in both directions.
constexpr int symbolGridSide = 16;

/// The steps of a point's coordinates to one unit of the grid.
constexpr int symbolPointFineness = 2048;

/// A corner of a symbol's outline, which consists of closed contours: some around what is filled,
/// some around the holes in it.
struct SymbolPoint
{
    std::uint16_t x;
    std::uint16_t y;
    bool beginsContour;
};

/// A symbol's name and where its outline stands in symbolPoints(). Without pointers, so that
/// nothing of the tables is changed, and thereby becomes the process's own, when the program is
/// loaded.
struct SymbolEntry
{
    char name[40];
    std::uint16_t first;
    std::uint16_t count;
};

// Both tables are generated when the program is built.
std::span<const SymbolEntry> symbolEntries();
std::span<const SymbolPoint> symbolPoints();
