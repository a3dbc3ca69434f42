#pragma once

#include "core/Gradient.h"

#include <QString>

#include <array>
#include <optional>

/// The phases of one cycle, in their order. The raw value is how a phase is stored outside the
/// program; it never changes.
enum class Phase : qint64 { sitting = 0, standing = 1, pushups = 2 };

inline constexpr std::array allPhases{Phase::sitting, Phase::standing, Phase::pushups};

/// What is fixed about a phase: its texts, colours and sound.
struct PhaseFacts
{
    QString title;
    QString emoji;
    QString subtitle;
    QString completionMessage;
    QString completionSoundName;
    Color lightTone;
    Color darkTone;
};

const PhaseFacts& factsOf(Phase phase);

constexpr qint64 rawValue(Phase phase)
{
    return static_cast<qint64>(phase);
}

/// The phase stored as `raw`, or nothing for any value but 0, 1 and 2.
constexpr std::optional<Phase> phaseFromRaw(qint64 raw)
{
    if (static_cast<quint64>(raw) >= allPhases.size())
        return std::nullopt;
    return static_cast<Phase>(raw);
}

/// The identity of a phase in lists: its raw value.
constexpr qint64 idOf(Phase phase)
{
    return rawValue(phase);
}

/// The phase that follows; sitting follows push-ups.
constexpr Phase successorOf(Phase phase)
{
    return static_cast<Phase>((rawValue(phase) + 1) % qint64{allPhases.size()});
}

/// Light to dark tone, from the middle of the top edge to the middle of the bottom edge.
LinearGradient accentGradient(Phase phase);

/// Dark, light, dark tone around the centre, so that the seam at 0/360 degrees is invisible.
AngularGradient ringGradient(Phase phase);
