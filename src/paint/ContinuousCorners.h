#pragma once

#include <QPainterPath>
#include <QRectF>

/// The rectangle with corners that bend gently: along a corner the curvature grows from nothing and
/// falls back to nothing, instead of jumping as it does where a plain arc meets a straight edge. On
/// its diagonal a corner is as far cut as by an arc of `radius`.
QPainterPath continuousRoundedRect(const QRectF& rect, double radius);
