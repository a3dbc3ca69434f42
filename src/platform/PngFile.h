#pragma once

class QImage;
class QString;

/// Writes the image as a PNG file. False when that fails; then there may be half a file.
/// QImage::save() does the same, but loads every image plugin of the system first and keeps them.
bool writePng(const QImage& image, const QString& path);
