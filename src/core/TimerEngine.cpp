#include "core/TimerEngine.h"

#include "core/Fatal.h"
#include "core/SessionLog.h"
#include "core/SettingsStore.h"
#include "core/SoundPlayer.h"

#include <algorithm>

namespace {

constexpr auto sittingMinutesKey = "sittingMinutes";
constexpr auto standingMinutesKey = "standingMinutes";
constexpr auto pushupCountKey = "pushupCount";
constexpr auto compactModeKey = "compactMode";

constexpr double demoSittingSeconds = 10;
constexpr double demoStandingSeconds = 8;

/// A phase that was left before this many seconds is not worth an entry in the log.
constexpr double leastLoggedSeconds = 60;
constexpr double leastLoggedDemoSeconds = 1;

/// What a shortened phase shows at least, in seconds.
constexpr double leastRemainingSeconds = 1;

qint64 positiveOr(qint64 stored, qint64 fallback)
{
    return stored > 0 ? stored : fallback;
}

} // namespace

TimerEngine::TimerEngine(Services services, const QStringList& launchArguments)
    : demoMode(launchArguments.contains(QStringLiteral("--demo")))
    , sittingMinutes(*this, positiveOr(services.settings.integer(sittingMinutesKey), 40),
                     [this](qint64 old) {
                         persistSettings();
                         adjustRunningPhase(Phase::sitting, old, sittingMinutes());
                     })
    , standingMinutes(*this, positiveOr(services.settings.integer(standingMinutesKey), 15),
                      [this](qint64 old) {
                          persistSettings();
                          adjustRunningPhase(Phase::standing, old, standingMinutes());
                      })
    , pushupCount(*this, positiveOr(services.settings.integer(pushupCountKey), 50),
                  [this](qint64) { persistSettings(); })
    , compactMode(*this, services.settings.boolean(compactModeKey),
                  [this](bool) {
                      m_services.settings.setBoolean(compactModeKey, compactMode());
                      Q_EMIT compactModeSet(compactMode());
                  })
    , m_services(std::move(services))
{
    start(Phase::sitting);
}

TimerEngine::~TimerEngine() = default;

std::optional<double> TimerEngine::duration(Phase of) const
{
    switch (of) {
    case Phase::sitting:
        return demoMode ? demoSittingSeconds
                        : static_cast<double>(multiplyOrStop(sittingMinutes(), 60));
    case Phase::standing:
        return demoMode ? demoStandingSeconds
                        : static_cast<double>(multiplyOrStop(standingMinutes(), 60));
    case Phase::pushups:
        break;
    }
    return std::nullopt;
}

void TimerEngine::start(Phase next)
{
    phase = next;
    m_pausedRemaining.reset();
    const std::optional<double> length = duration(next);
    if (!length) {
        m_endDate.reset();
        remaining = 0;
        state = State::running;
        stopTicking();
        return;
    }
    m_endDate = m_services.clock.now() + *length;
    remaining = *length;
    state = State::running;
    startTicking();
}

void TimerEngine::startTicking()
{
    stopTicking();
    m_ticks = m_services.clock.startTicks([this] { tick(); });
    tick();
}

void TimerEngine::stopTicking()
{
    m_ticks.reset();
}

void TimerEngine::tick()
{
    if (state() != State::running || !m_endDate)
        return;
    const double left = *m_endDate - m_services.clock.now();
    if (left > 0) {
        remaining = left;
        return;
    }
    remaining = 0;
    state = State::complete;
    stopTicking();
    playCompletionSoundOfPhase();
}

void TimerEngine::togglePause()
{
    if (!duration(phase()))
        return;
    switch (state()) {
    case State::running:
        m_pausedRemaining = remaining();
        state = State::paused;
        stopTicking();
        break;
    case State::paused:
        m_endDate = m_services.clock.now() + m_pausedRemaining.value_or(0);
        m_pausedRemaining.reset();
        state = State::running;
        startTicking();
        break;
    case State::complete:
        break;
    }
}

void TimerEngine::advance(bool playCompletionSound)
{
    // Sound and log speak of the phase that is left, so they come before the next one starts.
    if (playCompletionSound)
        playCompletionSoundOfPhase();
    logCurrentPhase(playCompletionSound);
    if (phase() == Phase::pushups)
        cycle = addOrStop(cycle(), 1);
    start(successorOf(phase()));
}

void TimerEngine::freeze()
{
    stopTicking();
    m_endDate.reset();
}

void TimerEngine::playCompletionSoundOfPhase()
{
    m_services.sound.play(factsOf(phase()).completionSoundName);
}

void TimerEngine::logCurrentPhase(bool pushupsDone)
{
    if (phase() == Phase::pushups) {
        if (pushupsDone)
            m_services.log().log(Phase::pushups, 0, pushupCount());
        return;
    }
    const std::optional<double> length = duration(phase());
    if (!length)
        return;
    // Measured against the setting of this moment, and against the time that is shown.
    const double elapsed = state() == State::complete ? *length : *length - remaining();
    if (elapsed >= (demoMode ? leastLoggedDemoSeconds : leastLoggedSeconds))
        m_services.log().log(phase(), elapsed, 0);
}

void TimerEngine::persistSettings()
{
    m_services.settings.setInteger(sittingMinutesKey, sittingMinutes());
    m_services.settings.setInteger(standingMinutesKey, standingMinutes());
    m_services.settings.setInteger(pushupCountKey, pushupCount());
}

void TimerEngine::adjustRunningPhase(Phase changed, qint64 oldMinutes, qint64 newMinutes)
{
    if (demoMode || phase() != changed || newMinutes == oldMinutes)
        return;
    const auto delta =
        static_cast<double>(multiplyOrStop(subtractOrStop(newMinutes, oldMinutes), 60));
    switch (state()) {
    case State::running:
        if (!m_endDate)
            return;
        // The end moves by all of it: a phase shortened below the time already spent shows its
        // last second and completes at the next tick.
        m_endDate = *m_endDate + delta;
        remaining = std::max(remaining() + delta, leastRemainingSeconds);
        break;
    case State::paused:
        m_pausedRemaining = std::max(m_pausedRemaining.value_or(0) + delta, leastRemainingSeconds);
        remaining = *m_pausedRemaining;
        break;
    case State::complete:
        break;
    }
}
