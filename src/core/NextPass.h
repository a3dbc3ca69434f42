#pragma once

#include "core/Observable.h"

#include <functional>

/// Calls `read` one event-loop pass after `observed` announced changes: then the new values stand,
/// and all notices of one pass are one call. Ends with `context`.
void onNextPass(Observable& observed, QObject* context, std::function<void()> read);
