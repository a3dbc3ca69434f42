#pragma once

#include "core/TimerEngine.h"
#include "support/Fakes.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

inline std::vector<std::string> plain(const QStringList& texts)
{
    std::vector<std::string> result;
    for (const QString& text : texts)
        result.push_back(text.toStdString());
    return result;
}

/// A timer on a clock that the test moves, with settings in memory. Unless told otherwise sitting
/// lasts 40 minutes and standing 15.
class EngineTest : public testing::Test
{
protected:
    using State = TimerEngine::State;
    using Texts = std::vector<std::string>;
    using Entries = std::vector<ListLog::Entry>;

    static constexpr qint64 largest = std::numeric_limits<qint64>::max();
    static constexpr qint64 smallest = std::numeric_limits<qint64>::min();

    ManualClock clock;
    MemorySettings settings;
    SilentPlayer sound;
    ListLog log;
    int timesLogWasNeeded = 0;

    std::unique_ptr<TimerEngine> makeEngine(const QStringList& arguments = {
                                                QStringLiteral("vantora")})
    {
        const auto neededLog = [this]() -> SessionLog& {
            ++timesLogWasNeeded;
            return log;
        };
        return std::make_unique<TimerEngine>(
            TimerEngine::Services{clock, settings, sound, neededLog}, arguments);
    }

    std::unique_ptr<TimerEngine> makeDemoEngine()
    {
        return makeEngine({QStringLiteral("vantora"), QStringLiteral("--demo")});
    }

    /// An engine in `phase`, begun just now, with nothing heard, logged or written before.
    std::unique_ptr<TimerEngine> makeEngineIn(Phase phase)
    {
        auto engine = makeEngine();
        engine->start(phase);
        return engine;
    }

    Texts soundsPlayed() const { return plain(sound.played); }
};
