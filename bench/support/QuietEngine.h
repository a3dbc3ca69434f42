#pragma once

#include "core/SessionLog.h"
#include "core/SoundPlayer.h"
#include "core/TimerEngine.h"
#include "platform/SystemClock.h"
#include "widget/FrameSource.h"

/// What a widget shows and moves by: an engine on the machine's clock that plays nothing and logs
/// nothing.
class QuietEngine
{
public:
    explicit QuietEngine(SettingsStore& settings, const QStringList& arguments = {})
        : engine({clock, settings, m_sound, [this]() -> SessionLog& { return m_log; }}, arguments)
    {}

private:
    class NoSound : public SoundPlayer
    {
    public:
        void play(const QString&) override {}
    };

    class NoLog : public SessionLog
    {
    public:
        void log(Phase, double, qint64) override {}
    };

    NoSound m_sound;
    NoLog m_log;

public:
    SystemClock clock;
    FrameSource frames{clock};
    TimerEngine engine;
};
