#include "widget/FrameSource.h"

#include <algorithm>
#include <utility>

FrameSource::FrameSource(Clock& clock)
    : m_clock(clock)
{}

void FrameSource::setAnimated(bool animated)
{
    if (animated == m_animated)
        return;
    m_animated = animated;
    m_requestedRate = 0;
    keepTicking();
    Q_EMIT interrupted();
}

void FrameSource::request(double framesPerSecond)
{
    if (!m_animated)
        return;
    m_requestedRate = std::max(m_requestedRate, framesPerSecond);
    if (!m_inFrame)
        keepTicking();
}

void FrameSource::tick()
{
    m_requestedRate = 0;
    m_inFrame = true;
    if (const Instant last = std::exchange(m_lastFrame, now()); m_lastFrame - last < 0)
        Q_EMIT interrupted();
    Q_EMIT frame(m_lastFrame);
    m_inFrame = false;
    keepTicking();
}

void FrameSource::keepTicking()
{
    if (m_requestedRate == m_rate)
        return;
    m_rate = m_requestedRate;
    m_ticks = m_rate > 0 ? m_clock.startFrames(m_rate, [this] { tick(); }) : nullptr;
}
