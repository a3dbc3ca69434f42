#include "platform/PngFile.h"

#include <QFile>
#include <QImage>

#include <csetjmp>
#include <png.h>

namespace {

void append(png_structp png, png_bytep bytes, png_size_t count)
{
    static_cast<QByteArray*>(png_get_io_ptr(png))
        ->append(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(count));
}

/// An error of libpng's comes back as a false.
bool writeRows(png_structp png, png_infop info, const QImage& rgba)
{
    if (setjmp(png_jmpbuf(png)) != 0)
        return false;
    png_set_compression_level(png, 1);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_IHDR(png, info, static_cast<png_uint_32>(rgba.width()),
                 static_cast<png_uint_32>(rgba.height()), 8, PNG_COLOR_TYPE_RGBA,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int row = 0; row < rgba.height(); ++row)
        png_write_row(png, rgba.constScanLine(row));
    png_write_end(png, nullptr);
    return true;
}

} // namespace

QByteArray encodePng(const QImage& image)
{
    const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    QByteArray encoded;
    if (info && !rgba.isNull()) {
        png_set_write_fn(png, &encoded, append, nullptr);
        if (!writeRows(png, info, rgba))
            encoded.clear();
    }
    png_destroy_write_struct(&png, &info);
    return encoded;
}

bool writePng(const QImage& image, const QString& path)
{
    const QByteArray encoded = encodePng(image);
    QFile file(path);
    return !encoded.isEmpty() && file.open(QFile::WriteOnly) &&
           file.write(encoded) == encoded.size() && file.flush();
}
