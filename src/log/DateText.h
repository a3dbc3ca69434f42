#pragma once

#include "core/Clock.h"

#include <optional>
#include <string_view>

/// The length of a date text such as 2025-03-14T09:26:53Z.
inline constexpr std::size_t dateTextLength = 20;

/// Puts the instant at `to` as such a text: in UTC, the part below a second cut off. False, and
/// nothing, for an instant outside the years 0 to 9999.
bool putDateText(char* to, Instant instant);

/// The instant that a text of the form 2025-03-14T09:26:53Z names, with Z or a zone as +01:00.
/// Nothing for any other form (a fraction, no zone, a date alone), a date that does not exist, or
/// one that putDateText() could not put.
std::optional<Instant> dateFromText(std::string_view text);
