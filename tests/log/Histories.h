#pragma once

#include "InOnePiece.h"
#include "log/SessionEntry.h"

#include <string>
#include <vector>

/// The text of a history that has one.
inline std::string textOf(const std::vector<SessionEntry>& history)
{
    return toJson(history).value().toStdString();
}

/// What a text reads as; nothing for a bad one.
inline std::optional<std::vector<SessionEntry>> readText(std::string_view text)
{
    return entriesFromJson(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
}

/// `count` entries that differ from each other and from those of another `generation`.
inline std::vector<SessionEntry> historyOf(int count, int generation = 0)
{
    std::vector<SessionEntry> history;
    for (int i = 0; i < count; ++i) {
        const auto number = static_cast<uint>(i);
        history.push_back({QUuid(number, 0x4E5F, 0x6A7B, 0x8C, 0x9D, 0xAE, 0xBF, 0xC0, 0xD1,
                                 static_cast<uchar>(generation), 0xF3),
                           Instant{763637213.0 + 60 * i}, i % 3, 1500.25 + i, generation});
    }
    return history;
}
