#pragma once

#include "core/SessionLog.h"
#include "core/SettingsStore.h"
#include "core/SoundPlayer.h"

#include <QMap>
#include <QStringList>

#include <vector>

/// Settings in memory, with a note of each write in its order.
class MemorySettings : public SettingsStore
{
public:
    QMap<QString, QString> values;
    QStringList writes;

    qint64 integer(QAnyStringView key) const override
    {
        return values.value(key.toString()).toLongLong();
    }
    void setInteger(QAnyStringView key, qint64 value) override
    {
        setText(key, QString::number(value));
    }
    bool boolean(QAnyStringView key) const override
    {
        return values.value(key.toString()) == QStringLiteral("true");
    }
    void setBoolean(QAnyStringView key, bool value) override
    {
        setText(key, value ? QStringLiteral("true") : QStringLiteral("false"));
    }
    QString text(QAnyStringView key) const override { return values.value(key.toString()); }
    void setText(QAnyStringView key, const QString& value) override
    {
        values[key.toString()] = value;
        writes << key.toString() + QLatin1Char('=') + value;
    }
};

/// Remembers what it was asked to play.
class SilentPlayer : public SoundPlayer
{
public:
    QStringList played;

    void play(const QString& name) override { played << name; }
};

/// Remembers what it was asked to log.
class ListLog : public SessionLog
{
public:
    struct Entry
    {
        Phase phase;
        double seconds;
        qint64 reps;

        bool operator==(const Entry&) const = default;
    };
    std::vector<Entry> entries;

    void log(Phase phase, double seconds, qint64 reps) override
    {
        entries.push_back({phase, seconds, reps});
    }
};
