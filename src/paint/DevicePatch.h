#pragma once

#include <QImage>
#include <QRectF>

#include <functional>

class QPainter;

/// A rectangle of the pixels that a painter paints on, to be computed one by one and then drawn.
/// The painter may be scaled and moved, but not turned.
struct DevicePatch
{
    DevicePatch() = default;

    /// Transparent, and large enough for `rect`, which is in the painter's coordinates.
    DevicePatch(const QPainter& painter, const QRectF& rect);

    /// The painter's coordinates of the middle of a pixel of the image.
    double x(int column) const { return (origin.x() + column + 0.5 - offset.x()) / scale; }
    double y(int row) const { return (origin.y() + row + 0.5 - offset.y()) / scale; }

    /// Lets `paint` paint into the image, in the coordinates of the painter it was made for.
    void paint(const std::function<void(QPainter&)>& paint);

    QRgb* row(int row) { return reinterpret_cast<QRgb*>(image.scanLine(row)); }

    /// Whether the painter's coordinates are still those that the patch was made for.
    bool fits(const QPainter& painter) const;

    QImage image;     ///< premultiplied
    QPoint origin;    ///< of the image, in device pixels
    QPointF offset;   ///< of the painter's origin, in device pixels
    double scale = 1; ///< device pixels to one of the painter's units
};

/// Lets the painter work in device pixels as long as this lives.
class DevicePixels
{
public:
    explicit DevicePixels(QPainter& painter);
    ~DevicePixels();
    DevicePixels(const DevicePixels&) = delete;
    DevicePixels& operator=(const DevicePixels&) = delete;

private:
    QPainter& m_painter;
};

/// Draws the patch over what is there.
void drawPatch(QPainter& painter, const DevicePatch& patch);
