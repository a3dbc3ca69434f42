#pragma once

#include "core/Clock.h"
#include "core/Phase.h"
#include "core/Published.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class SessionLog;
class SettingsStore;
class SoundPlayer;

/// The model of the program: the phase under way, its countdown, the cycle and the settings.
/// A timed phase that reaches zero waits in State::complete until advance() is called.
/// All of it lives on the main thread.
class TimerEngine : public Observable
{
    Q_OBJECT

public:
    enum class State {
        running,  ///< the countdown runs, or the push-ups wait for the user
        paused,   ///< a timed phase is frozen
        complete, ///< a timed phase reached zero
    };

    /// What the engine needs of the world. All must outlive it; `log` is called only when
    /// something is logged, so that it can make the log on first use.
    struct Services
    {
        Clock& clock;
        SettingsStore& settings;
        SoundPlayer& sound;
        std::function<SessionLog&()> log;
    };

    /// Loads the settings and starts a sitting countdown. The argument "--demo" makes sitting last
    /// 10 s and standing 8 s.
    TimerEngine(Services services, const QStringList& launchArguments);
    ~TimerEngine() override;

    /// Starts `phase` from its beginning, running.
    void start(Phase phase);

    /// Freezes a running countdown, or lets a frozen one go on. Does nothing in push-ups or when
    /// the phase is complete.
    void togglePause();

    /// Logs the phase under way if it counts, and starts the next one. With `playCompletionSound`
    /// the user has done the push-ups: the sound is played and they are logged.
    void advance(bool playCompletionSound);

    /// The full length of a phase in seconds, or nothing for an untimed one. Stops the process when
    /// the minutes are too many to be counted in seconds.
    std::optional<double> duration(Phase phase) const;

    /// The countdown as "39:59": whole seconds, rounded up, so that 0:00 means over.
    QString timeString() const;

    /// The title of the tray item, as "🪑 39:59".
    QString menuBarTitle() const;

    /// The part of the phase that is still to come, from 0 to 1, or nothing in an untimed phase.
    std::optional<double> progress() const;

    /// Poses the engine: no tick and no end any more, so that what is set on it stays.
    void freeze();

Q_SIGNALS:
    /// Sent with the new value after each assignment to compactMode, also when it stays the same.
    void compactModeSet(bool compact);

public:
    const bool demoMode;

    Published<Phase> phase{*this, Phase::sitting};
    Published<State> state{*this, State::running};
    /// Seconds left of a timed phase, as last read from the clock; 0 in push-ups.
    Published<double> remaining{*this, 0.0};
    /// The number of the cycle under way, from 1.
    Published<qint64> cycle{*this, 1};
    /// Settings: lengths in minutes, push-ups of a break. Setting them stores them, and a new
    /// length of the phase under way keeps the time already spent.
    Published<qint64> sittingMinutes;
    Published<qint64> standingMinutes;
    Published<qint64> pushupCount;
    Published<bool> compactMode;

private:
    void startTicking();
    void stopTicking();
    void tick();
    void playCompletionSoundOfPhase();
    void logCurrentPhase(bool pushupsDone);
    void persistSettings();
    void adjustRunningPhase(Phase changed, qint64 oldMinutes, qint64 newMinutes);

    Services m_services;
    std::optional<Instant> m_endDate;
    std::optional<double> m_pausedRemaining;
    std::unique_ptr<Ticks> m_ticks;
};
