#pragma once

#include "paint/TextLine.h"

/// The text styles of the widget.
namespace styles {
inline constexpr TextStyle title{.size = 12, .weight = QFont::Bold, .tracking = 2.2};
inline constexpr TextStyle badge{.size = 10, .weight = QFont::DemiBold, .tracking = 1.2};
inline constexpr TextStyle time{.size = 44, .weight = QFont::DemiBold, .fixedDigits = true};
inline constexpr TextStyle done{.size = 36, .weight = QFont::DemiBold};
inline constexpr TextStyle count{.size = 40, .weight = QFont::DemiBold};
inline constexpr TextStyle reps{
    .size = 15, .weight = QFont::Medium, .design = TextStyle::Design::plain};
inline constexpr TextStyle hint{.size = 12, .weight = QFont::Medium};
inline constexpr TextStyle capsule{.size = 13, .weight = QFont::DemiBold};

inline constexpr TextStyle compactTitle{.size = 9, .weight = QFont::Bold, .tracking = 1.6};
inline constexpr TextStyle compactTime{.size = 26, .weight = QFont::DemiBold, .fixedDigits = true};
inline constexpr TextStyle compactDone{.size = 22, .weight = QFont::DemiBold};
inline constexpr TextStyle compactCount{.size = 24, .weight = QFont::DemiBold};
} // namespace styles
