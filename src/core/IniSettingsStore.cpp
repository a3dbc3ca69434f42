#include "core/IniSettingsStore.h"

#include <QVariant>

IniSettingsStore::IniSettingsStore(const QString& path)
    : m_settings(path, QSettings::IniFormat)
{}

qint64 IniSettingsStore::integer(QAnyStringView key) const
{
    // Only the text of a whole number counts: a truth value or a fraction is none.
    bool ok = false;
    const qint64 value = text(key).toLongLong(&ok);
    return ok ? value : 0;
}

void IniSettingsStore::setInteger(QAnyStringView key, qint64 value)
{
    m_settings.setValue(key.toString(), QString::number(value));
}

bool IniSettingsStore::boolean(QAnyStringView key) const
{
    const QString value = text(key);
    return value.compare(QStringLiteral("true"), Qt::CaseInsensitive) == 0 ||
           value == QStringLiteral("1");
}

void IniSettingsStore::setBoolean(QAnyStringView key, bool value)
{
    m_settings.setValue(key.toString(), value ? QStringLiteral("true") : QStringLiteral("false"));
}

QString IniSettingsStore::text(QAnyStringView key) const
{
    // A list or a binary value in the file is not a QString, and so reads as empty.
    const QVariant value = m_settings.value(key.toString());
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

void IniSettingsStore::setText(QAnyStringView key, const QString& value)
{
    m_settings.setValue(key.toString(), value);
}
