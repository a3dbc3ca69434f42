#pragma once

#include "core/Clock.h"

#include <algorithm>
#include <vector>

/// A clock that stands still until the test moves it. Its ticks come while it is moved on, one for
/// each half second, or by hand.
class ManualClock : public Clock
{
public:
    Instant now() const override { return m_now; }

    std::unique_ptr<Ticks> startTicks(std::function<void()> tick) override
    {
        return std::make_unique<ManualTicks>(*this, std::move(tick));
    }

    std::unique_ptr<Ticks> startFrames(double framesPerSecond, std::function<void()> frame) override
    {
        return std::make_unique<ManualFrames>(*this, framesPerSecond, std::move(frame));
    }

    /// Frame sources that run at this moment.
    int frameSources() const { return static_cast<int>(m_frames.size()); }

    /// The rate at which frames were last asked for.
    double framesPerSecond() const { return m_framesPerSecond; }

    /// Lets time pass with a frame every thirtieth of a second, as long as one is asked for. Calls
    /// `deliver` after each, for what is done an event-loop pass later.
    void passFrames(double seconds, const std::function<void()>& deliver)
    {
        const Instant end = m_now + seconds;
        while (end - m_now > 1e-9) {
            m_now = m_now + std::min(1.0 / 30, end - m_now);
            // A frame may end its own source.
            const auto frames = m_frames;
            for (ManualFrames* source : frames) {
                const std::function<void()> frame = source->frame;
                frame();
            }
            deliver();
        }
    }

    /// Tick sources that run at this moment.
    int tickSources() const { return m_tickSources; }

    /// The most tick sources that ever ran at once.
    int mostTickSources() const { return m_mostTickSources; }

    /// Moves time without a tick, as a machine that sleeps or a user who sets the clock.
    void jump(double seconds) { m_now = m_now + seconds; }

    /// One firing of the tick source, if one runs.
    void fire()
    {
        if (!m_running)
            return;
        const std::function<void()> tick = m_running->tick;
        tick();
    }

    /// Lets time pass, with a firing after each half second.
    void pass(double seconds)
    {
        const Instant end = m_now + seconds;
        while (end - m_now > 0.5) {
            jump(0.5);
            fire();
        }
        m_now = end;
        fire();
    }

private:
    struct ManualTicks : Ticks
    {
        ManualTicks(ManualClock& of, std::function<void()> onTick)
            : clock(of)
            , tick(std::move(onTick))
        {
            ++clock.m_tickSources;
            clock.m_mostTickSources = std::max(clock.m_mostTickSources, clock.m_tickSources);
            clock.m_running = this;
        }
        ManualTicks(const ManualTicks&) = delete;
        ManualTicks& operator=(const ManualTicks&) = delete;
        ~ManualTicks() override
        {
            --clock.m_tickSources;
            if (clock.m_running == this)
                clock.m_running = nullptr;
        }

        ManualClock& clock;
        std::function<void()> tick;
    };

    struct ManualFrames : Ticks
    {
        ManualFrames(ManualClock& of, double framesPerSecond, std::function<void()> onFrame)
            : clock(of)
            , frame(std::move(onFrame))
        {
            clock.m_framesPerSecond = framesPerSecond;
            clock.m_frames.push_back(this);
        }
        ManualFrames(const ManualFrames&) = delete;
        ManualFrames& operator=(const ManualFrames&) = delete;
        ~ManualFrames() override { std::erase(clock.m_frames, this); }

        ManualClock& clock;
        std::function<void()> frame;
    };

    std::vector<ManualFrames*> m_frames;
    double m_framesPerSecond = 0;
    Instant m_now{763637213.75}; // 2025-03-14 09:26:53.75 UTC
    int m_tickSources = 0;
    int m_mostTickSources = 0;
    ManualTicks* m_running = nullptr;
};
