#include "widget/WidgetPainter.h"

#include "paint/Colors.h"
#include "paint/Group.h"
#include "widget/Accent.h"
#include "widget/CompletionPulse.h"
#include "widget/PhaseGlyph.h"
#include "widget/ProgressRing.h"
#include "widget/WidgetStyle.h"

#include <QPainter>

namespace {

constexpr double calmGlow = 0.32;
constexpr double completeGlow = 0.5;

constexpr double badgeFillOpacity = 0.08;
constexpr double badgeTextOpacity = 0.45;
constexpr double hintOpacity = 0.45;
constexpr double pausedHintOpacity = 0.5;
constexpr double repsOpacity = 0.5;
constexpr double repsSpacing = 5;

/// The size of a figure that has just come or is about to go.
constexpr double smallFigure = 0.7;

constexpr double headerSidePadding = 20;
constexpr double headerSpacing = 8;
constexpr double badgePadding = 8;

QColor white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

/// A picture in the making.
struct Picture
{
    QPainter& painter;
    const WidgetMotion& motion;
    Instant now;
    QRectF exposed;

    const WidgetModel& model() const { return motion.model; }
    bool shows(const QRectF& rect) const { return exposed.intersects(rect); }
};

Color mixedTone(const WidgetMotion& motion, Instant now, Color PhaseFacts::*tone)
{
    Color sum{0, 0, 0, 1};
    double weight = 0;
    motion.phases.visit(now, [&](Phase phase, double presence) {
        const Color& color = factsOf(phase).*tone;
        sum.red += presence * color.red;
        sum.green += presence * color.green;
        sum.blue += presence * color.blue;
        weight += presence;
    });
    return {sum.red / weight, sum.green / weight, sum.blue / weight, 1};
}

Tones tonesOf(const Picture& picture)
{
    return {mixedTone(picture.motion, picture.now, &PhaseFacts::lightTone),
            mixedTone(picture.motion, picture.now, &PhaseFacts::darkTone)};
}

// --- the ring with its figure ---------------------------------------------------------------

void paintStillRing(const Picture& picture, const RingGeometry& ring, const Tones& tones)
{
    const double turning = picture.motion.turning.at(picture.now);
    paintTrack(picture.painter, ring, picture.exposed);
    paintArc(picture.painter, ring, tones, picture.motion.progress.at(picture.now), 1 - turning,
             picture.exposed);
    if (turning > 0)
        paintTurningGlow(picture.painter, ring, tones, turning, picture.exposed);
}

void paintFigures(const Picture& picture, const RingGeometry& ring)
{
    const QRectF glyph = ring.glyph();
    const double seconds = picture.motion.figureTime(picture.now).seconds;
    picture.motion.phases.visit(picture.now, [&](Phase phase, double presence) {
        if (!picture.shows(glyph))
            return;
        paintGroup(picture.painter, presence, glyph, [&](QPainter& painter) {
            const double side = glyph.width() * (smallFigure + (1 - smallFigure) * presence);
            QRectF square(0, 0, side, side);
            square.moveCenter(glyph.center());
            drawPhaseGlyph(painter, square, phase, seconds);
        });
    });
}

void paintMovingRing(const Picture& picture, const RingGeometry& ring, const Tones& tones)
{
    const double turning = picture.motion.turning.at(picture.now);
    if (turning > 0) {
        paintTurningRing(picture.painter, ring, tones, picture.now.seconds, turning,
                         picture.exposed);
    }
    paintFigures(picture, ring);
}

// --- texts ----------------------------------------------------------------------------------

QString countText(const WidgetModel& model)
{
    return QStringLiteral("×") + QString::number(model.pushupCount);
}

struct HintText
{
    QString text;
    QColor color;
};

HintText hintText(const Hint& hint, const WidgetModel& model)
{
    const PhaseFacts& facts = factsOf(hint.phase);
    switch (hint.state) {
    case TimerEngine::State::complete:
        return {facts.completionMessage + QStringLiteral(" — click to continue"),
                toQColor(facts.lightTone)};
    case TimerEngine::State::paused:
        return {QStringLiteral("Paused"), white(pausedHintOpacity)};
    case TimerEngine::State::running:
        break;
    }
    if (hint.phase == Phase::pushups) {
        return {QStringLiteral("Drop and give me ") + QString::number(model.pushupCount),
                white(hintOpacity)};
    }
    return {facts.subtitle, white(hintOpacity)};
}

void paintCentered(QPainter& painter, const QRectF& room, double baseline, TextLine line,
                   const QBrush& brush)
{
    line.fitInto(room.width());
    line.draw(painter, {room.center().x() - line.width() / 2, baseline}, brush);
}

/// The box of a line of text, as a gradient spans it.
QRectF lineBox(double baseline, const TextStyle& style)
{
    const LineMetrics metrics = metricsOf(style);
    return {0, baseline - metrics.ascent, 1, double(metrics.height())};
}

void paintTitle(const Picture& picture, QPointF origin, const TextStyle& style)
{
    picture.motion.phases.visit(picture.now, [&](Phase phase, double presence) {
        const PhaseFacts& facts = factsOf(phase);
        TextLine(facts.title.toUpper(), style)
            .draw(picture.painter, origin, toQColor(facts.lightTone, presence));
    });
}

// --- the full card --------------------------------------------------------------------------

QRectF headerBounds()
{
    return {0, 0, fullSize.width(), full::geometry().badge.bottom() + 1};
}

void paintHeader(const Picture& picture)
{
    if (!picture.shows(headerBounds()))
        return;
    const full::Geometry& place = full::geometry();
    paintTitle(picture, {place.titleLeft, place.headerBaseline}, styles::title);

    TextLine cycle(QStringLiteral("CYCLE ") + QString::number(picture.model().cycle),
                   styles::badge);
    const double titleRight =
        place.titleLeft +
        TextLine(factsOf(picture.model().phase).title.toUpper(), styles::title).width();
    cycle.fitInto(place.badge.right() - titleRight - headerSpacing - 2 * badgePadding);
    QRectF badge = place.badge;
    badge.setLeft(badge.left() - cycle.width());
    QPainterPath capsule;
    capsule.addRoundedRect(badge, badge.height() / 2, badge.height() / 2);
    picture.painter.fillPath(capsule, white(badgeFillOpacity));
    cycle.draw(picture.painter, {badge.left() + badgePadding, place.badgeBaseline},
               white(badgeTextOpacity));
}

void paintCount(QPainter& painter, const WidgetModel& model)
{
    const full::Geometry& place = full::geometry();
    const double baseline = place.readoutBaseline(metricsOf(styles::count));
    TextLine count(countText(model), styles::count);
    const TextLine reps(QStringLiteral("reps"), styles::reps);
    const double rest = repsSpacing + reps.width();
    count.fitInto(place.readout.width() - 2 * headerSidePadding - rest);
    const double left = place.readout.center().x() - (count.width() + rest) / 2;
    count.draw(painter, {left, baseline}, Qt::white);
    reps.draw(painter, {left + count.width() + repsSpacing, baseline}, white(repsOpacity));
}

void paintFullReadout(QPainter& painter, const Readout& readout, const WidgetModel& model)
{
    const full::Geometry& place = full::geometry();
    const QRectF room = place.readout.adjusted(headerSidePadding, 0, -headerSidePadding, 0);
    switch (readout.kind) {
    case Readout::Kind::time:
        paintCentered(painter, room, place.readoutBaseline(metricsOf(styles::time)),
                      TextLine(model.timeString, styles::time), Qt::white);
        break;
    case Readout::Kind::done: {
        const double baseline = place.readoutBaseline(metricsOf(styles::done));
        paintCentered(painter, room, baseline, TextLine(QStringLiteral("Done!"), styles::done),
                      accentBrush(readout.phase, lineBox(baseline, styles::done)));
        break;
    }
    case Readout::Kind::count:
        paintCount(painter, model);
        break;
    }
}

void paintLowerTexts(const Picture& picture)
{
    const full::Geometry& place = full::geometry();
    if (picture.shows(place.readout)) {
        picture.motion.readouts.visit(picture.now, [&](const Readout& readout, double presence) {
            const double opacity = readout.kind == Readout::Kind::time
                                       ? presence * picture.motion.timeOpacity.at(picture.now)
                                       : presence;
            paintGroup(picture.painter, opacity, place.readout, [&](QPainter& painter) {
                paintFullReadout(painter, readout, picture.model());
            });
        });
    }
    if (picture.shows(place.hint)) {
        picture.motion.hints.visit(picture.now, [&](const Hint& hint, double presence) {
            const HintText shown = hintText(hint, picture.model());
            QColor color = shown.color;
            color.setAlphaF(color.alphaF() * static_cast<float>(presence));
            paintCentered(picture.painter, place.hint, place.hintBaseline,
                          TextLine(shown.text, styles::hint), color);
        });
    }
}

// --- the compact strip ----------------------------------------------------------------------

const TextStyle& compactReadoutStyle(Readout::Kind kind)
{
    switch (kind) {
    case Readout::Kind::done:
        return styles::compactDone;
    case Readout::Kind::count:
        return styles::compactCount;
    case Readout::Kind::time:
        break;
    }
    return styles::compactTime;
}

void paintCompactReadout(QPainter& painter, const Readout& readout, const WidgetModel& model)
{
    const TextStyle& style = compactReadoutStyle(readout.kind);
    const compact::Geometry& place = compact::geometry(readout.kind);
    const QPointF origin(place.textLeft, place.readoutBaseline);
    const auto draw = [&](const QString& text, const QBrush& brush) {
        TextLine line(text, style);
        line.fitInto(place.readout.width());
        line.draw(painter, origin, brush);
    };
    switch (readout.kind) {
    case Readout::Kind::time:
        draw(model.timeString, Qt::white);
        break;
    case Readout::Kind::done:
        draw(QStringLiteral("Done!"), accentBrush(readout.phase, lineBox(origin.y(), style)));
        break;
    case Readout::Kind::count:
        draw(countText(model), Qt::white);
        break;
    }
}

/// The title stands above readouts of different heights, and goes over from one to the other.
double compactTitleBaseline(const Picture& picture)
{
    double sum = 0;
    double weight = 0;
    picture.motion.readouts.visit(picture.now, [&](const Readout& readout, double presence) {
        sum += presence * compact::geometry(readout.kind).titleBaseline;
        weight += presence;
    });
    return sum / weight;
}

void paintCompactTexts(const Picture& picture)
{
    const compact::Geometry& place = compact::geometry(picture.motion.readouts.content().kind);
    const QRectF texts(place.textLeft, 0, compactSize.width() - place.textLeft,
                       compactSize.height());
    if (!picture.shows(texts))
        return;
    paintTitle(picture, {place.textLeft, compactTitleBaseline(picture)}, styles::compactTitle);
    picture.motion.readouts.visit(picture.now, [&](const Readout& readout, double presence) {
        const double opacity = readout.kind == Readout::Kind::time
                                   ? presence * picture.motion.timeOpacity.at(picture.now)
                                   : presence;
        paintGroup(picture.painter, opacity, texts, [&](QPainter& painter) {
            paintCompactReadout(painter, readout, picture.model());
        });
    });
}

void paintContent(const Picture& picture, bool inCompact, Layers layers)
{
    const RingGeometry& ring = ringGeometry(inCompact);
    const Tones tones = tonesOf(picture);
    const double complete = picture.motion.complete.at(picture.now);
    const bool all = layers == Layers::all;
    const bool moving = all || layers == Layers::moving;
    // Ring and texts lie over the pulse; below a turning ring the still one moves up with it.
    const Layers textLayer = complete > 0 ? Layers::over : Layers::still;
    const bool turnsInPulse = complete > 0 && picture.motion.turning.at(picture.now) > 0;
    const Layers ringLayer = turnsInPulse ? Layers::moving : textLayer;

    if ((all || layers == Layers::still) && !inCompact)
        paintHeader(picture);
    if (moving && complete > 0) {
        paintCompletionPulse(picture.painter, ring, tones.dark, picture.now.seconds, complete,
                             picture.exposed);
    }
    if (all || layers == ringLayer)
        paintStillRing(picture, ring, tones);
    if (moving)
        paintMovingRing(picture, ring, tones);
    if (all || layers == textLayer) {
        if (inCompact)
            paintCompactTexts(picture);
        else
            paintLowerTexts(picture);
    }
}

} // namespace

