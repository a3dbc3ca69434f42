#include "widget/FrameSource.h"

#include <algorithm>

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
    Q_EMIT animatedChanged(animated);
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
    Q_EMIT frame(now());
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
