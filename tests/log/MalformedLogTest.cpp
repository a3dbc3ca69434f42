#include "Histories.h"
#include "LogFolder.h"
#include "QuickFileSystem.h"
#include "Unprivileged.h"
#include "log/SessionStore.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace {

using namespace std::string_literals;

constexpr std::string_view idText = R"("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3")";
constexpr std::string_view dateText = R"("2025-03-14T09:26:53Z")";

struct Members
{
    std::string id{idText};
    std::string date{dateText};
    std::string phaseRaw{"0"};
    std::string seconds{"1500"};
    std::string reps{"0"};
};

std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (const std::string_view part : parts)
        text += part;
    return text;
}

std::string objectOf(const Members& members, std::string_view extra = {})
{
    return joined({R"({"id":)", members.id, R"(,"date":)", members.date, R"(,"phaseRaw":)",
                   members.phaseRaw, R"(,"seconds":)", members.seconds, R"(,"reps":)", members.reps,
                   extra, "}"});
}

std::string arrayOf(std::string_view entries)
{
    return joined({"[", entries, "]"});
}

const std::string object = objectOf({});
const std::string array = arrayOf(object);

std::string with(std::string Members::*member, const std::string& value)
{
    Members members;
    members.*member = value;
    return arrayOf(objectOf(members));
}

std::string withId(std::string_view text)
{
    return with(&Members::id, joined({"\"", text, "\""}));
}

std::string withDate(std::string_view text)
{
    return with(&Members::date, joined({"\"", text, "\""}));
}

std::string withExtra(std::string_view value)
{
    return arrayOf(objectOf({}, joined({R"(,"extra":)", value})));
}

std::string without(std::string_view member)
{
    std::string text = array;
    text.erase(text.find(member), member.size());
    return text;
}

/// The text with another name for the last "reps" in it.
std::string withoutReps(std::string text, std::string_view otherName = "extra")
{
    constexpr std::string_view name = "reps";
    return text.replace(text.rfind(name), name.size(), otherName);
}

/// Each ASCII character of the text as two bytes, low one first or last.
std::string utf16(std::string_view text, bool lowFirst)
{
    std::string result;
    for (const char c : text)
        result += lowFirst ? std::string{c, '\0'} : std::string{'\0', c};
    return result;
}

struct BadFile
{
    std::string what;
    std::string content;
};

using BadFiles = std::vector<BadFile>;

