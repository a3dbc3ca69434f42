#pragma once

#include "widget/Fade.h"
#include "widget/WidgetModel.h"

/// The curves of the widget's changes. Where a phase and a state change together, the phase's
/// holds.
namespace curves {
inline constexpr Curve hover{Curve::Shape::easeInOut, 0.18};
inline constexpr Curve phase{Curve::Shape::spring, 0.6};
inline constexpr Curve state{Curve::Shape::easeInOut, 0.3};
inline constexpr Curve form{Curve::Shape::spring, 0.5};
inline constexpr Curve progress{Curve::Shape::linear, 0.5};
} // namespace curves

/// The big text of the widget.
struct Readout
{
    enum class Kind { time, done, count };

    Kind kind = Kind::time;
    Phase phase = Phase::sitting; ///< that is done; the other kinds look the same in all phases

    bool operator==(const Readout&) const = default;
};

/// The line below the readout, by what it is about.
struct Hint
{
    Phase phase = Phase::sitting;
    TimerEngine::State state = TimerEngine::State::running;

    bool operator==(const Hint&) const = default;
};

/// The widget's picture on its way to the model: the model is followed at once, and what moves are
/// these values. Parts of 1 unless said otherwise.
struct WidgetMotion
{
    /// Stands at `model` as of `now`.
    WidgetMotion(const WidgetModel& model, Instant now);

    /// Sets out for `model`; arrives at once if not `animated`.
    void follow(const WidgetModel& model, Instant now, bool animated);

    /// Whether something moves that comes to an end, the arc and the controls' fading aside.
    bool isChangingAt(Instant now) const;

    /// Whether something moves without end: the figure, the pulse or the turning ring.
    bool isAliveAt(Instant now) const;

    /// The instant whose pose the figure shows: a paused one stays as it was.
    Instant figureTime(Instant now) const { return pausedAt.value_or(now); }

    WidgetModel model;
    Fade<Phase> phases;
    Fade<Readout> readouts;
    Fade<Hint> hints;
    Motion hover;       ///< how far the controls are shown
    Motion complete;    ///< the pulse and the brighter glow
    Motion turning;     ///< 1: the turning ring, 0: the arc
    Motion doneButton;  ///< the button that reports the push-ups
    Motion pauseButton; ///< button 1 of the controls
    Motion timeOpacity; ///< of the countdown
    Motion compactness; ///< 0: full, 1: compact
    Motion progress;    ///< the length of the arc
    std::optional<Instant> pausedAt;
};
