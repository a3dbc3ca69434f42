#pragma once

#include "core/Phase.h"
#include "paint/ContinuousCorners.h"

#include <QImage>
#include <QPointF>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

/// The three figures once more, painted slowly and in another way: whether a point belongs to a
/// shape is asked at many points of every pixel on its edge, and colours are not rounded before the
/// last shape is blended. All lengths are in units of the figures' square of 100.
namespace reference {

struct Ink
{
    double red, green, blue, opacity;
};

inline Ink white(double opacity)
{
    return {1, 1, 1, opacity};
}

/// The figures' colours, which must come from the phase.
struct Palette
{
    Ink tint, highlight;
};

inline Palette paletteOf(Phase phase)
{
    switch (phase) {
    case Phase::sitting:
        return {{0.45, 0.55, 1.0, 1}, {0.62, 0.78, 1.0, 1}};
    case Phase::standing:
        return {{1.0, 0.63, 0.22, 1}, {1.0, 0.82, 0.45, 1}};
    case Phase::pushups:
        break;
    }
    return {{1.0, 0.32, 0.45, 1}, {1.0, 0.55, 0.68, 1}};
}

inline Ink withOpacity(Ink ink, double opacity)
{
    ink.opacity = opacity;
    return ink;
}

class Picture
{
public:
    /// `side` pixels wide and high, each unit `scale` pixels, on an opaque ground.
    Picture(int side, double scale, QPointF origin, Ink ground)
        : m_side(side)
        , m_scale(scale)
        , m_origin(origin)
        , m_pixels(indexOf(0, side), {ground.red, ground.green, ground.blue, false})
    {}

    /// Fills the shape of the points whose `distance(x, y)` from it is negative; no distance may be
    /// larger than it really is. The shape is within `box`.
    template <typename Distance>
    void fill(const QRectF& box, const Ink& ink, Distance distance)
    {
        const double pixel = 1 / m_scale;
        const QRect pixels = QRectF(box.topLeft() * m_scale + m_origin, box.size() * m_scale)
                                 .toAlignedRect()
                                 .intersected(QRect(0, 0, m_side, m_side));
        for (int row = pixels.top(); row <= pixels.bottom(); ++row) {
            for (int column = pixels.left(); column <= pixels.right(); ++column) {
                const double x = (column + 0.5 - m_origin.x()) * pixel;
                const double y = (row + 0.5 - m_origin.y()) * pixel;
                const double away = distance(x, y);
                if (away > pixel)
                    continue;
                const bool onEdge = away > -pixel;
                at(column, row).onEdge |= onEdge;
                blend(at(column, row), ink, onEdge ? coveredPart(x, y, distance) : 1);
            }
        }
    }

    /// A stroke through the points with round caps and joins.
    void stroke(const std::vector<QPointF>& points, double width, const Ink& ink)
    {
        const auto [left, right] = std::ranges::minmax(points, {}, &QPointF::x);
        const auto [top, bottom] = std::ranges::minmax(points, {}, &QPointF::y);
        const QRectF line(QPointF(left.x(), top.y()), QPointF(right.x(), bottom.y()));
        fill(around(line, width / 2), ink, [&](double x, double y) {
            double nearest = 1e9;
            for (std::size_t i = 1; i < points.size(); ++i)
                nearest = std::min(nearest, distanceFromLine({x, y}, points[i - 1], points[i]));
            return nearest - width / 2;
        });
    }

    void disc(QPointF center, double radius, const Ink& ink)
    {
        fill(around({center, center}, radius), ink, [&](double x, double y) {
            return std::hypot(x - center.x(), y - center.y()) - radius;
        });
    }

    struct Pixel
    {
        double red, green, blue;
        bool onEdge; ///< of any shape
    };

    const Pixel& at(int column, int row) const { return m_pixels[indexOf(column, row)]; }

private:
    std::size_t indexOf(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_side) +
               static_cast<std::size_t>(column);
    }

    Pixel& at(int column, int row) { return m_pixels[indexOf(column, row)]; }

    static QRectF around(const QRectF& rect, double margin)
    {
        return rect.adjusted(-margin, -margin, margin, margin);
    }

    template <typename Distance>
    double coveredPart(double x, double y, Distance distance) const
    {
        constexpr int samples = 12;
        int inside = 0;
        for (int i = 0; i < samples; ++i) {
            for (int j = 0; j < samples; ++j) {
                const double dx = ((i + 0.5) / samples - 0.5) / m_scale;
                const double dy = ((j + 0.5) / samples - 0.5) / m_scale;
                inside += distance(x + dx, y + dy) < 0;
            }
        }
        return double(inside) / (samples * samples);
    }

    static void blend(Pixel& pixel, const Ink& ink, double covered)
    {
        const double part = ink.opacity * covered;
        pixel.red += (ink.red - pixel.red) * part;
        pixel.green += (ink.green - pixel.green) * part;
        pixel.blue += (ink.blue - pixel.blue) * part;
    }

    static double distanceFromLine(QPointF point, QPointF from, QPointF to)
    {
        const QPointF way = to - from;
        const double length = std::hypot(way.x(), way.y());
        const double along = QPointF::dotProduct(point - from, way) / length;
        if (along < 0)
            return std::hypot(point.x() - from.x(), point.y() - from.y());
        if (along > length)
            return std::hypot(point.x() - to.x(), point.y() - to.y());
        return std::abs((point.x() - from.x()) * way.y() - (point.y() - from.y()) * way.x()) /
               length;
    }

    int m_side;
    double m_scale;
    QPointF m_origin;
    std::vector<Pixel> m_pixels;
};

