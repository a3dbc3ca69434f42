#include "core/Fatal.h"
#include "core/TimerEngine.h"

#include <algorithm>
#include <cmath>

QString TimerEngine::timeString() const
{
    const qint64 seconds = std::max(wholeNumberOrStop(std::ceil(remaining())), qint64{0});
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString TimerEngine::menuBarTitle() const
{
    const QString& emoji = factsOf(phase()).emoji;
    if (phase() == Phase::pushups)
        return emoji + QStringLiteral(" ×") + QString::number(pushupCount());
    switch (state()) {
    case State::running:
        return emoji + QLatin1Char(' ') + timeString();
    case State::paused:
        return emoji + QStringLiteral(" ⏸ ") + timeString();
    case State::complete:
        break;
    }
    return emoji + QStringLiteral(" ✓");
}

std::optional<double> TimerEngine::progress() const
{
    const std::optional<double> length = duration(phase());
    if (!length || *length <= 0)
        return std::nullopt;
    return std::clamp(remaining() / *length, 0.0, 1.0);
}
