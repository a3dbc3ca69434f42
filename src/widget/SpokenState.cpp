#include "widget/SpokenState.h"

#include <algorithm>
#include <cmath>

namespace {

qint64 minutesLeft(const TimerEngine& engine)
{
    return std::max(static_cast<qint64>(std::ceil(engine.remaining() / 60)), qint64{0});
}

QString counted(qint64 count, const QString& one, const QString& many)
{
    return QString::number(count) + QLatin1Char(' ') + (count == 1 ? one : many);
}

} // namespace

QString spokenState(const TimerEngine& engine)
{
    const QString& title = factsOf(engine.phase()).title;
    if (engine.state() == TimerEngine::State::complete)
        return title + QStringLiteral(", done");
    if (engine.phase() == Phase::pushups) {
        return title + QStringLiteral(", ") +
               counted(engine.pushupCount(), QStringLiteral("repetition"),
                       QStringLiteral("repetitions")) +
               QStringLiteral(" to do");
    }
    return title + QStringLiteral(", ") +
           counted(minutesLeft(engine), QStringLiteral("minute"), QStringLiteral("minutes")) +
           (engine.state() == TimerEngine::State::paused ? QStringLiteral(" left, paused")
                                                         : QStringLiteral(" left, running"));
}

Milestone milestoneOf(const TimerEngine& engine)
{
    Milestone milestone{.phase = engine.phase(), .state = engine.state(), .stage = 0};
    if (engine.phase() != Phase::pushups && engine.state() == TimerEngine::State::running) {
        const qint64 minutes = minutesLeft(engine);
        milestone.stage = minutes <= 1 ? 2 : minutes <= 5 ? 1 : 0;
    }
    return milestone;
}
