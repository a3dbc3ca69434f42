#pragma once

#include <QFont>
#include <QPainterPath>
#include <QString>

class QBrush;
class QPainter;

/// How a line of the widget's text is set.
struct TextStyle
{
    enum class Design {
        rounded, ///< the first rounded family that is installed
        plain,   ///< the font of the desktop
    };

    int size = 12; ///< logical pixels
    QFont::Weight weight = QFont::Normal;
    double tracking = 0;      ///< extra room between letters, in logical pixels
    bool fixedDigits = false; ///< for a countdown, of digits and colons: all digits take
                              ///< the same room
    Design design = Design::rounded;
};

/// The room that a style's lines need above and below the baseline, in whole logical pixels.
struct LineMetrics
{
    int ascent = 0;
    int descent = 0;

    int height() const { return ascent + descent; }
};

LineMetrics metricsOf(const TextStyle& style);

/// A line of text as outlines: it looks the same at every scale, whatever the desktop has set for
/// the rendering of fonts, and takes any brush.
class TextLine
{
public:
    TextLine(const QString& text, const TextStyle& style);

    /// From the first letter's origin to the end of the last letter.
    double width() const { return m_width; }

    /// What its letters cover, from the first one's origin.
    QRectF box() const { return m_outline.boundingRect(); }

    /// Makes a line that is wider than `room` as much smaller as it has to be.
    void fitInto(double room);

    /// Draws it with its baseline starting at `origin`.
    void draw(QPainter& painter, QPointF origin, const QBrush& brush) const;

private:
    void addNumerals(const QString& text, const TextStyle& style);

    QPainterPath m_outline;
    double m_width = 0;
};
