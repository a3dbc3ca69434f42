#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

class QPainter;
class QRectF;

/// The panel's fonts and colours. They follow the desktop's font and palette.
namespace panelStyle {

/// How much larger the desktop's font is than a usual one of 13 px; 1 where it is not larger. Sizes
/// that are given in pixels grow by this.
double textScale();

/// A font of the desktop's family, `size` pixels large where the desktop's font is a usual one.
QFont font(double size, QFont::Weight weight = QFont::Normal);

/// The same in the rounded design of the widget's numbers.
QFont roundedFont(double size, QFont::Weight weight);

// The usual sizes, in pixels.
inline constexpr double headlineSize = 13;
inline constexpr double calloutSize = 12;
inline constexpr double captionSize = 10;

/// The colour of what a text is set on, at these parts of the text's own colour.
QColor mixed(const QPalette& palette, double part);

/// The text that is less important, and that which is least.
QColor secondaryText(const QPalette& palette);
QColor tertiaryText(const QPalette& palette);

QColor separator(const QPalette& palette);

/// The ground of a group of rows, and the line around it.
QColor groupFill(const QPalette& palette);
QColor groupBorder(const QPalette& palette);

/// The desktop's colour of links, made readable on the ground of a group where it is not.
QColor link(const QPalette& palette);

/// Draws the ring around a control that has the keyboard's focus, just within `rect`.
void drawFocusRing(QPainter& painter, const QPalette& palette, const QRectF& rect, double radius);

/// The text of a button that takes something away for good.
QColor destructiveText(const QPalette& palette);

} // namespace panelStyle
