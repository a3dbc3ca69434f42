#pragma once

#include <QRectF>

#include <functional>

class QPainter;

/// Lets `paint` paint within `bounds` as one picture that has this opacity as a whole, from 0 to 1.
void paintGroup(QPainter& painter, double opacity, const QRectF& bounds,
                const std::function<void(QPainter&)>& paint);