const BadFiles badDocuments{
    {"nothing", ""},
    {"space alone", " \n\t"},
    {"a byte order mark alone", "\xEF\xBB\xBF"},
    {"two byte order marks", "\xEF\xBB\xBF\xEF\xBB\xBF" + array},
    {"a byte order mark behind", array + "\xEF\xBB\xBF"},
    {"half a byte order mark", "\xEF\xBB" + array},
    {"UTF-16, low byte first", joined({"\xFF\xFE", utf16(array, true)})},
    {"UTF-16, high byte first", joined({"\xFE\xFF", utf16(array, false)})},
    {"UTF-16 without a mark", utf16(array, true)},
    {"UTF-32", "\xFF\xFE\0\0[\0\0\0]\0\0\0"s},
    {"a NUL byte alone", "\0"s},
    {"a NUL byte in front", "\0"s + array},
    {"a NUL byte behind", array + "\0"s},
    {"NUL bytes and more behind", array + "\0\0[]"s},
    {"a NUL byte in an empty array", "[\0]"s},
    {"a page of NUL bytes", std::string(4096, '\0')},
    {"an object", object},
    {"an empty object", "{}"},
    {"an object of entries", R"({"entries":)" + array + "}"},
    {"a number", "7"},
    {"a text", R"("[]")"},
    {"null", "null"},
    {"true", "true"},
    {"a bare word", "sessions"},
    {"an array of an array", "[[]]"},
    {"an array of an array of entries", arrayOf(array)},
    {"an array of numbers", "[1,2,3]"},
    {"an array of texts", R"(["entry"])"},
    {"a null entry", "[null]"},
    {"a null entry behind a good one", arrayOf(object + ",null")},
    {"a null entry before a good one", arrayOf(joined({"null,", object}))},
    {"an empty entry", "[{}]"},
    {"an empty entry behind a good one", arrayOf(object + ",{}")},
    {"a number behind a good entry", arrayOf(object + ",0")},
    {"no closing bracket", "[" + object},
    {"no opening bracket", object + "]"},
    {"a second closing bracket", array + "]"},
    {"a bracket closed by a brace", "[" + object + "}"},
    {"a second array", array + array},
    {"a comma behind the array", array + ","},
    {"a word behind the array", array + " end"},
    {"a letter behind an empty array", "[]x"},
    {"a comma behind the last entry", arrayOf(object + ",")},
    {"a comma before the first entry", arrayOf(joined({",", object}))},
    {"two commas between entries", arrayOf(joined({object, ",,", object}))},
    {"no comma between entries", arrayOf(object + object)},
    {"a comma alone", "[,]"},
    {"a comma behind the last member", arrayOf(objectOf({}, ","))},
    {"a member without a value", arrayOf(objectOf({}, R"(,"extra":)"))},
    {"a member without a colon", arrayOf(objectOf({}, R"(,"extra" 1)"))},
    {"a member without a key", arrayOf(objectOf({}, ",1"))},
    {"a key that is a number", arrayOf(objectOf({}, ",1:1"))},
    {"a key without quotes", arrayOf(objectOf({}, ",extra:1"))},
    {"a semicolon between members", arrayOf(objectOf({}, R"(;"extra":1)"))},
    {"a line comment", "// log\n" + array},
    {"a block comment", arrayOf(joined({"/* log */", object}))},
    {"a hash comment", "# log\n" + array},
    {"single quotes", "[{'id':1}]"},
    {"single quotes in an extra key", withExtra("'text'")},
    {"vertical tab as space", arrayOf(joined({"\v", object}))},
    {"form feed as space", arrayOf(joined({"\f", object}))},
    {"no-break space", arrayOf(joined({"\xC2\xA0", object}))},
};

const BadFiles badKeys{
    {"no id", without(joined({R"("id":)", idText, ","}))},
    {"no date", without(joined({R"("date":)", dateText, ","}))},
    {"no phaseRaw", without(R"("phaseRaw":0,)")},
    {"no seconds", without(R"("seconds":1500,)")},
    {"no reps", without(R"(,"reps":0)")},
    {"no reps, and the other keys twice",
     arrayOf(withoutReps(objectOf({}, R"(,"phaseRaw":0,"seconds":1500)")))},
    {"reps in a nested object only",
     arrayOf(withoutReps(objectOf({.seconds = R"(1500,"extra":{"reps":0})"})))},
    {"reps in the first entry only", arrayOf(joined({object, ",", withoutReps(object)}))},
    {"reps in the second entry only", arrayOf(joined({withoutReps(object), ",", object}))},
    {"reps in upper case", arrayOf(withoutReps(object, "REPS"))},
    {"a good value overridden by null", arrayOf(objectOf({}, R"(,"reps":null)"))},
    {"null overridden by a good value", arrayOf(objectOf({.reps = "null"}, R"(,"reps":0)"))},
};

const BadFiles badIds{
    {"id empty", withId("")},
    {"id in braces", withId("{0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3}")},
    {"id in half braces", withId("{0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3")},
    {"id without hyphens", withId("0A1B2C3D4E5F6A7B8C9DAEBFC0D1E2F3")},
    {"id without hyphens, filled up to 36", withId("0A1B2C3D4E5F6A7B8C9DAEBFC0D1E2F30000")},
    {"id of 35 characters", withId("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F")},
    {"id of 37 characters", withId("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F30")},
    {"id with junk behind", withId("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3 and more")},
    {"id with a space in front", withId(" 0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3")},
    {"id with a NUL behind", withId("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3\\u0000")},
    {"id with a digit beyond F", withId("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2G3")},
    {"id with a sign", withId("+A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3")},
    {"id with 0x", withId("0x1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3")},
    {"id with a letter whose lower case is a digit's neighbour",
     withId("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F\\u0010")},
    {"id with hyphens elsewhere", withId("0A1B2C3D4-E5F-6A7B-8C9D-AEBFC0D1E2F3")},
    {"id with other dashes", withId("0A1B2C3D_4E5F_6A7B_8C9D_AEBFC0D1E2F3")},
    {"id with wide digits", withId("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E\xEF\xBC\x91")},
    {"id as urn", withId("urn:uuid:0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F3")},
};

