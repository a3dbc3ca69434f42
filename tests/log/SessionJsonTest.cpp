#include "Histories.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

namespace {

constexpr auto idMember = R"("id":"0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3")";
constexpr auto dateMember = R"("date":"2025-03-14T09:26:53Z")";

const SessionEntry morning{
    QUuid(0x0A1B2C3D, 0x4E5F, 0x6A7B, 0x8C, 0x9D, 0xAE, 0xBF, 0xC0, 0xD1, 0xE2, 0xF3),
    Instant{763637213}, 0, 1500, 0};

/// The array of one entry with the given members.
std::string arrayOf(const std::vector<std::string>& members)
{
    std::string text = "[{";
    for (const std::string& member : members)
        text += (text.size() > 2 ? "," : "") + member;
    return text + "}]";
}

std::string withDate(std::string_view date)
{
    return arrayOf({idMember, R"("date":")" + std::string(date) + '"', R"("phaseRaw":0)",
                    R"("seconds":1500)", R"("reps":0)"});
}

std::string withNumbers(const std::string& phaseRaw, const std::string& seconds,
                        const std::string& reps)
{
    return arrayOf({idMember, dateMember, R"("phaseRaw":)" + phaseRaw, R"("seconds":)" + seconds,
                    R"("reps":)" + reps});
}

std::string withExtra(const std::string& member)
{
    return arrayOf({member, idMember, dateMember, member, R"("phaseRaw":0)", R"("seconds":1500)",
                    R"("reps":0)", member});
}

/// Each character of the string as an escape of its code.
std::string escaped(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        std::array<char, 7> escape{};
        std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
        result += escape.data();
    }
    return result;
}

void expectMorning(const std::string& text)
{
    EXPECT_EQ(readText(text), std::vector{morning}) << text.substr(0, 400);
}

/// The seconds that an entry with this number text reads as.
std::optional<double> secondsRead(const std::string& number)
{
    const auto history = readText(withNumbers("0", number, "0"));
    return history ? std::optional(history->front().seconds) : std::nullopt;
}

} // namespace

TEST(SessionJson, AnEmptyHistoryIsAnEmptyArray)
{
    EXPECT_EQ(textOf({}), "[]");
    EXPECT_EQ(readText("[]"), std::vector<SessionEntry>{});
    EXPECT_EQ(readText(" [ \n\t\r] \n"), std::vector<SessionEntry>{});
}

TEST(SessionJson, AnEntryIsItsFiveKeysInTheirOrderWithNothingBetween)
{
    EXPECT_EQ(textOf({morning}),
              R"([{"id":"0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3","date":"2025-03-14T09:26:53Z",)"
              R"("phaseRaw":0,"seconds":1500,"reps":0}])");
}

TEST(SessionJson, EntriesFollowEachOtherAfterACommaAlone)
{
    const SessionEntry pushups{QUuid(), Instant{763637213}, 2, 0, 50};
    EXPECT_EQ(textOf({morning, pushups}),
              R"([{"id":"0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3","date":"2025-03-14T09:26:53Z",)"
              R"("phaseRaw":0,"seconds":1500,"reps":0},)"
              R"({"id":"00000000-0000-0000-0000-000000000000","date":"2025-03-14T09:26:53Z",)"
              R"("phaseRaw":2,"seconds":0,"reps":50}])");
}

TEST(SessionJson, ADateIsWrittenAsItsWholeSecondAndReadsBackAsThat)
{
    const struct
    {
        double seconds;
        std::string_view text;
    } dates[] = {
        {763637213.75, "2025-03-14T09:26:53Z"},   {763637213.999999, "2025-03-14T09:26:53Z"},
        {763637214, "2025-03-14T09:26:54Z"},      {0, "2001-01-01T00:00:00Z"},
        {-0.25, "2000-12-31T23:59:59Z"},          {-26479504, "2000-02-29T12:34:56Z"},
        {-978307200, "1970-01-01T00:00:00Z"},     {-978307200.25, "1969-12-31T23:59:59Z"},
        {-978307201.75, "1969-12-31T23:59:58Z"},  {-3182198400, "1900-03-01T00:00:00Z"},
        {-3182198400.5, "1900-02-28T23:59:59Z"},  {730943999, "2024-02-29T23:59:59Z"},
        {1169176448, "2038-01-19T03:14:08Z"},     {3129235200, "2100-03-01T00:00:00Z"},
        {252423993599.5, "9999-12-31T23:59:59Z"}, {-63113904000, "0001-01-01T00:00:00Z"},
        {-63145526400, "0000-01-01T00:00:00Z"},
    };
    for (const auto& [seconds, text] : dates) {
        SessionEntry entry = morning;
        entry.date = Instant{seconds};
        EXPECT_EQ(textOf({entry}), withDate(text));
        entry.date = Instant{std::floor(seconds)};
        EXPECT_EQ(readText(withDate(text)), std::vector{entry}) << text;
    }
}

