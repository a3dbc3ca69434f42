#pragma once

#include "paint/DevicePatch.h"
#include "paint/Pixel.h"

#include <QPointF>

#include <span>
#include <vector>

class QPainterPath;

/// Draws a figure of round strokes and discs, in units of its own. It is there for figures that
/// move all day: QPainter shares the blending of a translucent shape out among threads from about a
/// hundred runs of pixels on, and waking them costs many times as much as the blending.
class FigureCanvas
{
public:
    /// For what shows of the figure within `exposed`; its origin and the length of its unit are in
    /// the painter's coordinates, as `exposed` is.
    FigureCanvas(const QPainter& painter, QPointF origin, double unit, const QRectF& exposed);

    /// Strokes the straight lines from point to point as one shape, with round caps and joins.
    void stroke(std::span<const QPointF> points, double width, const Color& color);

    void line(QPointF from, QPointF to, double width, const Color& color);
    void disc(QPointF center, double radius, const Color& color);
    void fill(const QPainterPath& path, const Color& color);

    /// What has been drawn so far, onto the painter that the canvas was made for.
    void drawOnto(QPainter& painter) const { drawPatch(painter, m_patch); }

private:
    /// A straight line in the patch's pixels, with what is the same for all of them.
    struct Line
    {
        Line(QPointF from, QPointF to);

        float x, y;   ///< where it starts
        float dx, dy; ///< from there to its end
        float perSquare;
    };

    /// Columns of a row, both included.
    struct Run
    {
        int first;
        int last;
    };

    QPointF toPatch(QPointF point) const { return m_origin + point * m_unit; }
    Run around(const Line& line, float reach, int row) const;
    Run cover(const Line& line, float radius, int row);
    void blend(Run run, const Pixel& ink, int row);

    DevicePatch m_patch;
    QPointF m_origin;              ///< in pixels from the middle of the patch's first one
    double m_unit;                 ///< in pixels
    std::vector<Line> m_lines;     ///< of the stroke in the making
    std::vector<float> m_coverage; ///< of a row's pixels by it
};
