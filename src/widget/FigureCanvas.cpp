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

void FigureCanvas::stroke(std::span<const QPointF> points, double width, const Color& color)
{
    const Pixel ink = pixelOf(color);
    const double radius = width / 2 * m_unit;
    const auto [highest, lowest] = std::ranges::minmax(points, {}, &QPointF::y);
    const double top = std::ceil(toPatch(highest).y() - radius - 0.5);
    const double bottom = std::floor(toPatch(lowest).y() + radius + 0.5);
    const int firstRow = static_cast<int>(std::max(top, 0.0));
    const int lastRow = static_cast<int>(std::min(bottom, m_patch.image.height() - 1.0));
    for (int row = firstRow; row <= lastRow; ++row) {
        Run covered{m_patch.image.width(), -1};
        for (std::size_t i = 1; i < points.size(); ++i) {
            const Run run =
                cover(row, toPatch(points[i - 1]), toPatch(points[i]), static_cast<float>(radius));
            covered = {std::min(covered.first, run.first), std::max(covered.last, run.last)};
        }
        blend(row, covered, ink);
    }
}

/// Adds what the line covers of the row's pixels, and says between which it does.
FigureCanvas::Run FigureCanvas::cover(int row, QPointF from, QPointF to, float radius)
{
    const Run nothing{m_patch.image.width(), -1};
    const float reach = radius + 0.5F;
    const auto x = static_cast<float>(from.x());
    const auto dx = static_cast<float>(to.x() - from.x());
    const auto dy = static_cast<float>(to.y() - from.y());
    const float y = static_cast<float>(row) - static_cast<float>(from.y());

    // The part of the line that is near enough to the row to reach it: from 0, its start, to 1.
    float near = 0;
    float far = 1;
    if (dy != 0) {
        const auto [a, b] = std::minmax({(y - reach) / dy, (y + reach) / dy});
        near = std::max(near, a);
        far = std::min(far, b);
    }
    if (near > far || (dy == 0 && std::abs(y) > reach))
        return nothing;
    const auto [left, right] = std::minmax({x + near * dx, x + far * dx});
    const auto width = static_cast<float>(m_patch.image.width());
    const Run run{static_cast<int>(std::max(std::ceil(left - reach), 0.0F)),
                  static_cast<int>(std::min(std::floor(right + reach), width - 1))};
    if (run.first > run.last)
        return nothing;

    const float square = dx * dx + dy * dy;
    const float perSquare = square > 0 ? 1 / square : 0;
    const float inside = std::max(radius - 0.5F, 0.0F);
    const float most = std::min(2 * radius, 1.0F);
    float* coverage = m_coverage.data();
    // Covers one pixel, or says that it is covered as much as can be.
    const auto isFull = [&](int column) {
        const float px = static_cast<float>(column) - x;
        const float part = std::clamp((px * dx + y * dy) * perSquare, 0.0F, 1.0F);
        const float awayX = px - part * dx;
        const float awayY = y - part * dy;
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
void FigureCanvas::blend(int row, Run run, const Pixel& ink)
{
    const QRgb solid = toRgb(ink);
    QRgb* pixels = m_patch.row(row);
    for (int column = run.first; column <= run.last; ++column) {
        const float part = std::exchange(m_coverage[static_cast<std::size_t>(column)], 0.0F);
        if (part >= 1 && pixels[column] == 0)
            pixels[column] = solid;
        else if (part > 0)
            pixels[column] = toRgb(over(ink * part, fromRgb(pixels[column])));
    }
}
