#include "log/DateText.h"

#include <charconv>
#include <chrono>
#include <cmath>

using namespace std::chrono;

namespace {

constexpr seconds referenceDate{static_cast<long long>(referenceDateUnixSeconds)};

void putDigits(char* to, int count, unsigned value)
{
    for (char* digit = to + count; digit-- != to; value /= 10)
        *digit = static_cast<char>('0' + value % 10);
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

std::optional<std::array<char, dateTextLength>> dateText(Instant instant)
{
    constexpr double secondsPerYear = 31556952;
    if (!(std::abs(instant.seconds) < 20000 * secondsPerYear))
        return std::nullopt;
    const sys_seconds time{referenceDate + seconds{std::llround(std::floor(instant.seconds))}};
    const auto day = floor<days>(time);
    const year_month_day date{day};
    if (date.year() < year{0} || date.year() > year{9999})
        return std::nullopt;
    const hh_mm_ss clock{time - day};

    std::array<char, dateTextLength> text{"0000-00-00T00:00:00"};
    text.back() = 'Z';
    putDigits(text.data(), 4, static_cast<unsigned>(static_cast<int>(date.year())));
    putDigits(text.data() + 5, 2, static_cast<unsigned>(date.month()));
    putDigits(text.data() + 8, 2, static_cast<unsigned>(date.day()));
    putDigits(text.data() + 11, 2, static_cast<unsigned>(clock.hours().count()));
    putDigits(text.data() + 14, 2, static_cast<unsigned>(clock.minutes().count()));
    putDigits(text.data() + 17, 2, static_cast<unsigned>(clock.seconds().count()));
    return text;
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
    return Instant{static_cast<double>((time.time_since_epoch() - referenceDate).count())};
}
