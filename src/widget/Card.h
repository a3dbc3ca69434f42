#pragma once

#include "core/Gradient.h"

#include <QPainterPath>
#include <QRectF>

class QPainter;

/// What decides how the card looks.
struct CardLook
{
    QSizeF size;
    double compactness = 0; ///< 0: the full card, 1: the compact strip
    Color glow;
};

/// The outline of the card: what is outside is neither drawn nor clicked.
QPainterPath cardShape(const QSizeF& size, double compactness);

/// Paints the card with its glow and its border, but no more than `exposed` of it.
void paintCard(QPainter& painter, const CardLook& look, const QRectF& exposed);
