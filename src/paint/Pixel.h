#pragma once

#include "core/Gradient.h"

#include <QRgb>

/// A premultiplied colour before it is rounded; each component from 0 to 255.
struct Pixel
{
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 0;
};

inline Pixel pixelOf(const Color& color)
{
    const double alpha = 255 * color.opacity;
    return {static_cast<float>(color.red * alpha), static_cast<float>(color.green * alpha),
            static_cast<float>(color.blue * alpha), static_cast<float>(alpha)};
}

inline Pixel operator*(const Pixel& pixel, float opacity)
{
    return {pixel.red * opacity, pixel.green * opacity, pixel.blue * opacity,
            pixel.alpha * opacity};
}

/// `a` where `part` is 0, `b` where it is 1.
inline Pixel mixed(const Pixel& a, const Pixel& b, float part)
{
    return {a.red + (b.red - a.red) * part, a.green + (b.green - a.green) * part,
            a.blue + (b.blue - a.blue) * part, a.alpha + (b.alpha - a.alpha) * part};
}

/// `upper` on top of `lower`.
inline Pixel over(const Pixel& upper, const Pixel& lower)
{
    const float rest = 1 - upper.alpha / 255;
    return {upper.red + lower.red * rest, upper.green + lower.green * rest,
            upper.blue + lower.blue * rest, upper.alpha + lower.alpha * rest};
}

/// The pixel in 8 bits. A fraction counts as one more where it exceeds 1 - `threshold`: a half
/// rounds to the nearest; thresholds that vary from pixel to pixel hide the steps of a gradient.
inline QRgb toRgb(const Pixel& pixel, float threshold = 0.5F)
{
    // By way of int, for which processors have an instruction.
    const auto whole = [threshold](float component) {
        return static_cast<QRgb>(static_cast<int>(component + threshold));
    };
    return whole(pixel.alpha) << 24 | whole(pixel.red) << 16 | whole(pixel.green) << 8 |
           whole(pixel.blue);
}

inline Pixel fromRgb(QRgb rgb)
{
    return {static_cast<float>(qRed(rgb)), static_cast<float>(qGreen(rgb)),
            static_cast<float>(qBlue(rgb)), static_cast<float>(qAlpha(rgb))};
}
