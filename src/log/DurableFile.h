#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class FileSystem;

/// The whole content of a regular file (or of one that a symbolic link leads to); nothing when
/// there is none or it cannot be read.
std::optional<QByteArray> readFile(const QString& path);

/// Puts `content` in the place of the file at `path` so that at every instant, also after a power
/// cut, the file is the whole old or the whole new one. A symbolic link is followed, the file's
/// mode is kept, a missing folder is made. False when a step failed; before the last step that
/// leaves the old file untouched.
bool replaceFile(FileSystem& fileSystem, const QString& path, const QByteArray& content);