void paintWidget(QPainter& painter, const WidgetMotion& motion, Instant now, QSizeF size,
                 const QRectF& exposed, Layers layers)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const double compactness = motion.compactness.at(now);
    if (layers == Layers::all || layers == Layers::still) {
        Color glow = mixedTone(motion, now, &PhaseFacts::darkTone);
        glow.opacity = calmGlow + (completeGlow - calmGlow) * motion.complete.at(now);
        paintCard(painter, {size, compactnessOf(size), glow}, exposed);
    }
    const QRect whole = QRectF({}, size).intersected(exposed).toAlignedRect();
    const auto paintForm = [&](bool inCompact, const QRegion& region, double opacity) {
        painter.save();
        painter.setClipRegion(region, Qt::IntersectClip);
        paintGroup(painter, opacity, region.boundingRect(), [&](QPainter& inner) {
            paintContent({inner, motion, now, exposed}, inCompact, layers);
        });
        painter.restore();
    };
    // The band under the controls of the compact strip is frosted: nothing is made out behind it.
    const double frost = motion.hover.at(now);
    const QRegion band = frost > 0 ? QRegion(compact::controlBand()).intersected(whole) : QRegion();
    paintForm(false, whole, 1 - compactness);
    paintForm(true, QRegion(whole) - band, compactness);
    paintForm(true, band, compactness * (1 - frost));
}

QRectF movingBounds(const WidgetMotion& motion, Instant now)
{
    const RingGeometry& ring = ringGeometry(motion.model.compact);
    if (motion.complete.at(now) > 0)
        return pulseBounds(ring);
    if (motion.turning.at(now) > 0)
        return ringBounds(ring);
    return phaseGlyphMotionBounds(ring.glyph(), motion.model.phase);
}

QRectF readoutBounds(const WidgetModel& model)
{
    return model.compact ? compact::geometry(Readout::Kind::time).readout
                         : full::geometry().readout;
}
