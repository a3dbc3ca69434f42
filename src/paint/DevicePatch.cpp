#include "paint/DevicePatch.h"

#include <QPainter>

DevicePatch::DevicePatch(const QPainter& painter, const QRectF& rect)
{
    const QTransform toDevice = painter.deviceTransform();
    scale = toDevice.m11();
    offset = {toDevice.dx(), toDevice.dy()};
    const QRect pixels = toDevice.mapRect(rect).toAlignedRect();
    origin = pixels.topLeft();
    image = QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
}

void DevicePatch::paint(const std::function<void(QPainter&)>& paint)
{
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(offset - origin);
    painter.scale(scale, scale);
    paint(painter);
}

bool DevicePatch::fits(const QPainter& painter) const
{
    const QTransform toDevice = painter.deviceTransform();
    return toDevice.m11() == scale && QPointF(toDevice.dx(), toDevice.dy()) == offset;
}

DevicePixels::DevicePixels(QPainter& painter)
    : m_painter(painter)
{
    painter.save();
    painter.setWorldTransform(painter.deviceTransform().inverted(), true);
}

DevicePixels::~DevicePixels()
{
    m_painter.restore();
}

void drawPatch(QPainter& painter, const DevicePatch& patch)
{
    // It may be the painter of another patch, which counts pixels from its own corner.
    const QTransform toDevice = painter.deviceTransform();
    const QPointF moved = QPointF(toDevice.dx(), toDevice.dy()) - patch.offset;
    const DevicePixels devicePixels(painter);
    painter.drawImage(patch.origin + moved.toPoint(), patch.image);
}
