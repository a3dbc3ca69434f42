#pragma once

#include "core/Gradient.h"
#include "widget/WidgetGeometry.h"

class QPainter;

/// The two tones of a phase, as they are mixed while one phase gives way to another.
struct Tones
{
    Color light;
    Color dark;
};

/// The ring's full circle that the arc runs on.
void paintTrack(QPainter& painter, const RingGeometry& ring, const QRectF& exposed);

/// The arc from twelve o'clock clockwise over `progress` of the circle (0 to 1), with round ends
/// and a glow around it; dark at twelve, light at six o'clock. Nothing at 0.
void paintArc(QPainter& painter, const RingGeometry& ring, const Tones& tones, double progress,
              double opacity, const QRectF& exposed);

/// What an arc of this length covers beyond one of that length, or falls short of it.
QRectF arcDifference(const RingGeometry& ring, double progress, double otherProgress);

/// The glow around the full circle that turns.
void paintTurningGlow(QPainter& painter, const RingGeometry& ring, const Tones& tones,
                      double opacity, const QRectF& exposed);

/// The full circle whose colours turn clockwise once in nine seconds, at `seconds` since 2001.
void paintTurningRing(QPainter& painter, const RingGeometry& ring, const Tones& tones,
                      double seconds, double opacity, const QRectF& exposed);

/// What the ring with its glow covers.
QRectF ringBounds(const RingGeometry& ring);
