#include "widget/FigureCanvas.h"

#include "paint/Colors.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

FigureCanvas::FigureCanvas(const QPainter& painter, QPointF origin, double unit,
                           const QRectF& exposed)
    : m_patch(painter, exposed)
    , m_origin(origin * m_patch.scale + m_patch.offset - m_patch.origin - QPointF(0.5, 0.5))
    , m_unit(unit * m_patch.scale)
    , m_coverage(static_cast<std::size_t>(m_patch.image.width()))
{}

void FigureCanvas::line(QPointF from, QPointF to, double width, const Color& color)
{
    stroke(std::array{from, to}, width, color);
}

void FigureCanvas::disc(QPointF center, double radius, const Color& color)
{
    // An edge fades over a pixel's width, of which more lies outside of the circle than inside:
    // without this a disc as small as a pixel would be half as bright again.
    const double surplus = 1 / (12 * m_unit * m_unit);
    const double evened = std::sqrt(std::max(radius * radius - surplus, 0.0));
    line(center, center, 2 * evened, color);
}

void FigureCanvas::fill(const QPainterPath& path, const Color& color)
{
    QPainter painter(&m_patch.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(m_origin + QPointF(0.5, 0.5));
    painter.scale(m_unit, m_unit);
    painter.fillPath(path, toQColor(color));
}

FigureCanvas::Line::Line(QPointF from, QPointF to)
    : x(static_cast<float>(from.x()))
    , y(static_cast<float>(from.y()))
    , dx(static_cast<float>(to.x() - from.x()))
    , dy(static_cast<float>(to.y() - from.y()))
    , perSquare(from == to ? 0 : 1 / (dx * dx + dy * dy))
{}

void FigureCanvas::stroke(std::span<const QPointF> points, double width, const Color& color)
{
    m_lines.clear();
    for (std::size_t i = 1; i < points.size(); ++i)
        m_lines.emplace_back(toPatch(points[i - 1]), toPatch(points[i]));
    const Pixel ink = pixelOf(color);
    const double radius = width / 2 * m_unit;
    const auto [highest, lowest] = std::ranges::minmax(points, {}, &QPointF::y);
    const double top = std::ceil(toPatch(highest).y() - radius - 0.5);
    const double bottom = std::floor(toPatch(lowest).y() + radius + 0.5);
    const int firstRow = static_cast<int>(std::max(top, 0.0));
    const int lastRow = static_cast<int>(std::min(bottom, m_patch.image.height() - 1.0));
    for (int row = firstRow; row <= lastRow; ++row) {
        Run covered{m_patch.image.width(), -1};
        for (const Line& line : m_lines) {
            const Run run = cover(line, static_cast<float>(radius), row);
            covered = {std::min(covered.first, run.first), std::max(covered.last, run.last)};
        }
        blend(covered, ink, row);
    }
}

/// The row's pixels that may be within `reach` of the line.
FigureCanvas::Run FigureCanvas::around(const Line& line, float reach, int row) const
{
    const Run nothing{m_patch.image.width(), -1};
    const float y = static_cast<float>(row) - line.y;
    // The part of the line that is as near to the row: from 0, its start, to 1, its end.
    float near = 0;
    float far = 1;
    if (line.dy != 0) {
        const float half = reach / std::abs(line.dy);
        near = std::max(near, y / line.dy - half);
        far = std::min(far, y / line.dy + half);
    }
    if (near > far || (line.dy == 0 && std::abs(y) > reach))
        return nothing;
    const float middle = line.x + (near + far) / 2 * line.dx;
    const float half = (far - near) / 2 * std::abs(line.dx) + reach;
    const auto width = static_cast<float>(m_patch.image.width());
    const Run run{static_cast<int>(std::max(middle - half, 0.0F)),
                  static_cast<int>(std::min(middle + half, width - 1))};
    return run.first <= run.last ? run : nothing;
}

/// Adds what the line covers of the row's pixels, and says between which it does.
FigureCanvas::Run FigureCanvas::cover(const Line& line, float radius, int row)
{
    const float reach = radius + 0.5F;
    const Run run = around(line, reach, row);
    const float y = static_cast<float>(row) - line.y;
    const float inside = std::max(radius - 0.5F, 0.0F);
    const float most = std::min(2 * radius, 1.0F);
    float* coverage = m_coverage.data();
    // Covers one pixel, or says that it is covered as much as can be.
    const auto isFull = [&](int column) {
        const float x = static_cast<float>(column) - line.x;
        const float part = std::clamp((x * line.dx + y * line.dy) * line.perSquare, 0.0F, 1.0F);
        const float awayX = x - part * line.dx;
        const float awayY = y - part * line.dy;
        const float away = awayX * awayX + awayY * awayY;
        if (away <= inside * inside)
            return true;
        if (away < reach * reach)
            coverage[column] = std::max(coverage[column], std::min(reach - std::sqrt(away), most));
        return false;
    };
    // Between two pixels that it covers fully there are only such pixels.
    int firstFull = run.first;
    while (firstFull <= run.last && !isFull(firstFull))
        ++firstFull;
    int lastFull = run.last;
    while (lastFull > firstFull && !isFull(lastFull))
        --lastFull;
    if (firstFull <= lastFull)
        std::fill(coverage + firstFull, coverage + lastFull + 1, most);
    return run;
}

/// Lays ink over the run's pixels as far as they are covered, and clears their coverage.
void FigureCanvas::blend(Run run, const Pixel& ink, int row)
{
    const QRgb solid = toRgb(ink);
    QRgb* pixels = m_patch.row(row);
    for (int column = run.first; column <= run.last; ++column) {
        const float part = std::exchange(m_coverage[static_cast<std::size_t>(column)], 0.0F);
        QRgb& pixel = pixels[column];
        if (part <= 0)
            continue;
        // Most pixels are still empty.
        if (pixel != 0)
            pixel = toRgb(over(ink * part, fromRgb(pixel)));
        else
            pixel = part < 1 ? toRgb(ink * part) : solid;
    }
}
