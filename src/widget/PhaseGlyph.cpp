#include "widget/PhaseGlyph.h"

#include "paint/ContinuousCorners.h"
#include "widget/FigureCanvas.h"
#include "widget/Wrapped.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// The figures are designed on a square of 100 units; t is in seconds.
constexpr double designSide = 100;

constexpr double furnitureOpacity = 0.9;
constexpr double personOpacity = 0.92;

constexpr Color white(double opacity)
{
    return {1, 1, 1, opacity};
}

constexpr Color person = white(personOpacity);

Color faded(const Color& color, double opacity)
{
    return {color.red, color.green, color.blue, color.opacity * opacity};
}

// --- sitting --------------------------------------------------------------------------------

/// A wisp of steam that curls from `from`, six units up.
void drawWisp(FigureCanvas& canvas, QPointF from, double opacity)
{
    const QPointF pull = from + QPointF(3, -3);
    const QPointF to = from + QPointF(1, -6);
    // So many lines are nowhere further from the curve than a fiftieth of a unit.
    constexpr std::size_t lines = 8;
    std::array<QPointF, lines + 1> curve;
    for (std::size_t i = 0; i <= lines; ++i) {
        const double u = static_cast<double>(i) / lines;
        curve[i] = (1 - u) * (1 - u) * from + 2 * u * (1 - u) * pull + u * u * to;
    }
    canvas.stroke(curve, 2, white(opacity));
}

void drawSteam(FigureCanvas& canvas, double t)
{
    for (const int k : {0, 1}) {
        const double rise = wrapped(10 * t + 15.2 * k, 14);
        const double x = 65 + 4 * k + 1.6 * std::sin(2.4 * t + 1.9 * k);
        const double opacity = 0.55 - rise / 22;
        if (opacity > 0)
            drawWisp(canvas, {x, 36 - rise}, opacity);
    }
}

void drawSitting(FigureCanvas& canvas, const PhaseFacts& facts, double t)
{
    const Color furniture = faded(facts.darkTone, furnitureOpacity);
    static const QPainterPath cup = continuousRoundedRect({62, 39, 10, 8}, 2);
    const double b = 1.4 * std::sin(1.6 * t);

    canvas.line({44, 48}, {92, 48}, 5, furniture);  // desk top
    canvas.line({84, 48}, {84, 86}, 4, furniture);  // desk leg
    canvas.line({18, 40}, {18, 64}, 4, furniture);  // chair back
    canvas.line({18, 64}, {40, 64}, 4, furniture);  // chair seat
    canvas.line({28, 64}, {28, 86}, 4, furniture);  // chair leg
    canvas.line({34, 62}, {54, 62}, 5, person);     // thigh
    canvas.line({54, 62}, {54, 84}, 5, person);     // shin
    canvas.line({34, 62}, {30, 38 + b}, 5, person); // torso
    canvas.disc({29, 26 + b}, 7, person);           // head
    canvas.line({30, 42 + b}, {54, 48}, 5, person); // arm
    canvas.fill(cup, furniture);
    drawSteam(canvas, t);
}

// --- standing -------------------------------------------------------------------------------

void drawSparks(FigureCanvas& canvas, const Color& color, double t)
{
    constexpr std::array centers{QPointF(10, 18), QPointF(44, 14), QPointF(14, 34)};
    double delay = 0;
    for (const QPointF center : centers) {
        const double k = (std::sin(2.8 * t + delay) + 1) * 0.5;
        canvas.disc(center, 1.4 + 1.4 * k, faded(color, 0.25 + 0.6 * k));
        delay += 2.1;
    }
}

void drawStanding(FigureCanvas& canvas, const PhaseFacts& facts, double t)
{
    const Color furniture = faded(facts.darkTone, furnitureOpacity);
    const double s2 = std::sin(1.6 * t);
    const double lean = -0.03 * std::sin(1.2 * t);
    // The body leans to the side, the more the higher above the foot.
    const auto bodyAt = [lean](double y) { return QPointF(26 + lean * (y - 86), y); };
    const QPointF foot(26, 86);
    const QPointF hip = bodyAt(58);
    const QPointF shoulder = bodyAt(32 + s2);

    canvas.line({42, 40}, {92, 40}, 5, furniture); // desk top
    canvas.line({50, 40}, {50, 86}, 4, furniture);
    canvas.line({84, 40}, {84, 86}, 4, furniture);
    canvas.line(foot, hip, 5, person);
    canvas.line(hip, shoulder, 5, person);
    canvas.disc(bodyAt(20 + s2), 7, person);                    // head
    canvas.line(shoulder + QPointF(0, 3), {48, 40}, 5, person); // arm
    drawSparks(canvas, facts.lightTone, t);
}