const BadFiles badDates{
    {"date empty", withDate("")},
    {"date with a fraction", withDate("2025-03-14T09:26:53.5Z")},
    {"date with a zero fraction", withDate("2025-03-14T09:26:53.000Z")},
    {"date with a comma fraction", withDate("2025-03-14T09:26:53,5Z")},
    {"date without a zone", withDate("2025-03-14T09:26:53")},
    {"date alone", withDate("2025-03-14")},
    {"time alone", withDate("09:26:53Z")},
    {"date without seconds", withDate("2025-03-14T09:26Z")},
    {"date with a space for T", withDate("2025-03-14 09:26:53Z")},
    {"date with a lower-case t", withDate("2025-03-14t09:26:53Z")},
    {"date with a lower-case z", withDate("2025-03-14T09:26:53z")},
    {"date in basic form", withDate("20250314T092653Z")},
    {"date with dots", withDate("2025.03.14T09:26:53Z")},
    {"date with time dots", withDate("2025-03-14T09.26.53Z")},
    {"30 February", withDate("2025-02-30T09:26:53Z")},
    {"29 February of a common year", withDate("2025-02-29T09:26:53Z")},
    {"29 February of a common century", withDate("1900-02-29T09:26:53Z")},
    {"31 April", withDate("2025-04-31T09:26:53Z")},
    {"month 0", withDate("2025-00-14T09:26:53Z")},
    {"month 13", withDate("2025-13-14T09:26:53Z")},
    {"day 0", withDate("2025-03-00T09:26:53Z")},
    {"day 32", withDate("2025-03-32T09:26:53Z")},
    {"hour 24", withDate("2025-03-14T24:00:00Z")},
    {"minute 60", withDate("2025-03-14T09:60:53Z")},
    {"second 60", withDate("2025-03-14T09:26:60Z")},
    {"a leap second", withDate("2016-12-31T23:59:60Z")},
    {"year of five digits", withDate("12025-03-14T09:26:53Z")},
    {"year of three digits", withDate("925-03-14T09:26:53Z")},
    {"year with a sign", withDate("+2025-03-14T09:26:53Z")},
    {"year below zero", withDate("-001-03-14T09:26:53Z")},
    {"one-digit month", withDate("2025-3-14T09:26:53Z")},
    {"a letter among the digits", withDate("2025-03-14T09:2x:53Z")},
    {"a space among the digits", withDate("2025-03-14T 9:26:53Z")},
    {"date with junk behind", withDate("2025-03-14T09:26:53Zz")},
    {"date with a space behind", withDate("2025-03-14T09:26:53Z ")},
    {"date with a NUL behind", withDate("2025-03-14T09:26:53Z\\u0000")},
    {"date with a space in front", withDate(" 2025-03-14T09:26:53Z")},
    {"zone that leads beyond year 9999", withDate("9999-12-31T23:59:59-00:01")},
    {"zone that leads before year 0", withDate("0000-01-01T00:00:00+00:01")},
    {"zone name", withDate("2025-03-14T09:26:53UTC")},
    {"zone letter A", withDate("2025-03-14T09:26:53A")},
    {"zone of hours alone", withDate("2025-03-14T09:26:53+01")},
    {"zone without a sign", withDate("2025-03-14T09:26:53 01:00")},
    {"zone of 24 hours", withDate("2025-03-14T09:26:53+24:00")},
    {"zone of 60 minutes", withDate("2025-03-14T09:26:53+01:60")},
    {"zone behind Z", withDate("2025-03-14T09:26:53Z+01:00")},
    {"zone with junk behind", withDate("2025-03-14T09:26:53+01:00Z")},
    {"date as seconds", withDate("763637213")},
};

