#pragma once

#include <QStringView>

/// The user's settings: single values under text keys. Nothing here fails aloud: what cannot be
/// read reads as missing, what cannot be written is lost.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    /// The stored integer; 0 when it is missing or no integer.
    virtual qint64 integer(QAnyStringView key) const = 0;
    virtual void setInteger(QAnyStringView key, qint64 value) = 0;

    /// The stored truth value; false when it is missing or none.
    virtual bool boolean(QAnyStringView key) const = 0;
    virtual void setBoolean(QAnyStringView key, bool value) = 0;

    /// The stored text; empty when it is missing or no text.
    virtual QString text(QAnyStringView key) const = 0;
    virtual void setText(QAnyStringView key, const QString& value) = 0;
};
