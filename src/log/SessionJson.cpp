#include "log/SessionJson.h"

#include "log/DateText.h"

#include <rapidjson/error/error.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <string_view>

namespace {

constexpr std::size_t uuidTextLength = 36;

/// An entry as text: braces, keys, id, date, and room for three numbers of up to 24 characters.
constexpr std::size_t longestEntryText = 224;
constexpr qsizetype usualEntryText = 144;

/// Bytes after which a piece of text is given out.
constexpr std::ptrdiff_t pieceSize = 1 << 20;

// --- writing ---------------------------------------------------------------------------------

/// Where a UUID text has its hyphens, and where each of its bytes, two digits, starts.
constexpr std::array<std::size_t, 4> uuidHyphenOffsets{8, 13, 18, 23};
constexpr std::array<std::size_t, 16> uuidDigitOffsets{0,  2,  4,  6,  9,  11, 14, 16,
                                                       19, 21, 24, 26, 28, 30, 32, 34};

std::array<quint8, 16> bytesOf(const QUuid& id)
{
    std::array<quint8, 16> bytes{};
    for (std::size_t i = 0; i < 4; ++i)
        bytes[i] = static_cast<quint8>(id.data1 >> (24 - 8 * i));
    bytes[4] = static_cast<quint8>(id.data2 >> 8);
    bytes[5] = static_cast<quint8>(id.data2);
    bytes[6] = static_cast<quint8>(id.data3 >> 8);
    bytes[7] = static_cast<quint8>(id.data3);
    std::copy(std::begin(id.data4), std::end(id.data4), bytes.begin() + 8);
    return bytes;
}

/// Puts text into a buffer that is known to be long enough.
class TextWriter
{
public:
    explicit TextWriter(char* to)
        : m_to(to)
    {}

    char* position() const { return m_to; }

    TextWriter& operator<<(std::string_view text)
    {
        m_to = std::copy(text.begin(), text.end(), m_to);
        return *this;
    }

    TextWriter& operator<<(qint64 number)
    {
        m_to = std::to_chars(m_to, m_to + longestNumber, number).ptr;
        return *this;
    }

    /// The shortest text that reads back as the same number.
    TextWriter& operator<<(double number)
    {
        // Most are whole, and integers are written several times as fast.
        constexpr double exactBelow = 9007199254740992;
        if (std::abs(number) < exactBelow && number == std::trunc(number) && !std::signbit(number))
            return *this << static_cast<qint64>(number);
        m_to = std::to_chars(m_to, m_to + longestNumber, number).ptr;
        return *this;
    }

    /// False for an instant that has no such text.
    bool putDate(Instant date)
    {
        const bool isPut = putDateText(m_to, date);
        m_to += dateTextLength;
        return isPut;
    }

    TextWriter& operator<<(const QUuid& id)
    {
        constexpr std::string_view hexDigits = "0123456789ABCDEF";
        const auto bytes = bytesOf(id);
        for (const std::size_t hyphen : uuidHyphenOffsets)
            m_to[hyphen] = '-';
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            m_to[uuidDigitOffsets[i]] = hexDigits[bytes[i] >> 4];
            m_to[uuidDigitOffsets[i] + 1] = hexDigits[bytes[i] & 15];
        }
        m_to += uuidTextLength;
        return *this;
    }

private:
    static constexpr std::ptrdiff_t longestNumber = 32;
    char* m_to;
};

// --- reading ---------------------------------------------------------------------------------

std::optional<quint8> hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    if (lower >= 'a' && lower <= 'f')
        return lower - 'a' + 10;
    return std::nullopt;
}

/// The 36-character form alone, in either case. QUuid's own reading takes more than that, and turns
/// what it cannot read into the null id.
std::optional<QUuid> uuidFromText(std::string_view text)
{
    if (text.size() != uuidTextLength)
        return std::nullopt;
    for (const std::size_t hyphen : uuidHyphenOffsets) {
        if (text[hyphen] != '-')
            return std::nullopt;
    }
    std::array<quint8, 16> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto high = hexDigit(text[uuidDigitOffsets[i]]);
        const auto low = hexDigit(text[uuidDigitOffsets[i] + 1]);
        if (!high || !low)
            return std::nullopt;
        bytes[i] = static_cast<quint8>(*high << 4 | *low);
    }
    return QUuid(static_cast<uint>(bytes[0]) << 24 | static_cast<uint>(bytes[1]) << 16 |
                     static_cast<uint>(bytes[2]) << 8 | bytes[3],
                 static_cast<ushort>(bytes[4] << 8 | bytes[5]),
                 static_cast<ushort>(bytes[6] << 8 | bytes[7]), bytes[8], bytes[9], bytes[10],
                 bytes[11], bytes[12], bytes[13], bytes[14], bytes[15]);
}

template <typename Number>
std::optional<Number> numberFromText(std::string_view text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// Whether the parser's UTF-8 is free of surrogates. It takes an escaped low one without its high
/// one for a character.
bool isUnicode(std::string_view text)
{
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '\xED' && static_cast<unsigned char>(text[i + 1]) >= 0xA0)
            return false;
    }
    return true;
}

/// Fills entries from the parser's events. Every function returns false to reject the document.
class EntryHandler
{
public:
    std::vector<SessionEntry> entries;

