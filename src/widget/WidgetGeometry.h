#pragma once

#include "paint/TextLine.h"
#include "widget/WidgetMotion.h"

#include <QRectF>

/// Where everything is in the widget: what is drawn and what is clicked come from here. Logical
/// pixels from the top left corner of the widget; baselines are on whole ones, so that text is
/// sharp.

inline constexpr QSizeF fullSize(250, 320);
inline constexpr QSizeF compactSize(216, 76);

/// How far a card of this size is on its way from the full form (0) to the compact one (1).
double compactnessOf(QSizeF size);

/// A progress ring: its line runs along a circle, half of it outside.
struct RingGeometry
{
    QPointF center{};
    double diameter = 0; ///< of the middle of the line
    double lineWidth = 0;
    double pulseLineWidth = 0;
    double glyphSize = 0; ///< the side of the square with the figure

    double radius() const { return diameter / 2; }

    /// The square with the figure.
    QRectF glyph() const;
};

/// The ring of one form.
const RingGeometry& ringGeometry(bool compact);

/// The corners of the card.
double cornerRadius(bool compact);

namespace full {

inline constexpr double buttonDiameter = 30;
inline constexpr double buttonSpacing = 10;

struct Geometry
{
    double headerBaseline = 0; ///< of the title
    double titleLeft = 0;
    QRectF badge; ///< for a text of no width; it grows to the left
    double badgeBaseline = 0;
    RingGeometry ring;
    QRectF readout;
    QRectF hint;
    double hintBaseline = 0;
    QRectF controls;

    /// The baseline of a readout line in this style.
    double readoutBaseline(const LineMetrics& line) const;
};

/// Computed once: the fonts do not change while the program runs.
const Geometry& geometry();

} // namespace full

namespace compact {

inline constexpr double buttonDiameter = 26;
inline constexpr double buttonSpacing = 7;

struct Geometry
{
    RingGeometry ring;
    double textLeft = 0;
    double titleBaseline = 0;
    double readoutBaseline = 0;
    QRectF readout;
    QRectF row;       ///< the content with its padding
    QRectF checkMark; ///< the round button that reports the push-ups
};

/// The band over the content on which the controls lie.
QRect controlBand();

/// For a readout of this kind: the lines' height decides where they stand.
const Geometry& geometry(Readout::Kind kind);

} // namespace compact
