#pragma once

#include "core/Gradient.h"

#include <QColor>

/// The colour for painting, with its opacity scaled by `opacity`.
inline QColor toQColor(const Color& color, double opacity = 1)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue),
                            static_cast<float>(color.opacity * opacity));
}
