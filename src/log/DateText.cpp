#include "log/DateText.h"

#include <chrono>
#include <cmath>

using namespace std::chrono;

namespace {

constexpr seconds referenceDate{static_cast<long long>(referenceDateUnixSeconds)};

void putTwoDigits(char* to, unsigned value)
{
    to[0] = static_cast<char>('0' + value / 10);
    to[1] = static_cast<char>('0' + value % 10);
}

bool hasFourDigits(year year)
{
    return year >= std::chrono::year{0} && year <= std::chrono::year{9999};
}

/// `count` digits at `from`; nothing when one of them is none.
std::optional<unsigned> digits(std::string_view text, std::size_t from, std::size_t count)
{
    unsigned value = 0;
    for (const char c : text.substr(from, count)) {
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + static_cast<unsigned>(c - '0');
    }
    return value;
}

/// How far the local time of a zone text, "Z" or "+01:00", is ahead of UTC.
std::optional<seconds> zoneOffset(std::string_view zone)
{
    if (zone == "Z")
        return seconds{0};
    if (zone.size() != 6 || (zone[0] != '+' && zone[0] != '-') || zone[3] != ':')
        return std::nullopt;
    const auto hour = digits(zone, 1, 2);
    const auto minute = digits(zone, 4, 2);
    if (!hour || !minute || *hour > 23 || *minute > 59)
        return std::nullopt;
    const seconds offset = hours{*hour} + minutes{*minute};
    return zone[0] == '-' ? -offset : offset;
}

} // namespace

bool putDateText(char* to, Instant instant)
{
    constexpr double secondsPerYear = 31556952;
    if (!(std::abs(instant.seconds) < 20000 * secondsPerYear))
        return false;
    const auto whole = static_cast<long long>(std::floor(instant.seconds));
    const sys_seconds time{referenceDate + seconds{whole}};
    const auto midnight = floor<days>(time);
    const year_month_day date{midnight};
    if (!hasFourDigits(date.year()))
        return false;
    const auto fullYear = static_cast<unsigned>(static_cast<int>(date.year()));
    const auto secondOfDay = static_cast<unsigned>((time - midnight).count());

    constexpr std::string_view form = "0000-00-00T00:00:00Z";
    static_assert(form.size() == dateTextLength);
    form.copy(to, form.size());
    putTwoDigits(to, fullYear / 100);
    putTwoDigits(to + 2, fullYear % 100);
    putTwoDigits(to + 5, static_cast<unsigned>(date.month()));
    putTwoDigits(to + 8, static_cast<unsigned>(date.day()));
    putTwoDigits(to + 11, secondOfDay / 3600);
    putTwoDigits(to + 14, secondOfDay / 60 % 60);
    putTwoDigits(to + 17, secondOfDay % 60);
    return true;
}

std::optional<Instant> dateFromText(std::string_view text)
{
    if (text.size() < dateTextLength || text[4] != '-' || text[7] != '-' || text[10] != 'T' ||
        text[13] != ':' || text[16] != ':')
        return std::nullopt;
    const auto y = digits(text, 0, 4);
    const auto mon = digits(text, 5, 2);
    const auto d = digits(text, 8, 2);
    const auto h = digits(text, 11, 2);
    const auto min = digits(text, 14, 2);
    const auto s = digits(text, 17, 2);
    const auto offset = zoneOffset(text.substr(19));
    if (!y || !mon || !d || !h || !min || !s || !offset || *h > 23 || *min > 59 || *s > 59)
        return std::nullopt;
    const year_month_day date{year{static_cast<int>(*y)}, month{*mon}, day{*d}};
    if (!date.ok())
        return std::nullopt;
    const sys_seconds time = sys_days{date} + hours{*h} + minutes{*min} + seconds{*s} - *offset;
    if (!hasFourDigits(year_month_day{floor<days>(time)}.year()))
        return std::nullopt;
    return Instant{static_cast<double>((time.time_since_epoch() - referenceDate).count())};
}
