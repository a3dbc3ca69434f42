#include "paint/Group.h"

#include "paint/DevicePatch.h"

#include <QPainter>

void paintGroup(QPainter& painter, double opacity, const QRectF& bounds,
                const std::function<void(QPainter&)>& paint)
{
    if (opacity <= 0 || bounds.isEmpty())
        return;
    if (opacity >= 1) {
        paint(painter);
        return;
    }
    DevicePatch patch(painter, bounds);
    patch.paint(paint);
    const DevicePixels devicePixels(painter);
    painter.setOpacity(opacity);
    painter.drawImage(patch.origin, patch.image);
}
