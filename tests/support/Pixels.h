#pragma once

#include "core/Gradient.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <string>

/// For failures.
inline std::string textOf(const QRectF& rect)
{
    std::ostringstream text;
    text << rect.width() << " x " << rect.height() << " at " << rect.x() << ", " << rect.y();
    return text.str();
}

/// The scales of the screens that painting is tested for.
inline constexpr std::array allScales{1.0, 1.5, 2.0};

/// Premultiplied components in red, green, blue, alpha order, each from 0 to 255.
using Levels = std::array<double, 4>;

/// A transparent picture of so many logical pixels at `scale`.
inline QImage blankPicture(QSizeF size, double scale)
{
    const QSizeF pixels = size * scale;
    QImage image(static_cast<int>(std::ceil(pixels.width())),
                 static_cast<int>(std::ceil(pixels.height())), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(0);
    return image;
}

/// What `paint` paints on a transparent picture.
inline QImage painted(QSizeF size, double scale, const std::function<void(QPainter&)>& paint)
{
    QImage image = blankPicture(size, scale);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return image;
}

/// What `paint` paints when it is asked for one tile of the picture after another, as a window
/// asks for it. The tiles are `side` logical pixels wide and somewhat higher; the first ones lie
/// partly beyond the picture, so that others begin shortly behind its edges.
inline QImage paintedInTiles(QSizeF size, double scale, int side,
                             const std::function<void(QPainter&, const QRectF& exposed)>& paint)
{
    QImage image = blankPicture(size, scale);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int y = -(side + 1); y < size.height(); y += side + 3) {
        for (int x = -(side - 2); x < size.width(); x += side) {
            const QRect tile(x, y, side, side + 3);
            painter.setClipRect(tile);
            paint(painter, tile);
        }
    }
    return image;
}

inline Levels levelsOf(QRgb pixel)
{
    return {double(qRed(pixel)), double(qGreen(pixel)), double(qBlue(pixel)),
            double(qAlpha(pixel))};
}

/// The pixel as it is stored, which QImage::pixel() would not give.
inline QRgb pixelAt(const QImage& image, int column, int row)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(row))[column];
}

inline Levels levelsAt(const QImage& image, int column, int row)
{
    return levelsOf(pixelAt(image, column, row));
}

inline Levels levelsOf(const Color& color)
{
    const double alpha = 255 * color.opacity;
    return {color.red * alpha, color.green * alpha, color.blue * alpha, alpha};
}

/// `upper` on top of `lower`.
inline Levels composed(const Levels& upper, const Levels& lower)
{
    Levels result{};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = upper[i] + lower[i] * (1 - upper[3] / 255);
    return result;
}

/// The mean over some device pixels, which evens a dither out.
inline Levels meanLevels(const QImage& image, const QRect& pixels)
{
    Levels sum{};
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            const Levels levels = levelsAt(image, x, y);
            for (std::size_t i = 0; i < sum.size(); ++i)
                sum[i] += levels[i] / (pixels.width() * pixels.height());
        }
    }
    return sum;
}

/// The largest difference of a component.
inline double difference(const Levels& a, const Levels& b)
{
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

/// The largest difference of a component of a pixel, in levels. Both have the same size.
inline double largestDifference(const QImage& a, const QImage& b)
{
    double largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            largest = std::max(largest, difference(levelsAt(a, x, y), levelsAt(b, x, y)));
    }
    return largest;
}

/// How many pixels differ. Both have the same size.
inline int changedPixels(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += pixelAt(a, x, y) != pixelAt(b, x, y);
    }
    return count;
}

/// The box, in logical pixels, of all pixels for which `matches(column, row)` holds.
template <typename Predicate>
QRectF boxOf(const QImage& image, Predicate matches)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (matches(x, y))
                box |= QRect(x, y, 1, 1);
        }
    }
    const double scale = image.devicePixelRatio();
    return {box.x() / scale, box.y() / scale, box.width() / scale, box.height() / scale};
}

/// The box, in logical pixels, of all pixels that differ by more than `tolerance` levels.
inline QRectF changedBox(const QImage& a, const QImage& b, double tolerance = 0)
{
    return boxOf(a, [&](int x, int y) {
        return difference(levelsAt(a, x, y), levelsAt(b, x, y)) > tolerance;
    });
}

/// The box, in logical pixels, of all that is not transparent.
inline QRectF inkBox(const QImage& image)
{
    return boxOf(image, [&](int x, int y) { return qAlpha(pixelAt(image, x, y)) > 0; });
}

/// The part of a picture that shows `rect`, which is in logical pixels.
inline QImage partOf(const QImage& image, const QRectF& rect)
{
    const double scale = image.devicePixelRatio();
    const QRectF pixels(rect.topLeft() * scale, rect.size() * scale);
    return image.copy(pixels.toAlignedRect());
}
