#include "paint/Symbol.h"

#include "paint/SymbolTable.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Where the lines of the grid lie along one axis, in device pixels. Lines with straight edges of
/// the symbol on them lie on whole pixels; what is between them is stretched to fit.
class GridLines
{
public:
    explicit GridLines(double side)
        : m_side(side)
    {
        m_sharp.front() = true;
        m_sharp.back() = true;
    }

    /// There is an edge along `position`, which counts if that is a line of the grid.
    void addEdge(double position)
    {
        const double line = std::round(position);
        if (std::abs(position - line) < 0.01)
            m_sharp.at(static_cast<std::size_t>(line)) = true;
    }

    /// To be called when all edges are known.
    void place()
    {
        std::size_t last = 0;
        for (std::size_t line = 1; line < m_sharp.size(); ++line) {
            if (!m_sharp[line])
                continue;
            m_places[line] = wholePixel(static_cast<double>(line) * m_side / symbolGridSide);
            for (std::size_t between = last + 1; between < line; ++between) {
                m_places[between] = std::lerp(m_places[last], m_places[line],
                                              static_cast<double>(between - last) /
                                                  static_cast<double>(line - last));
            }
            last = line;
        }
    }

    double at(double position) const
    {
        const auto line = std::min(static_cast<std::size_t>(position), m_places.size() - 2);
        return std::lerp(m_places[line], m_places[line + 1], position - static_cast<double>(line));
    }

private:
    /// The nearest; of two equally near ones that farther from the middle, to keep the symmetry.
    double wholePixel(double place) const
    {
        constexpr double margin = 1e-6;
        return std::round(place + (place < m_side / 2 ? -margin : margin));
    }

    double m_side;
    std::array<bool, symbolGridSide + 1> m_sharp{};
    std::array<double, symbolGridSide + 1> m_places{};
};

/// The outline of a symbol made `side` device pixels large, with sharp edges.
QPainterPath fittedToPixels(QPainterPath outline, double side)
{
    constexpr double shortestEdge = 1;
    GridLines columns(side);
    GridLines rows(side);
    for (int i = 1; i < outline.elementCount(); ++i) {
        const QPainterPath::Element to = outline.elementAt(i);
        const QPointF edge = QPointF(to) - outline.elementAt(i - 1);
        if (to.isMoveTo())
            continue;
        if (edge.x() == 0 && std::abs(edge.y()) >= shortestEdge)
            columns.addEdge(to.x);
        if (edge.y() == 0 && std::abs(edge.x()) >= shortestEdge)
            rows.addEdge(to.y);
    }
    columns.place();
    rows.place();
    for (int i = 0; i < outline.elementCount(); ++i) {
        const QPainterPath::Element point = outline.elementAt(i);
        outline.setElementPositionAt(i, columns.at(point.x), rows.at(point.y));
    }
    return outline;
}

} // namespace

QPainterPath symbolPath(QStringView name)
{
    const auto entries = symbolEntries();
    const auto entry = std::find_if(entries.begin(), entries.end(), [name](const SymbolEntry& e) {
        return name == QLatin1StringView(e.name);
    });
    if (entry == entries.end())
        return {};
    QPainterPath path;
    for (const SymbolPoint& point : symbolPoints().subspan(entry->first, entry->count)) {
        const QPointF corner = QPointF(point.x, point.y) / symbolPointFineness;
        if (point.beginsContour)
            path.moveTo(corner);
        else
            path.lineTo(corner);
    }
    return path;
}

void drawSymbol(QPainter& painter, QStringView name, const QRectF& box, const QBrush& brush)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF exact = toDevice.mapRect(box);
    const double side = std::round(exact.width());
    const QPointF corner(std::round(exact.center().x() - side / 2),
                         std::round(exact.center().y() - side / 2));
    const QPainterPath outline = fittedToPixels(symbolPath(name), side).translated(corner);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(toDevice.inverted().map(outline), brush);
    painter.restore();
}
