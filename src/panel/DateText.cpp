#include "panel/DateText.h"

#include <QDateTime>
#include <QRegularExpression>

#include <cmath>

namespace {

/// The locale's long format without the day of the week, and with the month cut short.
QString dateFormat(const QLocale& locale)
{
    QString format = locale.dateFormat(QLocale::LongFormat);
    static const QRegularExpression weekday(
        QStringLiteral("[\\s,،、]*\\bd{3,4}\\b[\\s,،、.]*|\\(d{3,4}\\)|d{3,4}"));
    const QRegularExpressionMatch found = weekday.match(format);
    if (found.hasMatch()) {
        const bool between = found.capturedStart() > 0 && found.capturedEnd() < format.size();
        format.replace(found.capturedStart(), found.capturedLength(),
                       between ? QStringLiteral(" ") : QString());
    }
    format.replace(QStringLiteral("MMMM"), QStringLiteral("MMM"));
    return format.trimmed();
}

/// The locale's short format without seconds, which a few locales have in it.
QString timeFormat(const QLocale& locale)
{
    static const QRegularExpression seconds(QStringLiteral("[:.]s{1,2}"));
    return locale.timeFormat(QLocale::ShortFormat).remove(seconds);
}

/// What QDateTime can hold, roughly: 100 million years.
constexpr double mostSeconds = 3.2e15;

} // namespace

DateText::DateText(const QLocale& locale)
    : m_locale(locale)
    , m_format(dateFormat(locale) + QStringLiteral(", ") + timeFormat(locale))
{}

QString DateText::of(Instant instant) const
{
    const double seconds = std::floor(instant.seconds + referenceDateUnixSeconds);
    if (!(std::abs(seconds) < mostSeconds))
        return {};
    return m_locale.toString(QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seconds)), m_format);
}
