#include "core/Phase.h"

const PhaseFacts& factsOf(Phase phase)
{
    static const std::array<PhaseFacts, allPhases.size()> facts{{
        {
            .title = QStringLiteral("Deep Work"),
            .emoji = QStringLiteral("\U0001FA91"),
            .completionSoundName = QStringLiteral("Glass"),
            .lightTone = {0.62, 0.78, 1.0},
            .darkTone = {0.45, 0.55, 1.0},
        },
        {
            .title = QStringLiteral("Stand Up"),
            .emoji = QStringLiteral("\U0001F9CD"),
            .completionSoundName = QStringLiteral("Hero"),
            .lightTone = {1.0, 0.82, 0.45},
            .darkTone = {1.0, 0.63, 0.22},
        },
        {
            .title = QStringLiteral("Push-Ups"),
            .emoji = QStringLiteral("\U0001F4AA"),
            .completionSoundName = QStringLiteral("Funk"),
            .lightTone = {1.0, 0.55, 0.68},
            .darkTone = {1.0, 0.32, 0.45},
        },
    }};
    return facts.at(static_cast<std::size_t>(rawValue(phase)));
}

LinearGradient accentGradient(Phase phase)
{
    const PhaseFacts& facts = factsOf(phase);
    return {{facts.lightTone, facts.darkTone}, {0.5, 0}, {0.5, 1}};
}

AngularGradient ringGradient(Phase phase)
{
    const PhaseFacts& facts = factsOf(phase);
    return {{facts.darkTone, facts.lightTone, facts.darkTone}, {0.5, 0.5}, 0, 360};
}
