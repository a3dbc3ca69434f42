#pragma once

#include "core/Clock.h"

#include <array>
#include <optional>
#include <string_view>

/// The length of a date text such as 2025-03-14T09:26:53Z.
inline constexpr std::size_t dateTextLength = 20;

/// The instant as UTC with whole seconds, the part below a second cut off; nothing outside the
/// years 0 to 9999.
std::optional<std::array<char, dateTextLength>> dateText(Instant instant);

/// The instant that a text of the form 2025-03-14T09:26:53Z names, with Z or a zone as +01:00.
/// Nothing for any other form (a fraction, no zone, a date alone) or a date that does not exist.
std::optional<Instant> dateFromText(std::string_view text);
