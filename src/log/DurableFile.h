#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>
#include <optional>

class FileSystem;

/// The whole content of a regular file (or of one that a symbolic link leads to); nothing when
/// there is none or it cannot be read.
std::optional<QByteArray> readFile(const QString& path);

/// Takes the next piece of a file's content; false when it could not be written.
using WritePiece = std::function<bool(QByteArrayView piece)>;

/// Puts what `produce` writes, piece by piece, in the place of the file at `path`, so that at every
/// instant, also after a power cut, the file is the whole old or the whole new one. A symbolic link
/// is followed, the file's mode is kept, a missing folder is made. False when a step failed or
/// `produce` returned false; before the last step that leaves the old file untouched.
bool replaceFile(FileSystem& fileSystem, const QString& path,
                 const std::function<bool(const WritePiece&)>& produce);
