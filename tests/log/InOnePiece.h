#pragma once

#include "log/DurableFile.h"
#include "log/SessionJson.h"

/// The whole text of a history; nothing when it has none.
inline std::optional<QByteArray> toJson(const std::vector<SessionEntry>& history)
{
    QByteArray text;
    const bool isWhole = writeJson(history, [&](QByteArrayView piece) {
        text.append(piece);
        return true;
    });
    return isWhole ? std::optional(text) : std::nullopt;
}

/// Replaces a file by content that is there already.
inline bool replaceFile(FileSystem& fileSystem, const QString& path, const QByteArray& content)
{
    return replaceFile(fileSystem, path, [&](const WritePiece& write) { return write(content); });
}
