#include "platform/PngFile.h"

#include <QFile>
#include <QImage>

#include <png.h>

bool writePng(const QImage& image, const QString& path)
{
    const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888);
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.format = PNG_FORMAT_RGBA;
    header.width = static_cast<png_uint_32>(rgba.width());
    header.height = static_cast<png_uint_32>(rgba.height());
    return png_image_write_to_file(&header, QFile::encodeName(path).constData(), 0,
                                   rgba.constBits(), static_cast<png_int_32>(rgba.bytesPerLine()),
                                   nullptr) != 0;
}
