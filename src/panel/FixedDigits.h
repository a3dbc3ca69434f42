#pragma once

#include <QFont>
#include <QPointF>
#include <QString>

class QPainter;

/// Text in which all digits take the same room, whatever the font, so that it does not move about
/// when a number changes.
namespace fixedDigits {

/// In logical pixels.
double width(const QString& text, const QFont& font);

/// Draws the text with its baseline starting at `origin`, in the painter's pen.
void draw(QPainter& painter, QPointF origin, const QString& text, const QFont& font);

} // namespace fixedDigits
