#include "core/Phase.h"

const PhaseFacts& factsOf(Phase phase)
{
    static const std::array<PhaseFacts, allPhases.size()> facts{{
        {
            .title = QStringLiteral("Deep Work"),
            .emoji = QStringLiteral("\U0001FA91"),
            .subtitle = QStringLiteral("Seated focus session"),
            .completionMessage = QStringLiteral("Time to stand up"),
            .completionSoundName = QStringLiteral("Glass"),
            .lightTone = {0.62, 0.78, 1.0},
            .darkTone = {0.45, 0.55, 1.0},
        },
        {
            .title = QStringLiteral("Stand Up"),
            .emoji = QStringLiteral("\U0001F9CD"),
            .subtitle = QStringLiteral("Work on your feet"),
            .completionMessage = QStringLiteral("Push-up time"),
            .completionSoundName = QStringLiteral("Hero"),
            .lightTone = {1.0, 0.82, 0.45},
            .darkTone = {1.0, 0.63, 0.22},
        },
        {
            .title = QStringLiteral("Push-Ups"),
            .emoji = QStringLiteral("\U0001F4AA"),
            .subtitle = QStringLiteral("Drop and give me fifty"),
            .completionMessage = QStringLiteral("Cycle complete"),
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
