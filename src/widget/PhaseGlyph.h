#pragma once

#include "core/Phase.h"

#include <QRectF>

class QPainter;

/// Draws the figure of the phase as it stands at `seconds` since 2001-01-01 00:00:00 UTC, against
/// the top left corner of `rect`, in the largest square that has room. The painter may be scaled
/// and moved, but not turned; its state stays as it is.
void drawPhaseGlyph(QPainter& painter, const QRectF& rect, Phase phase, double seconds);

/// The part of `rect` outside of which the figure never changes: what has to be painted anew for
/// its next frame.
QRectF phaseGlyphMotionBounds(const QRectF& rect, Phase phase);

/// How far the fastest part of the figure goes in a second, as a part of the figure's side.
double phaseGlyphSpeed(Phase phase);
