#pragma once

/// The programs that are measured.
namespace programs {
inline constexpr auto vantora = VANTORA_PROGRAM;
inline constexpr auto emptyWindow = EMPTY_WINDOW_PROGRAM;
inline constexpr auto wholeWindow = WHOLE_WINDOW_PROGRAM;
inline constexpr auto withoutPictures = WITHOUT_PICTURES_PROGRAM;
} // namespace programs