const BadFiles badNumbers{
    {"phaseRaw with a fraction", with(&Members::phaseRaw, "1.5")},
    {"reps with a fraction", with(&Members::reps, "1.5")},
    {"phaseRaw with a zero fraction", with(&Members::phaseRaw, "1.0")},
    {"reps with a zero fraction", with(&Members::reps, "50.0")},
    {"phaseRaw with an exponent", with(&Members::phaseRaw, "1e0")},
    {"reps with an exponent", with(&Members::reps, "5E1")},
    {"phaseRaw beyond 64 bits", with(&Members::phaseRaw, "9223372036854775808")},
    {"phaseRaw below 64 bits", with(&Members::phaseRaw, "-9223372036854775809")},
    {"phaseRaw of 64 bits without a sign", with(&Members::phaseRaw, "18446744073709551615")},
    {"reps beyond 64 bits", with(&Members::reps, "9223372036854775808")},
    {"reps below 64 bits", with(&Members::reps, "-9223372036854775809")},
    {"reps far beyond 64 bits", with(&Members::reps, std::string(400, '1'))},
    {"seconds not a number", with(&Members::seconds, "NaN")},
    {"seconds infinite", with(&Members::seconds, "Infinity")},
    {"seconds below infinite", with(&Members::seconds, "-Infinity")},
    {"seconds inf", with(&Members::seconds, "inf")},
    {"seconds beyond a double", with(&Members::seconds, "1e999")},
    {"seconds below a double", with(&Members::seconds, "-1e999")},
    {"seconds of 400 digits", with(&Members::seconds, std::string(400, '9'))},
    {"seconds just beyond a double", with(&Members::seconds, "1.7976931348623159e308")},
    {"seconds of 1.8e308", with(&Members::seconds, "1.8e308")},
    {"seconds of 0.9e309", with(&Members::seconds, "0.9e309")},
    {"seconds of 10e308", with(&Members::seconds, "10e308")},
    {"seconds with a leading zero", with(&Members::seconds, "01500")},
    {"phaseRaw with a leading zero", with(&Members::phaseRaw, "00")},
    {"reps below zero with a leading zero", with(&Members::reps, "-01")},
    {"seconds with a plus", with(&Members::seconds, "+1")},
    {"reps with a plus", with(&Members::reps, "+1")},
    {"a minus alone", with(&Members::reps, "-")},
    {"a minus and a space", with(&Members::reps, "- 1")},
    {"two minuses", with(&Members::reps, "--1")},
    {"a dot without digits behind", with(&Members::seconds, "1500.")},
    {"a dot without digits in front", with(&Members::seconds, ".5")},
    {"an exponent without digits", with(&Members::seconds, "15e")},
    {"an exponent with a sign alone", with(&Members::seconds, "15e+")},
    {"a comma for the dot", with(&Members::seconds, "900,5")},
    {"a hexadecimal number", with(&Members::reps, "0x32")},
    {"a number with grouping", with(&Members::seconds, "1_500")},
    {"a number without an end", with(&Members::reps, "0 0")},
};

