#pragma once

#include "widget/Card.h"
#include "widget/WidgetMotion.h"

class QPainter;

/// Which part of a picture of the widget is wanted, while nothing but the endless motions go on.
enum class Layers {
    all,
    still,  ///< what stands still
    moving, ///< what is drawn over it in each frame
    over,   ///< what stands still over that, on transparent ground; empty but during the pulse
};

/// Paints the widget without its controls as it is at `now`, but no more than `exposed` of it.
void paintWidget(QPainter& painter, const WidgetMotion& motion, Instant now, QSizeF size,
                 const QRectF& exposed, Layers layers = Layers::all);

/// What the endless motions paint anew with each frame.
QRectF movingBounds(const WidgetMotion& motion, Instant now);

/// What a new countdown text paints anew.
QRectF readoutBounds(const WidgetModel& model);