TEST(SessionJson, ADateInAnotherZoneIsTheSameInstant)
{
    for (const auto* text :
         {"2025-03-14T09:26:53+00:00", "2025-03-14T09:26:53-00:00", "2025-03-14T10:26:53+01:00",
          "2025-03-13T21:56:53-11:30", "2025-03-14T15:11:53+05:45", "2025-03-15T09:25:53+23:59"})
        expectMorning(withDate(text));
}

TEST(SessionJson, KeysAreReadInAnyOrder)
{
    std::vector<std::string> members{idMember, dateMember, R"("phaseRaw":0)", R"("seconds":1500)",
                                     R"("reps":0)"};
    std::sort(members.begin(), members.end());
    int orders = 0;
    do {
        expectMorning(arrayOf(members));
        ++orders;
    } while (std::next_permutation(members.begin(), members.end()));
    EXPECT_EQ(orders, 120);
}

TEST(SessionJson, SpaceBetweenTokensMeansNothing)
{
    std::string text;
    char previous = 0;
    for (const char c : textOf({morning})) {
        const bool betweenKeyAndValue = c == ':' && previous == '"';
        if (betweenKeyAndValue || std::string_view("[]{},").find(c) != std::string_view::npos)
            text += std::string("\n\t ") + c + "\r\n ";
        else
            text += c;
        previous = c;
    }
    expectMorning(text);
}

TEST(SessionJson, AByteOrderMarkInFrontIsAccepted)
{
    expectMorning("\xEF\xBB\xBF" + textOf({morning}));
    expectMorning("\xEF\xBB\xBF \n" + textOf({morning}));
    EXPECT_EQ(readText("\xEF\xBB\xBF[]"), std::vector<SessionEntry>{});
}

TEST(SessionJson, UnknownKeysAreIgnoredWhateverTheyHold)
{
    for (const auto* value :
         {"null", "true", "false", "0", "-7", "1.5e-3", "18446744073709551616", R"("")",
          R"("text")", R"("2025-03-14T09:26:53.5Z")", R"("\ud83e\ude91\\\"\/\b\f\n\r\t")",
          "\"\xF0\x9F\xAA\x91\"", "[]", "{}", "[[],[[]],{}]", R"([1,"two",null,{"three":[false]}])",
          "-1e-999", R"({"id":1,"date":null,"phaseRaw":[],"seconds":{},"reps":"none"})",
          R"([{"id":"x","reps":{"reps":[{"reps":null}]}}])"})
        expectMorning(withExtra(std::string(R"("extra":)") + value));
}