const BadFiles badTexts{
    {"a stray continuation byte", withExtra("\"\x80\"")},
    {"a byte that is never UTF-8", withExtra("\"\xFF\"")},
    {"a cut character", withExtra("\"\xE2\x82\"")},
    {"an overlong slash", withExtra("\"\xC0\xAF\"")},
    {"an overlong NUL", withExtra("\"\xE0\x80\x80\"")},
    {"a surrogate as UTF-8", withExtra("\"\xED\xA0\x80\"")},
    {"a character beyond Unicode", withExtra("\"\xF4\x90\x80\x80\"")},
    {"Latin-1", withExtra("\"f\xFC"
                          "nf\"")},
    {"bad UTF-8 in a key", arrayOf(objectOf({}, ",\"\xFF\":1"))},
    {"bad UTF-8 in a nested text", withExtra("[{\"a\":\"\xC3\"}]")},
    {"bad UTF-8 between tokens", arrayOf(joined({"\x80", object}))},
    {"a high surrogate escape alone", withExtra(R"("\ud83e")")},
    {"surrogate escapes in the wrong order", withExtra(R"("\ude91\ud83e")")},
    {"a low surrogate escape alone", withExtra(R"("\udc00")")},
    {"two low surrogate escapes", withExtra(R"("\ude91\ude91")")},
    {"a low surrogate escape alone in a key", arrayOf(objectOf({}, R"(,"\udc00":1)"))},
    {"a high surrogate escape before a letter", withExtra(R"("\ud83ex")")},
    {"a high surrogate escape before another escape", withExtra(R"("\ud83e\u0041")")},
    {"two high surrogate escapes", withExtra(R"("\ud83e\ud83e")")},
    {"an escape of no meaning", withExtra(R"("\x41")")},
    {"an escape cut short", withExtra(R"("\u41")")},
    {"an escape with a bad digit", withExtra(R"("\u004G")")},
    {"a text without an end", withExtra(R"("text)")},
    {"a text ended by an escaped quote", withExtra(R"("text\")")},
    {"a line break in a text", withExtra("\"a\nb\"")},
    {"a tab in a text", withExtra("\"a\tb\"")},
    {"a NUL byte in a text", withExtra("\"a\0b\""s)},
    {"a NUL byte in an id", withId("0A1B2C3D-4E5F-6A7B-8C9D-AEBFC0D1E2F\0"s)},
    {"a wrong word", withExtra("nul")},
    {"a capital word", withExtra("True")},
    {"undefined", withExtra("undefined")},
};

/// Every key with every value that is none of its own.
BadFiles badTypes()
{
    const struct
    {
        const char* name;
        std::string Members::*member;
        std::vector<std::string> values;
    } keys[] = {
        {"id", &Members::id, {"0", "1.5"}},
        {"date", &Members::date, {"763637213", "1741944413.5", "0"}},
        {"phaseRaw", &Members::phaseRaw, {R"("0")", R"("sitting")", R"("")"}},
        {"seconds", &Members::seconds, {R"("1500")", R"("NaN")", R"("")"}},
        {"reps", &Members::reps, {R"("50")", R"("")"}},
    };
    BadFiles files;
    for (const auto& [name, member, values] : keys) {
        std::vector<std::string> wrong{"null",
                                       "true",
                                       "false",
                                       "[]",
                                       "{}",
                                       "[0]",
                                       arrayOf(Members{}.*member),
                                       joined({R"({"value":)", Members{}.*member, "}"})};
        wrong.insert(wrong.end(), values.begin(), values.end());
        for (const std::string& value : wrong)
            files.push_back({joined({name, " as ", value}), with(member, value)});
    }
    return files;
}

class MalformedLog : public testing::Test
{
protected:
    LogFolder folder;
    ManualClock clock;
    QuickFileSystem fileSystem;

    /// A bad file is an empty history; it stays as it is until the next save, and that replaces it.
    void expectForgottenAtTheNextSave(const BadFile& bad)
    {
        SCOPED_TRACE(bad.what);
        putContent(folder.file(), bad.content);
        SessionStore store(clock, fileSystem, folder.file());
        EXPECT_TRUE(store.entries().empty());
        EXPECT_EQ(contentOf(folder.file()), bad.content);

        store.log(Phase::pushups, 0, 50);
        ASSERT_EQ(store.entries().size(), 1U);
        EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
        EXPECT_EQ(folder.names(), QStringList{QStringLiteral("sessions.json")});
    }

    void expectForgottenAtTheNextSave(const BadFiles& files)
    {
        for (const BadFile& file : files)
            expectForgottenAtTheNextSave(file);
    }
};

} // namespace

TEST_F(MalformedLog, TheFileThatTheBadOnesAreMadeFromIsGood)
{
    putContent(folder.file(), array);
    const SessionStore store(clock, fileSystem, folder.file());
    EXPECT_EQ(store.entries().size(), 1U);
    EXPECT_TRUE(readText(withExtra("null")));
}

TEST_F(MalformedLog, ADocumentThatIsNoArrayOfObjectsIsForgotten)
{
    expectForgottenAtTheNextSave(badDocuments);
}

TEST_F(MalformedLog, AnEntryThatLacksAKeyIsForgotten)
{
    expectForgottenAtTheNextSave(badKeys);
}

TEST_F(MalformedLog, AKeyOfAWrongTypeIsForgotten)
{
    expectForgottenAtTheNextSave(badTypes());
}

