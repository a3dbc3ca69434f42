#include "panel/DateText.h"

#include <QDate>

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>

namespace {

/// Local time is another until this ends.
class TimeZone
{
public:
    explicit TimeZone(const char* name)
        : m_before(qgetenv("TZ"))
        , m_wasSet(qEnvironmentVariableIsSet("TZ"))
    {
        qputenv("TZ", name);
        tzset();
    }
    ~TimeZone()
    {
        if (m_wasSet)
            qputenv("TZ", m_before);
        else
            qunsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    QByteArray m_before;
    bool m_wasSet;
};

/// 2025-03-14 09:26:53.75 UTC, a Friday.
constexpr Instant piDay{763637213.75};

std::string textOf(const char* locale, Instant instant = piDay)
{
    QString text = DateText(QLocale(QString::fromLatin1(locale))).of(instant);
    // Some locales put a narrow space before AM and PM.
    return text.replace(QChar(0x202F), u' ').replace(QChar(0xA0), u' ').toStdString();
}

} // namespace

TEST(DateTextTest, itIsWrittenAsTheLocaleWritesIt)
{
    const TimeZone zone("UTC");
    EXPECT_EQ(textOf("en_US"), "Mar 14, 2025, 9:26 AM");
    EXPECT_EQ(textOf("en_GB"), "14 Mar 2025, 09:26");
    EXPECT_EQ(textOf("de_DE"), "14. März 2025, 09:26");
    EXPECT_EQ(textOf("fr_FR"), "14 mars 2025, 09:26");
    EXPECT_EQ(textOf("ja_JP"), "2025年3月14日, 9:26");
    EXPECT_EQ(textOf("C"), "14 Mar 2025, 09:26");
}

TEST(DateTextTest, theMonthIsCutShort)
{
    const TimeZone zone("UTC");
    const Instant september = piDay + 184.0 * 86400;
    EXPECT_EQ(textOf("en_US", september), "Sep 14, 2025, 9:26 AM");
    EXPECT_EQ(textOf("C", september), "14 Sep 2025, 09:26");
}

/// In every locale that there is, with the seconds and the weekday at values that stand for nothing
/// else in that date.
TEST(DateTextTest, noLocaleHasTheWeekdayOrTheSecondsOrLacksTheRest)
{
    const TimeZone zone("UTC");
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    ASSERT_GT(locales.size(), 100);
    for (QLocale locale : locales) {
        locale.setNumberOptions(QLocale::OmitGroupSeparator);
        const QString text = DateText(locale).of(piDay);
        const auto what = [&] { return locale.name().toStdString() + ": " + text.toStdString(); };
        EXPECT_FALSE(text.contains(locale.dayName(5, QLocale::LongFormat))) << what();
        EXPECT_FALSE(text.contains(locale.standaloneDayName(5, QLocale::LongFormat))) << what();
        EXPECT_FALSE(text.contains(locale.toString(53))) << what();
        EXPECT_TRUE(text.contains(locale.toString(2025)) || text.contains(locale.toString(25)))
            << what();
        EXPECT_TRUE(text.contains(locale.toString(14))) << what();
        EXPECT_TRUE(text.contains(locale.toString(26))) << what();
        EXPECT_TRUE(text.contains(locale.monthName(3, QLocale::ShortFormat)) ||
                    text.contains(locale.standaloneMonthName(3, QLocale::ShortFormat)) ||
                    text.contains(locale.toString(3)))
            << what();
    }
}

TEST(DateTextTest, itIsLocalTime)
{
    {
        const TimeZone zone("America/New_York");
        EXPECT_EQ(textOf("en_US"), "Mar 14, 2025, 5:26 AM");
        EXPECT_EQ(textOf("en_US", piDay + -5.0 * 86400), "Mar 9, 2025, 5:26 AM");
        EXPECT_EQ(textOf("en_US", piDay + -6.0 * 86400), "Mar 8, 2025, 4:26 AM") << "in winter";
    }
    {
        const TimeZone zone("Asia/Kolkata");
        EXPECT_EQ(textOf("en_US"), "Mar 14, 2025, 2:56 PM");
    }
    {
        const TimeZone zone("Pacific/Auckland");
        EXPECT_EQ(textOf("de_DE", piDay + 6 * 3600), "15. März 2025, 04:26");
    }
}

TEST(DateTextTest, anotherZoneIsTakenUpByTheNextText)
{
    const DateText text{QLocale::c()};
    {
        const TimeZone zone("UTC");
        EXPECT_EQ(text.of(piDay), QStringLiteral("14 Mar 2025, 09:26"));
    }
    const TimeZone zone("Asia/Tokyo");
    EXPECT_EQ(text.of(piDay), QStringLiteral("14 Mar 2025, 18:26"));
}

TEST(DateTextTest, theMinuteIsTheOneThatHasBegun)
{
    const TimeZone zone("UTC");
    EXPECT_EQ(textOf("C", piDay + 6.24), "14 Mar 2025, 09:26");
    EXPECT_EQ(textOf("C", piDay + 6.25), "14 Mar 2025, 09:27");
}

TEST(DateTextTest, thereIsTimeBeforeAndAfter)
{
    const TimeZone zone("UTC");
    EXPECT_EQ(textOf("C", Instant{0}), "1 Jan 2001, 00:00");
    EXPECT_EQ(textOf("C", Instant{-0.25}), "31 Dec 2000, 23:59");
    EXPECT_EQ(textOf("C", Instant{-referenceDateUnixSeconds}), "1 Jan 1970, 00:00");
    EXPECT_EQ(textOf("C", Instant{-referenceDateUnixSeconds - 0.25}), "31 Dec 1969, 23:59");
    EXPECT_EQ(textOf("C", Instant{-referenceDateUnixSeconds - 365.0 * 86400}), "1 Jan 1969, 00:00");
    EXPECT_EQ(textOf("C", piDay + 146097.0 * 86400), "14 Mar 2425, 09:26");
}

TEST(DateTextTest, instantsThatNoCalendarHasAreEmpty)
{
    using limits = std::numeric_limits<double>;
    for (const double seconds : {limits::quiet_NaN(), limits::infinity(), -limits::infinity(),
                                 1e300, -1e300, 9.3e18, -9.3e18, 1e17})
        EXPECT_EQ(textOf("C", Instant{seconds}), "") << seconds;
}

TEST(DateTextTest, theFarthestInstantsHaveAText)
{
    for (const double seconds : {1e14, -1e14, 3.1e15, -3.1e15}) {
        EXPECT_NE(textOf("C", Instant{seconds}), "") << seconds;
        EXPECT_NE(textOf("ja_JP", Instant{seconds}), "") << seconds;
    }
}
