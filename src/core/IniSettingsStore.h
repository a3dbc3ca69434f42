#pragma once

#include "core/SettingsStore.h"

#include <QSettings>

/// The settings in an INI file, which is written soon after each change. Keys of others in the
/// file are kept.
class IniSettingsStore : public SettingsStore
{
public:
    explicit IniSettingsStore(const QString& path);

    qint64 integer(QAnyStringView key) const override;
    void setInteger(QAnyStringView key, qint64 value) override;
    bool boolean(QAnyStringView key) const override;
    void setBoolean(QAnyStringView key, bool value) override;
    QString text(QAnyStringView key) const override;
    void setText(QAnyStringView key, const QString& value) override;

private:
    QSettings m_settings;
};
