#pragma once

#include "core/Clock.h"
#include "core/Phase.h"

#include <QUuid>

/// One finished phase of the history.
struct SessionEntry
{
    QUuid id;            ///< identity of the entry, also of its row in a list
    Instant date;        ///< when it was logged, which is when the phase was left
    qint64 phaseRaw = 0; ///< raw value of the phase; see phaseOf()
    double seconds = 0;  ///< how long it lasted
    qint64 reps = 0;     ///< push-ups done

    bool operator==(const SessionEntry&) const = default;
};

/// The phase of an entry. A raw value that names no phase counts as sitting.
constexpr Phase phaseOf(const SessionEntry& entry)
{
    return phaseFromRaw(entry.phaseRaw).value_or(Phase::sitting);
}
