#pragma once

#include <QByteArray>

class QImage;
class QString;

/// The image as a PNG file, written to be made fast rather than to be small; empty when there is no
/// image or no memory. QImage::save() does the same, but loads every image plugin of the system
/// first and keeps them.
QByteArray encodePng(const QImage& image);

/// Writes the image as a PNG file. False when that fails; then there may be half a file.
bool writePng(const QImage& image, const QString& path);
