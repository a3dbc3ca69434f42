#pragma once

#include "log/SessionEntry.h"

#include <QByteArray>

#include <optional>
#include <vector>

/// The history as one compact JSON array, its keys in the order id, date, phaseRaw, seconds, reps.
/// Nothing when an entry has no such form: a number of seconds that is not finite, or a date
/// outside the years 0 to 9999.
std::optional<QByteArray> toJson(const std::vector<SessionEntry>& entries);

/// The history that `json` holds. All or nothing: one entry with a missing or mistyped key, or
/// anything but a well-formed array of objects, and there is no result. Unknown keys are ignored.
std::optional<std::vector<SessionEntry>> entriesFromJson(const QByteArray& json);
