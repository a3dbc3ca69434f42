#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QStringView>

class QBrush;
class QPainter;

/// The outline of the symbol with this name (its file's in resources/symbols, without ".svg"), on a
/// grid of 16 by 16 units; empty where there is no such symbol.
QPainterPath symbolPath(QStringView name);

/// Draws the symbol into the square `box` (logical pixels), which is first moved and resized to
/// whole device pixels; edges that were drawn along lines of the grid come out sharp. Draws nothing
/// where there is no such symbol. The painter may be scaled and moved, but not turned.
void drawSymbol(QPainter& painter, QStringView name, const QRectF& box, const QBrush& brush);
