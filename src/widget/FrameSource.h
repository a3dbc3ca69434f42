#pragma once

#include "core/Clock.h"

#include <QObject>

/// The frames of a window, one after another as long as each is asked for.
class FrameSource : public QObject
{
    Q_OBJECT

public:
    explicit FrameSource(Clock& clock);

    Instant now() const { return m_clock.now(); }

    /// Whether anything may move; the user may have switched the desktop's animations off.
    bool isAnimated() const { return m_animated; }
    void setAnimated(bool animated);

    /// The most frames a second that there are.
    static constexpr double maximumRate = 30;

    /// Asks for one more frame, no sooner than after the time of one at this rate. What another
    /// asks for at a higher rate comes to both. Nothing comes while nothing may move.
    void request(double framesPerSecond = maximumRate);

Q_SIGNALS:
    /// A frame is due. Whoever moves on asks for the next one now.
    void frame(Instant now);

    /// All that moves arrives at once: something may move again or may no longer, or the clock was
    /// set back.
    void interrupted();

private:
    void tick();
    void keepTicking();

    Clock& m_clock;
    std::unique_ptr<Ticks> m_ticks;
    Instant m_lastFrame;
    double m_rate = 0;          ///< of the ticks, in frames a second
    double m_requestedRate = 0; ///< for the next frame; 0 while there is to be none
    bool m_inFrame = false;
    bool m_animated = true;
};
