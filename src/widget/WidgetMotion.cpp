#include "widget/WidgetMotion.h"

#include <algorithm>

namespace {

constexpr double pausedTimeOpacity = 0.45;

Readout readoutOf(const WidgetModel& model)
{
    if (model.phase == Phase::pushups)
        return {Readout::Kind::count};
    if (model.isComplete())
        return {Readout::Kind::done, model.phase};
    return {Readout::Kind::time};
}

Hint hintOf(const WidgetModel& model)
{
    return {model.phase, model.state};
}

double timeOpacityOf(const WidgetModel& model)
{
    return model.isPaused() ? pausedTimeOpacity : 1;
}

} // namespace

WidgetMotion::WidgetMotion(const WidgetModel& initial, Instant now)
    : model(initial)
    , phases(initial.phase)
    , readouts(readoutOf(initial))
    , hints(hintOf(initial))
    , hover(initial.hovered)
    , complete(initial.isComplete())
    , turning(!initial.progress)
    , doneButton(initial.offersDone())
    , pauseButton(initial.offersPause())
    , timeOpacity(timeOpacityOf(initial))
    , compactness(initial.compact)
    , progress(initial.progress.value_or(0))
    , pausedAt(initial.isPaused() ? std::optional(now) : std::nullopt)
{}

void WidgetMotion::follow(const WidgetModel& next, Instant now, bool animated)
{
    const std::optional<Instant> wasPausedAt = pausedAt;
    if (!animated) {
        *this = WidgetMotion(next, now);
    } else {
        const Curve curve = next.phase != model.phase ? curves::phase : curves::state;
        phases.moveTo(next.phase, curve, now);
        readouts.moveTo(readoutOf(next), curve, now);
        hints.moveTo(hintOf(next), curve, now);
        hover.moveTo(next.hovered, curves::hover, now);
        complete.moveTo(next.isComplete(), curve, now);
        turning.moveTo(!next.progress, curve, now);
        doneButton.moveTo(next.offersDone(), curve, now);
        pauseButton.moveTo(next.offersPause(), curve, now);
        timeOpacity.moveTo(timeOpacityOf(next), curve, now);
        compactness.moveTo(next.compact, curves::form, now);
        // An arc that comes anew comes as it is; only one that was there changes its length.
        if (next.progress && model.progress)
            progress.moveTo(*next.progress, curves::progress, now);
        else if (next.progress)
            progress.jumpTo(*next.progress);
        model = next;
    }
    pausedAt = next.isPaused() ? std::optional(wasPausedAt.value_or(now)) : std::nullopt;
}

bool WidgetMotion::isChangingAt(Instant now) const
{
    const auto motions = {&complete,    &turning,     &doneButton,
                          &pauseButton, &timeOpacity, &compactness};
    return phases.isMovingAt(now) || readouts.isMovingAt(now) || hints.isMovingAt(now) ||
           std::any_of(motions.begin(), motions.end(),
                       [now](const Motion* motion) { return motion->isMovingAt(now); });
}

bool WidgetMotion::isAliveAt(Instant now) const
{
    const bool figureIsCovered = model.compact && hover.at(now) == 1;
    const bool figureMoves = !model.isPaused() && !figureIsCovered;
    return figureMoves || turning.at(now) > 0 || complete.at(now) > 0;
}
