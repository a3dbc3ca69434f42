// Turns the program's symbols, one SVG file each, into C++ tables of outlines: the running program
// needs neither an SVG reader nor the files. Usage: make_symbols OUTPUT.cpp SYMBOL.svg...

#include "paint/SymbolTable.h"

#include <QFile>
#include <QFileInfo>
#include <QLineF>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <span>

namespace {

constexpr double gridSide = symbolGridSide;

/// Units of the grid by which thinning out the points of an outline may bend it: far less than what
/// the eye sees in a symbol three times as large as usual.
constexpr double tolerance = 0.004;

/// Device units to one unit of the grid. Uniting shapes breaks curves into lines, to a tolerance in
/// device units.
constexpr double fineness = 64;

/// Unites all that is painted into one outline.
class OutlineEngine : public QPaintEngine
{
public:
    OutlineEngine()
        : QPaintEngine(AllFeatures)
    {}

    const QPainterPath& outline() const { return m_outline; }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}

    void updateState(const QPaintEngineState& next) override
    {
        const DirtyFlags dirty = next.state();
        if (dirty & DirtyPen)
            m_pen = next.pen();
        if (dirty & DirtyBrush)
            m_brush = next.brush();
        if (dirty & DirtyTransform)
            m_transform = next.transform();
    }

    void drawPath(const QPainterPath& path) override
    {
        const QPainterPath shape = m_transform.map(path);
        if (m_brush.style() != Qt::NoBrush)
            add(shape);
        if (m_pen.style() != Qt::NoPen) {
            QPainterPathStroker stroker(m_pen);
            stroker.setWidth(m_pen.widthF() * m_transform.m11());
            add(stroker.createStroke(shape));
        }
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override
    {
        QPainterPath path;
        path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
        if (mode != PolylineMode)
            path.closeSubpath();
        drawPath(path);
    }

private:
    /// Simplified, the holes of a shape are holes whatever its fill rule was.
    void add(const QPainterPath& shape) { m_outline = m_outline.united(shape.simplified()); }

    QPainterPath m_outline;
    QPen m_pen;
    QBrush m_brush;
    QTransform m_transform;
};

/// A picture of the grid's size that keeps the outline of what is painted.
class OutlineDevice : public QPaintDevice
{
public:
    QPaintEngine* paintEngine() const override { return &m_engine; }
    const QPainterPath& outline() const { return m_engine.outline(); }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return static_cast<int>(gridSide * fineness);
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmDpiX:
        case PdmDpiY:
            return 96;
        default:
            return 0;
        }
    }

private:
    mutable OutlineEngine m_engine;
};

[[noreturn]] void fail(const QString& what)
{
    std::fprintf(stderr, "make_symbols: %s\n", qUtf8Printable(what));
    std::_Exit(1);
}

/// Qt only warns of what it cannot read in an SVG file.
void failAtWarning(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        fail(message);
}

QPainterPath outlineOf(const QString& file)
{
    QSvgRenderer drawing(file);
    if (!drawing.isValid())
        fail(file + QStringLiteral(" is not readable"));
    if (drawing.viewBoxF() != QRectF(0, 0, gridSide, gridSide))
        fail(file + QStringLiteral(" does not have the view box 0 0 16 16"));
    OutlineDevice device;
    QPainter painter(&device);
    drawing.render(&painter, QRectF(0, 0, gridSide * fineness, gridSide * fineness));
    painter.end();
    if (device.outline().isEmpty())
        fail(file + QStringLiteral(" draws nothing"));
    const QPainterPath outline =
        QTransform::fromScale(1 / fineness, 1 / fineness).map(device.outline());
    if (!QRectF(0, 0, gridSide, gridSide).contains(outline.boundingRect()))
        fail(file + QStringLiteral(" draws outside of its view box"));
    return outline;
}

double distance(QPointF point, const QLineF& line)
{
    const QPointF across = line.normalVector().unitVector().p2() - line.p1();
    return std::abs(QPointF::dotProduct(point - line.p1(), across));
}

/// The polygon without the points that its other points make up for. Straight edges stay as they
/// are.
QPolygonF thinned(const QPolygonF& polygon)
{
    constexpr double shortestEdge = 0.25;
    QPolygonF result{polygon.first()};
    for (auto from = polygon.begin(), to = from + 1; to + 1 < polygon.end(); ++to) {
        const QLineF shortcut(*from, *(to + 1));
        const auto isAside = [&shortcut](QPointF point) {
            return distance(point, shortcut) > tolerance;
        };
        if (QLineF(*(to - 1), *to).length() > shortestEdge ||
            QLineF(*to, *(to + 1)).length() > shortestEdge ||
            std::any_of(from + 1, to + 1, isAside)) {
            result << *to;
            from = to;
        }
    }
    return result;
}

void writeTables(QTextStream& source, const QStringList& files)
{
    QString entries;
    int count = 0;
    source << "#include \"paint/SymbolTable.h\"\n\nnamespace {\n\n"
              "constexpr SymbolPoint points[] = {\n";
    for (const QString& file : files) {
        const QString name = QFileInfo(file).completeBaseName();
        const int first = count;
        for (const QPolygonF& contour : outlineOf(file).toSubpathPolygons()) {
            const char* beginsContour = "true";
            for (const QPointF& point : thinned(contour)) {
                source << "    {" << qRound(point.x() * symbolPointFineness) << ", "
                       << qRound(point.y() * symbolPointFineness) << ", " << beginsContour
                       << "},\n";
                beginsContour = "false";
                ++count;
            }
        }
        entries +=
            QStringLiteral("    {\"%1\", %2, %3},\n").arg(name).arg(first).arg(count - first);
    }
    source << "};\n\nconstexpr SymbolEntry entries[] = {\n"
           << entries
           << "};\n\n} // namespace\n\n"
              "std::span<const SymbolEntry> symbolEntries()\n{\n    return entries;\n}\n\n"
              "std::span<const SymbolPoint> symbolPoints()\n{\n    return points;\n}\n";
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 3) {
        std::fputs("usage: make_symbols OUTPUT.cpp SYMBOL.svg...\n", stderr);
        return 2;
    }
    qInstallMessageHandler(failAtWarning);
    QStringList files;
    for (const char* file : std::span(argv + 2, argv + argc))
        files += QFile::decodeName(file);
    QString tables;
    QTextStream source(&tables);
    writeTables(source, files);
    source.flush();
    QFile output(QFile::decodeName(argv[1]));
    const QByteArray text = tables.toUtf8();
    if (!output.open(QIODevice::WriteOnly) || output.write(text) != text.size() || !output.flush())
        fail(output.fileName() + QStringLiteral(" cannot be written"));
    return 0;
}