TEST_F(MalformedLog, AnIdInAnyOtherFormIsForgotten)
{
    expectForgottenAtTheNextSave(badIds);
}

TEST_F(MalformedLog, ADateInAnyOtherFormIsForgotten)
{
    expectForgottenAtTheNextSave(badDates);
}

TEST_F(MalformedLog, ABadNumberIsForgotten)
{
    expectForgottenAtTheNextSave(badNumbers);
}

TEST_F(MalformedLog, ABadTextIsForgottenAlsoInAnUnknownKey)
{
    expectForgottenAtTheNextSave(badTexts);
}

TEST_F(MalformedLog, AFileCutAtAnyByteIsForgotten)
{
    const std::string whole = textOf(historyOf(3));
    ASSERT_TRUE(readText(whole));
    for (std::size_t size = 0; size < whole.size(); ++size)
        ASSERT_FALSE(readText(whole.substr(0, size))) << size;
    for (const std::size_t size : {std::size_t{1}, whole.size() / 2, whole.size() - 1})
        expectForgottenAtTheNextSave({"cut at " + std::to_string(size), whole.substr(0, size)});
}

TEST_F(MalformedLog, ANulByteAnywhereIsForgotten)
{
    const std::string whole = textOf(historyOf(2));
    for (std::size_t place = 0; place <= whole.size(); ++place) {
        std::string inserted = whole;
        inserted.insert(place, 1, '\0');
        ASSERT_FALSE(readText(inserted)) << place;
        if (place < whole.size()) {
            std::string replaced = whole;
            replaced[place] = '\0';
            ASSERT_FALSE(readText(replaced)) << place;
        }
    }
}

TEST_F(MalformedLog, OneBadEntryAmongAThousandLosesThemAll)
{
    const std::string whole = textOf(historyOf(1000));
    ASSERT_TRUE(readText(whole));
    expectForgottenAtTheNextSave({"the last entry lacks reps", withoutReps(whole)});
}

TEST_F(MalformedLog, AFolderInPlaceOfTheFileStays)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("sessions.json/inner")));
    SessionStore store(clock, fileSystem, folder.file());
    EXPECT_TRUE(store.entries().empty());
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(store.entries().size(), 1U);
    EXPECT_TRUE(QFileInfo(folder.file(QStringLiteral("sessions.json/inner"))).isDir());
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("sessions.json")});
}

TEST_F(MalformedLog, APipeInPlaceOfTheFileIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.file()).constData(), 0600), 0);
    SessionStore store(clock, fileSystem, folder.file());
    EXPECT_TRUE(store.entries().empty());
    store.log(Phase::sitting, 1500, 0);
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
}

TEST_F(MalformedLog, ALinkToAPipeIsNotWaitedFor)
{
    const QString pipe = folder.file(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    std::filesystem::create_symlink("pipe", folder.file().toStdString());
    const SessionStore store(clock, fileSystem, folder.file());
    EXPECT_TRUE(store.entries().empty());
}

TEST_F(MalformedLog, AFileThatMayNotBeReadIsForgotten)
{
    putContent(folder.file(), array);
    const Unprivileged user(folder);
    std::filesystem::permissions(folder.file().toStdString(), std::filesystem::perms::none);
    SessionStore store(clock, fileSystem, folder.file());
    EXPECT_TRUE(store.entries().empty());
    store.log(Phase::sitting, 1500, 0);

    std::filesystem::permissions(folder.file().toStdString(), std::filesystem::perms::owner_read);
    EXPECT_EQ(contentOf(folder.file()), textOf(store.entries()));
}

TEST_F(MalformedLog, ALinkToAFileThatMayNotBeReadIsForgotten)
{
    const std::string hidden = folder.file(QStringLiteral("hidden.json")).toStdString();
    putContent(QString::fromStdString(hidden), array);
    std::filesystem::create_symlink(hidden, folder.file().toStdString());
    const Unprivileged user(folder);
    std::filesystem::permissions(hidden, std::filesystem::perms::none);
    const SessionStore store(clock, fileSystem, folder.file());
    EXPECT_TRUE(store.entries().empty());
}