// --- push-ups -------------------------------------------------------------------------------

void drawSweat(FigureCanvas& canvas, const Color& color, double p)
{
    constexpr double start = 0.82;
    if (p <= start)
        return;
    const double q = (p - start) / 0.18;
    for (const QPointF center : {QPointF(12, 52), QPointF(20, 46)})
        canvas.disc(center, 1.5 + 1.5 * q, faded(color, 0.7 * q));
}

void drawPushups(FigureCanvas& canvas, const PhaseFacts& facts, double t)
{
    const Color furniture = faded(facts.darkTone, furnitureOpacity);
    const double p = (1 - std::cos(2.6 * t)) * 0.5; // 0 at the top, 1 at the bottom
    const double shoulderY = 50 + 16 * p;
    const double hipY = 78 + 0.55 * (shoulderY - 78) + 2 * p;
    const QPointF feet(86, 78);
    const QPointF hip(56, hipY);
    const QPointF shoulder(26, shoulderY);
    const QPointF elbow(32 + 10 * p, (shoulderY + 78) * 0.5 + 2);
    const QPointF hand(30, 78);
    const QPointF back = shoulder - hip;
    const QPointF head = shoulder + 12 * back / std::hypot(back.x(), back.y());

    canvas.line({6, 82}, {94, 82}, 4, furniture); // floor
    canvas.stroke(std::array{feet, hip, shoulder}, 5.5, person);
    canvas.disc(head, 6.5, person);
    canvas.stroke(std::array{shoulder, elbow, hand}, 5, person);
    drawSweat(canvas, facts.lightTone, p);
}

// --------------------------------------------------------------------------------------------

double unitIn(const QRectF& rect)
{
    return std::min(rect.width(), rect.height()) / designSide;
}

QRectF placed(const QRectF& design, const QRectF& rect)
{
    const double unit = unitIn(rect);
    return {rect.topLeft() + design.topLeft() * unit, design.size() * unit};
}

/// A rectangle in units of the design.
struct Extent
{
    double left, top, right, bottom;
};

// A line that turns about a fixed end still has the same round cap there: what changes ends where
// the cap begins.
Extent motionExtent(Phase phase)
{
    switch (phase) {
    case Phase::sitting:
        // The head, a wisp as it fades away, the further wisp where it bends most, the torso's
        // edges at the hip.
        return {22, 36 - 12.1 - 6 - 1, 69 + 1.6 + 1.8 + 1, 62.44};
    case Phase::standing:
        // Two sparks at their largest, the arm's edges at the hand, the leg's at the foot.
        return {10 - 2.8, 14 - 2.8, 48.71, 86.08};
    case Phase::pushups:
        break;
    }
    // The head when down, the head when up, the legs' edges at the feet when up and when down.
    return {7.84, 38.85, 87.26, 80.72};
}

} // namespace

void drawPhaseGlyph(QPainter& painter, const QRectF& rect, Phase phase, double seconds)
{
    QRectF exposed = placed({0, 0, designSide, designSide}, rect);
    if (painter.hasClipping())
        exposed &= painter.clipBoundingRect();
    if (exposed.isEmpty())
        return;
    FigureCanvas canvas(painter, rect.topLeft(), unitIn(rect), exposed);
    const PhaseFacts& facts = factsOf(phase);
    switch (phase) {
    case Phase::sitting:
        drawSitting(canvas, facts, seconds);
        break;
    case Phase::standing:
        drawStanding(canvas, facts, seconds);
        break;
    case Phase::pushups:
        drawPushups(canvas, facts, seconds);
        break;
    }
    canvas.drawOnto(painter);
}

QRectF phaseGlyphMotionBounds(const QRectF& rect, Phase phase)
{
    const Extent extent = motionExtent(phase);
    return placed({QPointF(extent.left, extent.top), QPointF(extent.right, extent.bottom)}, rect);
}

double phaseGlyphSpeed(Phase phase)
{
    switch (phase) {
    case Phase::sitting: // the steam
        return 0.1;
    case Phase::standing: // the head
        return 0.03;
    case Phase::pushups: // the head
        return 0.23;
    }
    return 0;
}
