#pragma once

#include "core/Gradient.h"
#include "widget/WidgetGeometry.h"

class QPainter;

/// Two thin rings that grow out of the progress ring and fade, one half a period behind the other,
/// as they stand at `seconds` since 2001.
void paintCompletionPulse(QPainter& painter, const RingGeometry& ring, const Color& color,
                          double seconds, double opacity, const QRectF& exposed);

/// What the pulse covers at any time.
QRectF pulseBounds(const RingGeometry& ring);
