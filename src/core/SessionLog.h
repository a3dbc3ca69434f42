#pragma once

#include "core/Phase.h"

/// Where finished phases go.
class SessionLog
{
public:
    virtual ~SessionLog() = default;

    /// Keeps a phase that ended now, after `seconds` and with `reps` push-ups.
    virtual void log(Phase phase, double seconds, qint64 reps) = 0;
};