inline void drawCup(Picture& picture, const Ink& ink)
{
    const QRectF box(62, 39, 10, 8);
    const QPainterPath cup = continuousRoundedRect(box, 2);
    picture.fill(box, ink, [&cup](double x, double y) {
        const double besides = std::abs(x - 67) - 5;
        const double above = std::abs(y - 43) - 4;
        const double outside = std::max(besides, above);
        // No corner reaches further than 3 along the edges, or cuts deeper than 1.
        if (outside >= 0 || std::min(besides, above) < -3)
            return outside;
        return cup.contains(QPointF(x, y)) ? std::min(outside + 1, -1e-9) : 1e-9;
    });
}

inline void drawWisp(Picture& picture, int k, double t)
{
    const double risen = 10 * t + 15.2 * k;
    const double rise = risen - 14 * std::floor(risen / 14);
    const double x = (k == 0 ? 65 : 69) + 1.6 * std::sin(2.4 * t + (k == 0 ? 0 : 1.9));
    const double y = 36 - rise;
    std::vector<QPointF> curve;
    for (int i = 0; i <= 40; ++i) {
        const double u = i / 40.0;
        curve.emplace_back(x + 6 * u - 5 * u * u, y - 6 * u);
    }
    picture.stroke(curve, 2, white(std::max(0.55 - rise / 22, 0.0)));
}

inline void drawSitting(Picture& picture, const Palette& palette, double t)
{
    const Ink furniture = withOpacity(palette.tint, 0.9);
    const Ink person = white(0.92);
    const double bob = 1.4 * std::sin(1.6 * t);
    picture.stroke({{44, 48}, {92, 48}}, 5, furniture);
    picture.stroke({{84, 48}, {84, 86}}, 4, furniture);
    picture.stroke({{18, 40}, {18, 64}}, 4, furniture);
    picture.stroke({{18, 64}, {40, 64}}, 4, furniture);
    picture.stroke({{28, 64}, {28, 86}}, 4, furniture);
    picture.stroke({{34, 62}, {54, 62}}, 5, person);
    picture.stroke({{54, 62}, {54, 84}}, 5, person);
    picture.stroke({{34, 62}, {30, 38 + bob}}, 5, person);
    picture.disc({29, 26 + bob}, 7, person);
    picture.stroke({{30, 42 + bob}, {54, 48}}, 5, person);
    drawCup(picture, furniture);
    drawWisp(picture, 0, t);
    drawWisp(picture, 1, t);
}

inline void drawStanding(Picture& picture, const Palette& palette, double t)
{
    const Ink furniture = withOpacity(palette.tint, 0.9);
    const Ink person = white(0.92);
    const double sway = std::sin(1.2 * t);
    const double bob = std::sin(1.6 * t);
    const auto bodyX = [sway](double y) { return 26 + 0.03 * sway * (86 - y); };
    const double shoulder = 32 + bob;
    picture.stroke({{42, 40}, {92, 40}}, 5, furniture);
    picture.stroke({{50, 40}, {50, 86}}, 4, furniture);
    picture.stroke({{84, 40}, {84, 86}}, 4, furniture);
    picture.stroke({{26, 86}, {26 + 0.84 * sway, 58}}, 5, person);
    picture.stroke({{26 + 0.84 * sway, 58}, {bodyX(shoulder), shoulder}}, 5, person);
    picture.disc({bodyX(20 + bob), 20 + bob}, 7, person);
    picture.stroke({{bodyX(shoulder), 35 + bob}, {48, 40}}, 5, person);
    const std::array<QPointF, 3> sparks{{{10, 18}, {44, 14}, {14, 34}}};
    for (std::size_t i = 0; i < 3; ++i) {
        const double k = 0.5 + 0.5 * std::sin(2.8 * t + 2.1 * static_cast<double>(i));
        picture.disc(sparks[i], 1.4 * (1 + k), withOpacity(palette.highlight, 0.25 + 0.6 * k));
    }
}

inline void drawPushups(Picture& picture, const Palette& palette, double t)
{
    const Ink person = white(0.92);
    const double p = 0.5 - 0.5 * std::cos(2.6 * t);
    const QPointF shoulder(26, 50 + 16 * p);
    // 78 + 0.55 * (50 + 16 p - 78) + 2 p
    const QPointF hip(56, 62.6 + 10.8 * p);
    const double length = std::sqrt(900 + std::pow(shoulder.y() - hip.y(), 2));
    picture.stroke({{6, 82}, {94, 82}}, 4, withOpacity(palette.tint, 0.9));
    picture.stroke({{86, 78}, hip, shoulder}, 5.5, person);
    picture.disc({26 - 360 / length, shoulder.y() + 12 * (shoulder.y() - hip.y()) / length}, 6.5,
                 person);
    picture.stroke({shoulder, {32 + 10 * p, 66 + 8 * p}, {30, 78}}, 5, person);
    if (p > 0.82) {
        const double q = (p - 0.82) / 0.18;
        for (const QPointF center : {QPointF(12, 52), QPointF(20, 46)})
            picture.disc(center, 1.5 * (1 + q), withOpacity(palette.highlight, 0.7 * q));
    }
}

inline void draw(Picture& picture, Phase phase, double t)
{
    const Palette palette = paletteOf(phase);
    switch (phase) {
    case Phase::sitting:
        drawSitting(picture, palette, t);
        break;
    case Phase::standing:
        drawStanding(picture, palette, t);
        break;
    case Phase::pushups:
        drawPushups(picture, palette, t);
        break;
    }
}

} // namespace reference
