#pragma once

#include "paint/DevicePatch.h"

#include <QPointF>

#include <algorithm>
#include <cmath>

/// How much of a pixel is within `halfWidth` of the middle of a line that is `distance` away from
/// the pixel's middle; all in logical pixels, of which each is `scale` device pixels.
inline float lineCoverage(float distance, float halfWidth, float scale)
{
    return std::clamp(0.5F + (halfWidth - distance) * scale, 0.0F, 1.0F);
}

/// Calls `visit(pixel, x, y, radius)` for the patch's pixels between the circles of radius `inner`
/// and `outer` around `center`; x, y and radius are measured from the center.
template <typename Visitor>
void visitAnnulus(DevicePatch& patch, QPointF center, double inner, double outer, Visitor visit)
{
    const auto columnAt = [&patch](double x) {
        const double column = x * patch.scale + patch.offset.x() - patch.origin.x() - 0.5;
        return static_cast<int>(std::clamp(column, -1.0, patch.image.width() + 1.0));
    };
    for (int row = 0; row < patch.image.height(); ++row) {
        const double y = patch.y(row) - center.y();
        if (std::abs(y) >= outer)
            continue;
        const double outerHalf = std::sqrt(outer * outer - y * y);
        const double innerHalf = std::abs(y) < inner ? std::sqrt(inner * inner - y * y) : 0;
        QRgb* pixels = patch.row(row);
        const auto visitColumns = [&](int first, int last) {
            last = std::min(last, patch.image.width() - 1);
            for (int column = std::max(first, 0); column <= last; ++column) {
                const auto x = static_cast<float>(patch.x(column) - center.x());
                const auto fromY = static_cast<float>(y);
                visit(pixels[column], x, fromY, std::sqrt(x * x + fromY * fromY));
            }
        };
        const int leftEnd = columnAt(center.x() - innerHalf);
        visitColumns(columnAt(center.x() - outerHalf), leftEnd);
        visitColumns(std::max(columnAt(center.x() + innerHalf), leftEnd + 1),
                     columnAt(center.x() + outerHalf) + 1);
    }
}
