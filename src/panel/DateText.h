#pragma once

#include "core/Clock.h"

#include <QLocale>

/// Writes dates as people of a locale write them short but in words, with the time of day to the
/// minute: "14 Mar 2025, 09:26".
class DateText
{
public:
    explicit DateText(const QLocale& locale);

    /// In local time; empty for an instant that no calendar has.
    QString of(Instant instant) const;

private:
    QLocale m_locale;
    QString m_format;
};