    bool StartArray()
    {
        if (m_depth == 0) {
            m_depth = 1;
            return true;
        }
        return enterIgnored();
    }

    bool EndArray(rapidjson::SizeType)
    {
        if (m_depth > entryDepth)
            return leaveIgnored();
        m_depth = 0;
        return true;
    }

    bool StartObject()
    {
        if (m_depth == 1) {
            m_depth = entryDepth;
            m_entry = {};
            m_seen = 0;
            return true;
        }
        return enterIgnored();
    }

    bool EndObject(rapidjson::SizeType)
    {
        if (m_depth > entryDepth)
            return leaveIgnored();
        if (m_seen != allKeys)
            return false;
        entries.push_back(m_entry);
        m_depth = 1;
        return true;
    }

    bool Key(const char* text, rapidjson::SizeType length, bool)
    {
        if (m_depth == entryDepth)
            m_key = keyNamed({text, length});
        return isUnicode({text, length});
    }

    bool String(const char* text, rapidjson::SizeType length, bool)
    {
        switch (currentKey()) {
        case id:
            return take(uuidFromText({text, length}), m_entry.id);
        case date:
            return take(dateFromText({text, length}), m_entry.date);
        default:
            return isIgnored() && isUnicode({text, length});
        }
    }

    bool RawNumber(const char* text, rapidjson::SizeType length, bool)
    {
        switch (currentKey()) {
        case phaseRaw:
            return take(numberFromText<qint64>({text, length}), m_entry.phaseRaw);
        case seconds:
            return take(numberFromText<double>({text, length}), m_entry.seconds);
        case reps:
            return take(numberFromText<qint64>({text, length}), m_entry.reps);
        default:
            return isIgnored();
        }
    }

    // The parser hands on all numbers as text: it would take some for the nearest it knows.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

    bool Bool(bool) { return isIgnored(); }
    bool Null() { return isIgnored(); }

private:
    enum Key : unsigned { unknown = 0, id = 1, date = 2, phaseRaw = 4, seconds = 8, reps = 16 };
    static constexpr unsigned allKeys = id | date | phaseRaw | seconds | reps;

    /// 0 outside, 1 in the array, 2 in an entry, more inside the value of an unknown key.
    static constexpr int entryDepth = 2;

    static enum Key keyNamed(std::string_view text)
    {
        if (text == "id")
            return id;
        if (text == "date")
            return date;
        if (text == "phaseRaw")
            return phaseRaw;
        if (text == "seconds")
            return seconds;
        if (text == "reps")
            return reps;
        return unknown;
    }

    /// The key of the entry that the next value belongs to.
    enum Key currentKey() const { return m_depth == entryDepth ? m_key : unknown; }

    bool isIgnored() const
    {
        return m_depth > entryDepth || (m_depth == entryDepth && m_key == unknown);
    }

    bool enterIgnored()
    {
        if (!isIgnored())
            return false;
        ++m_depth;
        return true;
    }

    bool leaveIgnored()
    {
        --m_depth;
        return true;
    }

    template <typename T>
    bool take(const std::optional<T>& value, T& into)
    {
        if (!value)
            return false;
        into = *value;
        m_seen |= m_key;
        return true;
    }

    int m_depth = 0;
    enum Key m_key = unknown;
    unsigned m_seen = 0;
    SessionEntry m_entry;
};

} // namespace

bool writeJson(const std::vector<SessionEntry>& entries, const Append& append)
{
    const auto room =
        std::min(entries.size() * longestEntryText, std::size_t{pieceSize}) + longestEntryText;
    const std::unique_ptr<char[]> piece(new char[room]); // not cleared: it is written first
    TextWriter writer(piece.get());
    writer << std::string_view("[");
    for (const SessionEntry& entry : entries) {
        if (&entry != &entries.front())
            writer << std::string_view(",");
        writer << std::string_view(R"({"id":")") << entry.id << std::string_view(R"(","date":")");
        if (!writer.putDate(entry.date) || !std::isfinite(entry.seconds))
            return false;
        writer << std::string_view(R"(","phaseRaw":)") << entry.phaseRaw
               << std::string_view(R"(,"seconds":)") << entry.seconds
               << std::string_view(R"(,"reps":)") << entry.reps << std::string_view("}");
        if (writer.position() - piece.get() >= pieceSize) {
            if (!append({piece.get(), writer.position()}))
                return false;
            writer = TextWriter(piece.get());
        }
    }
    writer << std::string_view("]");
    return append({piece.get(), writer.position()});
}

std::optional<std::vector<SessionEntry>> entriesFromJson(const QByteArray& json)
{
    constexpr unsigned flags = rapidjson::kParseNumbersAsStringsFlag |
                               rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseIterativeFlag;
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    QByteArrayView text(json);
    if (text.startsWith(byteOrderMark))
        text = text.sliced(byteOrderMark.size());

    rapidjson::MemoryStream stream(text.data(), static_cast<std::size_t>(text.size()));
    rapidjson::Reader reader;
    EntryHandler handler;
    handler.entries.reserve(static_cast<std::size_t>(text.size() / usualEntryText));
    // The parser takes a NUL byte for the end of the text, so the position is looked at too.
    if (reader.Parse<flags>(stream, handler).IsError() ||
        stream.Tell() != static_cast<std::size_t>(text.size()))
        return std::nullopt;
    return std::move(handler.entries);
}
