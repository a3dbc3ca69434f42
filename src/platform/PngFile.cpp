#include "platform/PngFile.h"

#include <QFile>
#include <QImage>

#include <png.h>

QByteArray encodePng(const QImage& image)
{
    const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888);
    if (rgba.isNull())
        return {};
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.format = PNG_FORMAT_RGBA;
    header.flags = PNG_IMAGE_FLAG_FAST;
    header.width = static_cast<png_uint_32>(rgba.width());
    header.height = static_cast<png_uint_32>(rgba.height());
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(header);
    QByteArray encoded(static_cast<qsizetype>(size), Qt::Uninitialized);
    const bool ok =
        png_image_write_to_memory(&header, encoded.data(), &size, 0, rgba.constBits(),
                                  static_cast<png_int_32>(rgba.bytesPerLine()), nullptr) != 0;
    encoded.resize(ok ? static_cast<qsizetype>(size) : 0);
    return encoded;
}

bool writePng(const QImage& image, const QString& path)
{
    const QByteArray encoded = encodePng(image);
    QFile file(path);
    return !encoded.isEmpty() && file.open(QFile::WriteOnly) &&
           file.write(encoded) == encoded.size() && file.flush();
}
