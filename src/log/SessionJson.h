#pragma once

#include "log/SessionEntry.h"

#include <QByteArray>
#include <QByteArrayView>

#include <functional>
#include <optional>
#include <vector>

/// Takes the next piece of a text; false to stop.
using Append = std::function<bool(QByteArrayView piece)>;

/// Gives out the history as one compact JSON array, its keys in the order id, date, phaseRaw,
/// seconds, reps, in pieces of about a megabyte. False when `append` stops it, or when an entry has
/// no such form: a number of seconds that is not finite, or a date outside the years 0 to 9999.
bool writeJson(const std::vector<SessionEntry>& entries, const Append& append);

/// The history that `json` holds. All or nothing: one entry with a missing or mistyped key, or
/// anything but a well-formed array of objects, and there is no result. Unknown keys are ignored.
std::optional<std::vector<SessionEntry>> entriesFromJson(const QByteArray& json);