TEST(SessionJson, KeysThatResembleTheKnownOnesAreUnknown)
{
    for (const auto* key : {"", "ID", "Id", "iD", "id ", " id", "dates", "phase", "phaseraw",
                            "second", "reps\\u0000", "id\\u0000", "\\u0069\\u0064\\u0021"})
        expectMorning(withExtra('"' + std::string(key) + R"(":[true])"));
}

TEST(SessionJson, AHundredThousandNestedArraysInAnUnknownKeyAreIgnored)
{
    constexpr std::size_t depth = 100'000;
    expectMorning(withExtra(R"("extra":)" + std::string(depth, '[') + std::string(depth, ']')));

    std::string objects = R"("extra":)";
    for (std::size_t i = 0; i < depth; ++i)
        objects += R"({"id":)";
    expectMorning(withExtra(objects + "0" + std::string(depth, '}')));
}

TEST(SessionJson, AHundredThousandNestedArraysInPlaceOfAnEntryAreRefused)
{
    constexpr std::size_t depth = 100'000;
    EXPECT_FALSE(readText(std::string(depth, '[') + std::string(depth, ']')));
    EXPECT_FALSE(readText(std::string(depth, '[')));
    EXPECT_FALSE(readText(withExtra(R"("extra":)" + std::string(depth, '['))));
}

TEST(SessionJson, EscapedKeysAndTextsAreReadAsWhatTheyStandFor)
{
    expectMorning(arrayOf(
        {'"' + escaped("id") + R"(":")" + escaped("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3") + '"',
         '"' + escaped("date") + R"(":")" + escaped("2025-03-14T09:26:53Z") + '"',
         '"' + escaped("phaseRaw") + R"(":0)", '"' + escaped("seconds") + R"(":1500)",
         '"' + escaped("reps") + R"(":0)"}));
    expectMorning(withDate("2\\u003025-\\u00303-14T09:26:53\\u005a"));
}

TEST(SessionJson, AnIdIsReadInEitherCaseAndWrittenInUpperCase)
{
    const std::string upper = textOf({morning});
    for (const std::string_view id :
         {"0a1b2c3d-4e5f-6a7b-8c9d-aebfc0d1e2f3", "0A1b2C3d-4e5F-6A7b-8c9D-aEbFc0d1e2F3"}) {
        std::string text = upper;
        text.replace(text.find("0A1B"), id.size(), id);
        const auto history = readText(text);
        ASSERT_TRUE(history) << id;
        EXPECT_EQ(textOf(*history), upper);
    }
}

TEST(SessionJson, EveryDigitOfAnIdIsKeptInItsPlace)
{
    constexpr std::string_view zeros = "00000000-0000-0000-0000-000000000000";
    for (std::size_t place = 0; place < zeros.size(); ++place) {
        if (zeros[place] == '-')
            continue;
        for (const char digit : std::string_view("123456789ABCDEF")) {
            std::string id(zeros);
            id[place] = digit;
            SessionEntry entry = morning;
            entry.id = QUuid::fromString(QString::fromStdString(id));
            ASSERT_NE(textOf({entry}).find(id), std::string::npos) << id;
            ASSERT_EQ(readText(textOf({entry})), std::vector{entry}) << id;
        }
    }
}

TEST(SessionJson, IntegersOfSixtyFourBitsAreExact)
{
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    for (const qint64 number :
         {qint64{7}, qint64{-1}, qint64{0}, qint64{2147483648}, qint64{-2147483649},
          qint64{4294967296}, qint64{9007199254740993}, least, least + 1, most - 1, most}) {
        const std::string text = std::to_string(number);
        SessionEntry entry = morning;
        entry.phaseRaw = number;
        entry.reps = number;
        EXPECT_EQ(textOf({entry}), withNumbers(text, "1500", text));
        EXPECT_EQ(readText(withNumbers(text, "1500", text)), std::vector{entry}) << text;
    }
}

TEST(SessionJson, SecondsAreReadInEveryFormOfANumber)
{
    const struct
    {
        std::string text;
        double seconds;
    } numbers[] = {
        {"1500", 1500},
        {"1500.0", 1500},
        {"1.5e3", 1500},
        {"1.5E+3", 1500},
        {"15000e-1", 1500},
        {"0.00015e7", 1500},
        {"-60", -60},
        {"0", 0},
        {"0.0", 0},
        {"0e0", 0},
        {"900.5", 900.5},
        {"0.1", 0.1},
        {"5e-324", 5e-324},
        {"2.2250738585072011e-308", 2.2250738585072011e-308},
        {"2.2250738585072014e-308", 2.2250738585072014e-308},
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
        {"17976931348623157" + std::string(292, '0'), std::numeric_limits<double>::max()},
        {"2147483648", 2147483648.0},
        {"9223372036854775807", 9223372036854775808.0},
        {"9223372036854775808", 9223372036854775808.0},
        {"-9223372036854775809", -9223372036854775808.0},
        {"18446744073709551615", 18446744073709551616.0},
        {"18446744073709551616", 18446744073709551616.0},
        {"1e22", 1e22},
        {"1e23", 1e23},
        {"9007199254740993", 9007199254740992.0},
        {"9007199254740992.999999999999999999999999999999", 9007199254740992.0},
        {"9007199254740993.000000000000000000000000000001", 9007199254740994.0},
        {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
        {"0." + std::string(400, '0') + "15e404", 1500},
        {"1500." + std::string(2000, '0'), 1500},
    };
    for (const auto& [text, seconds] : numbers)
        EXPECT_EQ(secondsRead(text), seconds) << text;
}

TEST(SessionJson, ExtremeSecondsReadBackBitForBit)
{
    using Limits = std::numeric_limits<double>;
    for (const double seconds : {0.0,
                                 -0.0,
                                 1500.0,
                                 900.5,
                                 0.1,
                                 1.0 / 3,
                                 1e15,
                                 1e16,
                                 1e17,
                                 1e21,
                                 1e22,
                                 1e23,
                                 -1e22,
                                 123456789012345680000.0,
                                 9007199254740993.0,
                                 9223372036854775808.0,
                                 18446744073709551616.0,
                                 Limits::max(),
                                 Limits::lowest(),
                                 Limits::min(),
                                 -Limits::min(),
                                 Limits::denorm_min(),
                                 -Limits::denorm_min(),
                                 Limits::epsilon(),
                                 std::nextafter(Limits::min(), 0),
                                 std::nextafter(1.0, 2.0),
                                 2.2250738585072011e-308}) {
        SessionEntry entry = morning;
        entry.seconds = seconds;
        const auto history = readText(textOf({entry}));
        ASSERT_TRUE(history) << textOf({entry});
        EXPECT_EQ(std::bit_cast<quint64>(history->front().seconds), std::bit_cast<quint64>(seconds))
            << textOf({entry});
    }
}

TEST(SessionJson, RandomEntriesReadBackBitForBit)
{
    constexpr int count = 120'000;
    std::mt19937_64 random(20250314);
    const auto bits = [&random] { return std::bit_cast<qint64>(random()); };
    std::uniform_int_distribution<qint64> wholeSecond(-63145526400, 252423993599);

    std::vector<SessionEntry> history;
    history.reserve(count);
    while (history.size() < count) {
        const auto seconds = std::bit_cast<double>(random());
        if (!std::isfinite(seconds))
            continue;
        const quint64 high = random();
        const quint64 low = random();
        const QUuid id(static_cast<uint>(high >> 32), static_cast<ushort>(high >> 16),
                       static_cast<ushort>(high), static_cast<uchar>(low >> 56),
                       static_cast<uchar>(low >> 48), static_cast<uchar>(low >> 40),
                       static_cast<uchar>(low >> 32), static_cast<uchar>(low >> 24),
                       static_cast<uchar>(low >> 16), static_cast<uchar>(low >> 8),
                       static_cast<uchar>(low));
        history.push_back(
            {id, Instant{static_cast<double>(wholeSecond(random))}, bits(), seconds, bits()});
    }

    const auto back = readText(textOf(history));
    ASSERT_TRUE(back);
    ASSERT_EQ(back->size(), history.size());
    for (std::size_t i = 0; i < history.size(); ++i) {
        ASSERT_EQ((*back)[i], history[i]) << textOf({history[i]});
        ASSERT_EQ(std::signbit((*back)[i].seconds), std::signbit(history[i].seconds));
    }
}

TEST(SessionJson, RandomSecondsWithMoreDigitsThanNeededAreRoundedToTheNearest)
{
    std::mt19937_64 random(53);
    for (int i = 0; i < 20'000; ++i) {
        const auto seconds = std::bit_cast<double>(random());
        if (!std::isfinite(seconds))
            continue;
        std::array<char, 64> text{};
        const int digits = static_cast<int>(random() % 30);
        ASSERT_GT(std::snprintf(text.data(), text.size(), "%.*e", digits, seconds), 0);
        const double nearest = std::strtod(text.data(), nullptr);
        if (!std::isfinite(nearest))
            continue; // rounded up out of the range
        ASSERT_EQ(secondsRead(text.data()), nearest) << text.data();
    }
}

TEST(SessionJson, SecondsThatAreNoNumberHaveNoText)
{
    for (const double seconds :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        SessionEntry entry = morning;
        entry.seconds = seconds;
        EXPECT_FALSE(toJson({entry}));
        EXPECT_FALSE(toJson({morning, entry, morning}));
    }
}

TEST(SessionJson, ADateOutsideFourDigitYearsHasNoText)
{
    using Limits = std::numeric_limits<double>;
    for (const double seconds :
         {252423993600.0, -63145526400.5, 1e12, -1e12, 1e18, -1e18, 1e300, Limits::max(),
          Limits::lowest(), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        SessionEntry entry = morning;
        entry.date = Instant{seconds};
        EXPECT_FALSE(toJson({entry})) << seconds;
        EXPECT_FALSE(toJson({morning, entry})) << seconds;
    }
}

TEST(SessionJson, AMinusBeforeAZeroIsKept)
{
    EXPECT_TRUE(std::signbit(secondsRead("-0").value()));
}
