#include "widget/WidgetPainter.h"

#include "paint/Colors.h"
#include "paint/Group.h"
#include "support/Pixels.h"
#include "widget/Accent.h"
#include "widget/CompletionPulse.h"
#include "widget/Models.h"
#include "widget/PhaseGlyph.h"
#include "widget/ProgressRing.h"
#include "widget/WidgetStyle.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr Instant now{763637213.75};
constexpr std::array bothForms{false, true};

QSizeF sizeOf(const WidgetModel& model)
{
    return model.compact ? compactSize : fullSize;
}

QImage layerOf(const WidgetMotion& motion, Instant at, double scale, Layers layers)
{
    const QSizeF size = sizeOf(motion.model);
    return painted(size, scale, [&](QPainter& painter) {
        paintWidget(painter, motion, at, size, QRectF({}, size), layers);
    });
}

QImage pictureOf(const WidgetMotion& motion, Instant at, double scale)
{
    return layerOf(motion, at, scale, Layers::all);
}

QImage pictureOf(const WidgetModel& model, double scale = 2)
{
    return pictureOf(WidgetMotion(model, now), now, scale);
}

QColor white(double opacity = 1)
{
    return QColor::fromRgbF(1, 1, 1, float(opacity));
}

QColor lightTone(Phase phase)
{
    return toQColor(factsOf(phase).lightTone);
}

/// A text that should be there.
struct Label
{
    QString text;
    TextStyle style;
    QPointF origin; ///< of its baseline; the middle of it in a line that is centred
    QBrush brush;
    bool centered = false;

    void draw(QPainter& painter) const
    {
        const TextLine line(text, style);
        line.draw(painter, origin - QPointF(centered ? line.width() / 2 : 0, 0), brush);
    }
};

/// The widget with nothing but card, pulse, ring and these texts.
QImage expectedPicture(const WidgetModel& model, const std::vector<Label>& labels, double scale = 2)
{
    const QSizeF size = sizeOf(model);
    const QRectF all({}, size);
    const RingGeometry& ring = ringGeometry(model.compact);
    const Tones tones{factsOf(model.phase).lightTone, factsOf(model.phase).darkTone};
    return painted(size, scale, [&](QPainter& painter) {
        Color glow = tones.dark;
        glow.opacity = model.isComplete() ? 0.5 : 0.32;
        paintCard(painter, {size, model.compact ? 1.0 : 0.0, glow}, all);
        if (model.isComplete())
            paintCompletionPulse(painter, ring, tones.dark, now.seconds, 1, all);
        paintTrack(painter, ring, all);
        if (model.progress) {
            paintArc(painter, ring, tones, *model.progress, 1, all);
        } else {
            paintTurningGlow(painter, ring, tones, 1, all);
            paintTurningRing(painter, ring, tones, now.seconds, 1, all);
        }
        for (const Label& label : labels)
            label.draw(painter);
    });
}

void expectLabels(const WidgetModel& model, const QRectF& region, const std::vector<Label>& labels)
{
    const QImage seen = partOf(pictureOf(model), region);
    const QImage expected = partOf(expectedPicture(model, labels), region);
    EXPECT_LE(largestDifference(seen, expected), 3) << labels.front().text.toStdString();
    EXPECT_NE(expected, partOf(expectedPicture(model, {}), region)) << "the text is not there";
}

void expectHint(const WidgetModel& model, const QString& text, const QColor& color)
{
    const full::Geometry& place = full::geometry();
    expectLabels(model, place.hint, {{text, styles::hint, {125, place.hintBaseline}, color, true}});
}

void expectFullReadout(const WidgetModel& model, const QString& text, const TextStyle& style,
                       const QBrush& brush)
{
    const full::Geometry& place = full::geometry();
    const QPointF middle(125, place.readoutBaseline(metricsOf(style)));
    expectLabels(model, place.readout, {{text, style, middle, brush, true}});
}

/// The texts of the strip beside its ring.
void expectStrip(const WidgetModel& model, const QString& title, const QString& text,
                 Readout::Kind kind, const TextStyle& style, const QBrush& brush)
{
    const compact::Geometry& place = compact::geometry(kind);
    expectLabels(model, QRectF(74, 10, 216 - 74 - 10, 56),
                 {{title, styles::compactTitle, {74, place.titleBaseline}, lightTone(model.phase)},
                  {text, style, {74, place.readoutBaseline}, brush}});
}

/// The brush of a line of accent colours, light at the top of the line.
QBrush accentOfLine(Phase phase, double baseline, const TextStyle& style)
{
    const LineMetrics metrics = metricsOf(style);
    return accentBrush(phase, {0, baseline - metrics.ascent, 1, double(metrics.height())});
}

/// The brightest red in a region; all that is white is brightest there.
int brightestIn(const QImage& image, const QRectF& region)
{
    const QImage part = partOf(image, region);
    int brightest = 0;
    for (int y = 0; y < part.height(); ++y) {
        for (int x = 0; x < part.width(); ++x)
            brightest = std::max(brightest, qRed(pixelAt(part, x, y)));
    }
    return brightest;
}

/// Where something is nearly white.
QRectF whiteBox(const QImage& image, const QRectF& region)
{
    const QImage part = partOf(image, region);
    return boxOf(part,
                 [&](int x, int y) {
                     const QRgb pixel = pixelAt(part, x, y);
                     return qRed(pixel) > 200 && qGreen(pixel) > 200 && qBlue(pixel) > 200;
                 })
        .translated(region.topLeft());
}

WidgetModel withTime(const QString& time, bool compact)
{
    WidgetModel model = modelOf(Phase::sitting, State::running, compact);
    model.timeString = time;
    return model;
}

WidgetModel withCount(qint64 count, bool compact)
{
    WidgetModel model = modelOf(Phase::pushups, State::running, compact);
    model.pushupCount = count;
    return model;
}

WidgetModel withCycle(qint64 cycle)
{
    WidgetModel model = modelOf(Phase::sitting);
    model.cycle = cycle;
    return model;
}

constexpr qint64 hugeNumber = 9'000'000'000'000'000'000;

/// What is new in `region` in the very first moment of a change, which should be nothing.
QRectF firstChange(const WidgetModel& from, WidgetModel to, const QRectF& region)
{
    const WidgetMotion before(from, now);
    WidgetMotion motion = before;
    // A new time is there at once.
    to.timeString = from.timeString;
    motion.follow(to, now, true);
    return changedBox(partOf(pictureOf(motion, now, 1), region),
                      partOf(pictureOf(before, now, 1), region), 2);
}

/// For failures.
std::string nameOf(const WidgetModel& model)
{
    const char* state = model.isComplete() ? ", complete" : model.isPaused() ? ", paused" : "";
    const char* form = model.compact ? " (strip)" : "";
    return factsOf(model.phase).title.toStdString() + state + form;
}

} // namespace

// --- texts ----------------------------------------------------------------------------------

TEST(WidgetPainterTest, theHeaderHasTheTitleAndTheCycle)
{
    const full::Geometry& place = full::geometry();
    const QRectF header(0, 0, 250, place.badge.bottom() + 1);
    for (const auto& [phase, title] :
         {std::pair(Phase::sitting, "DEEP WORK"), std::pair(Phase::standing, "STAND UP"),
          std::pair(Phase::pushups, "PUSH-UPS")}) {
        const TextLine cycle(QStringLiteral("CYCLE 3"), styles::badge);
        const QRectF badge = place.badge.adjusted(-cycle.width(), 0, 0, 0);
        const QImage seen = pictureOf(modelOf(phase));
        QImage expected = expectedPicture(
            modelOf(phase),
            {{QLatin1String(title), styles::title, {20, place.headerBaseline}, lightTone(phase)}});
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(white(0.08));
        painter.drawRoundedRect(badge, badge.height() / 2, badge.height() / 2);
        cycle.draw(painter, {badge.left() + 8, place.badgeBaseline}, white(0.45));
        painter.end();
        EXPECT_LE(largestDifference(partOf(seen, header), partOf(expected, header)), 3) << title;
    }
}

TEST(WidgetPainterTest, theHintSaysWhatIsTheMatter)
{
    expectHint(modelOf(Phase::sitting), QStringLiteral("Seated focus session"), white(0.45));
    expectHint(modelOf(Phase::standing), QStringLiteral("Work on your feet"), white(0.45));
    expectHint(modelOf(Phase::pushups), QStringLiteral("Drop and give me 50"), white(0.45));
    for (const Phase phase : {Phase::sitting, Phase::standing})
        expectHint(modelOf(phase, State::paused), QStringLiteral("Paused"), white(0.5));
    expectHint(modelOf(Phase::sitting, State::complete),
               QStringLiteral("Time to stand up — click to continue"), lightTone(Phase::sitting));
    expectHint(modelOf(Phase::standing, State::complete),
               QStringLiteral("Push-up time — click to continue"), lightTone(Phase::standing));
    expectHint(modelOf(Phase::pushups, State::complete),
               QStringLiteral("Cycle complete — click to continue"), lightTone(Phase::pushups));
}

TEST(WidgetPainterTest, theReadoutShowsTheTimeOrDone)
{
    for (const Phase phase : {Phase::sitting, Phase::standing}) {
        expectFullReadout(modelOf(phase), QStringLiteral("12:34"), styles::time, white());
        expectFullReadout(modelOf(phase, State::paused), QStringLiteral("12:34"), styles::time,
                          white(0.45));
        const double baseline = full::geometry().readoutBaseline(metricsOf(styles::done));
        expectFullReadout(modelOf(phase, State::complete), QStringLiteral("Done!"), styles::done,
                          accentOfLine(phase, baseline, styles::done));
    }
}

TEST(WidgetPainterTest, theReadoutOfPushupsIsTheCountWhateverTheState)
{
    const full::Geometry& place = full::geometry();
    const double baseline = place.readoutBaseline(metricsOf(styles::count));
    const double countWidth = TextLine(QStringLiteral("×50"), styles::count).width();
    const double width = countWidth + 5 + TextLine(QStringLiteral("reps"), styles::reps).width();
    const double left = 125 - width / 2;
    for (const State state : {State::running, State::complete}) {
        expectLabels(modelOf(Phase::pushups, state), place.readout,
                     {{QStringLiteral("×50"), styles::count, {left, baseline}, white()},
                      {QStringLiteral("reps"),
                       styles::reps,
                       {left + countWidth + 5, baseline},
                       white(0.5)}});
    }
}

TEST(WidgetPainterTest, theStripShowsTitleAndReadout)
{
    using Kind = Readout::Kind;
    const QString time = QStringLiteral("12:34");
    const QString count = QStringLiteral("×50");
    for (const auto& [phase, title] : {std::pair(Phase::sitting, QStringLiteral("DEEP WORK")),
                                       std::pair(Phase::standing, QStringLiteral("STAND UP"))}) {
        expectStrip(modelOf(phase, State::running, true), title, time, Kind::time,
                    styles::compactTime, white());
        expectStrip(modelOf(phase, State::paused, true), title, time, Kind::time,
                    styles::compactTime, white(0.45));
        const double baseline = compact::geometry(Kind::done).readoutBaseline;
        expectStrip(modelOf(phase, State::complete, true), title, QStringLiteral("Done!"),
                    Kind::done, styles::compactDone,
                    accentOfLine(phase, baseline, styles::compactDone));
    }
    for (const State state : {State::running, State::complete}) {
        expectStrip(modelOf(Phase::pushups, state, true), QStringLiteral("PUSH-UPS"), count,
                    Kind::count, styles::compactCount, white());
    }
}

TEST(WidgetPainterTest, doneIsLightAboveAndDarkBelow)
{
    const QImage image = pictureOf(modelOf(Phase::standing, State::complete));
    const QRectF readout = full::geometry().readout;
    // Its green tells light from dark tone; nothing else there has as much red.
    const auto greenIn = [&](const QRectF& rows) {
        const QImage part = partOf(image, rows);
        int green = 0;
        for (int y = 0; y < part.height(); ++y) {
            for (int x = 0; x < part.width(); ++x) {
                if (qRed(pixelAt(part, x, y)) > 250)
                    green = std::max(green, qGreen(pixelAt(part, x, y)));
            }
        }
        return green;
    };
    const double baseline = full::geometry().readoutBaseline(metricsOf(styles::done));
    const int above = greenIn({0, baseline - 26, 250, 5});
    const int below = greenIn({0, baseline - 4, 250, 4});
    EXPECT_TRUE(readout.contains(QPointF(125, baseline)));
    EXPECT_GT(above, below + 15);
    EXPECT_LE(above, 0.82 * 255 + 2);
    EXPECT_GE(below, 0.63 * 255 - 2);
}

TEST(WidgetPainterTest, aPauseDimsTheTimeAndNothingElse)
{
    for (const bool compact : bothForms) {
        const QImage running = pictureOf(modelOf(Phase::sitting, State::running, compact));
        const QImage paused = pictureOf(modelOf(Phase::sitting, State::paused, compact));
        const QRectF readout = readoutBounds(modelOf(Phase::sitting, State::running, compact));
        EXPECT_EQ(brightestIn(running, readout), 255);
        // Over the dark card, whose red is below 40.
        EXPECT_NEAR(brightestIn(paused, readout), 0.45 * 255 + 0.55 * 25, 10);
        QRectF changed = changedBox(running, paused);
        QRectF allowed = readout;
        if (!compact)
            allowed |= full::geometry().hint;
        EXPECT_TRUE(allowed.contains(changed)) << textOf(changed);
    }
}

TEST(WidgetPainterTest, theTimeStandsStillFromSecondToSecond)
{
    for (const bool compact : bothForms) {
        const TextStyle& style = compact ? styles::compactTime : styles::time;
        for (const auto& [minutes, first] :
             {std::pair(QStringLiteral("12:"), QStringLiteral("12:00")),
              std::pair(QStringLiteral("9:"), QStringLiteral("9:00"))}) {
            const QImage before = pictureOf(withTime(first, compact), 1);
            const double width = TextLine(first, style).width();
            const double left = compact ? 74 : 125 - width / 2;
            const double colonRight = left + TextLine(minutes, style).width();
            for (int second = 1; second < 60; ++second) {
                const QString time =
                    minutes + QStringLiteral("%1").arg(second, 2, 10, QLatin1Char('0'));
                const QRectF changed = changedBox(before, pictureOf(withTime(time, compact), 1));
                ASSERT_FALSE(changed.isEmpty()) << time.toStdString();
                ASSERT_GE(changed.left(), colonRight - 1)
                    << time.toStdString() << " moves what stands before its seconds";
                ASSERT_LE(changed.right(), left + width + 1) << time.toStdString();
            }
        }
    }
}

TEST(WidgetPainterTest, aNewSecondIsWithinTheBoundsOfTheReadout)
{
    for (const bool compact : bothForms) {
        const WidgetModel model = withTime(QStringLiteral("10:00"), compact);
        for (const char* next : {"9:59", "88:88", "1:11", "100:00"}) {
            const QRectF changed =
                changedBox(pictureOf(model), pictureOf(withTime(QLatin1String(next), compact)));
            EXPECT_TRUE(readoutBounds(model).contains(changed)) << next << ": " << textOf(changed);
        }
    }
}

TEST(WidgetPainterTest, theNumbersAreThoseOfTheModel)
{
    EXPECT_NE(pictureOf(withCycle(1)), pictureOf(withCycle(2)));
    EXPECT_NE(pictureOf(withCount(50, false)), pictureOf(withCount(51, false)));
    EXPECT_NE(pictureOf(withCount(50, true)), pictureOf(withCount(51, true)));
}

// --- what does not fit ----------------------------------------------------------------------

TEST(WidgetPainterTest, aHugeCycleLeavesTheTitleAlone)
{
    const QRectF changed = changedBox(pictureOf(withCycle(1)), pictureOf(withCycle(hugeNumber)));
    const double titleRight = 20 + TextLine(QStringLiteral("DEEP WORK"), styles::title).width();
    EXPECT_GE(changed.left(), titleRight);
    EXPECT_LE(changed.right(), 250 - 20 + 0.5);
    EXPECT_LE(changed.bottom(), full::geometry().badge.bottom() + 0.5);
}

TEST(WidgetPainterTest, hugeNumbersStayWithinTheFullCard)
{
    const full::Geometry& place = full::geometry();
    const QRectF room = place.readout.adjusted(20, 0, -20, 0);
    const QRectF time =
        changedBox(pictureOf(withTime(QStringLiteral("0:00"), false)),
                   pictureOf(withTime(QStringLiteral("153722867280912930:07"), false)));
    EXPECT_TRUE(room.contains(time)) << textOf(time);
    EXPECT_GT(time.width(), 150);
    // The hint has no padding beside it.
    const QImage one = pictureOf(withCount(1, false));
    const QImage huge = pictureOf(withCount(hugeNumber, false));
    const QRectF count = changedBox(partOf(one, place.readout), partOf(huge, place.readout));
    EXPECT_GE(count.left(), 20);
    EXPECT_LE(count.right(), 230);
    EXPECT_GT(count.width(), 150);
    const QRectF hint = changedBox(partOf(one, place.hint), partOf(huge, place.hint));
    EXPECT_GE(hint.left(), 2);
    EXPECT_LE(hint.right(), 248);
}

TEST(WidgetPainterTest, hugeNumbersStayWithinTheStrip)
{
    const QRectF room(74, 14, 216 - 14 - 74, 48);
    const QRectF time =
        changedBox(pictureOf(withTime(QStringLiteral("0:00"), true)),
                   pictureOf(withTime(QStringLiteral("153722867280912930:07"), true)));
    EXPECT_TRUE(room.contains(time)) << textOf(time);
    EXPECT_GT(time.width(), 100);
}

TEST(WidgetPainterTest, aHugeCountDoesNotRunUnderTheCheckMark)
{
    const double end = compact::geometry(Readout::Kind::count).checkMark.left();
    for (const qint64 count : {qint64{1'000}, qint64{100'000}, hugeNumber}) {
        const QRectF ink = whiteBox(pictureOf(withCount(count, true)), QRectF(74, 0, 142, 76));
        EXPECT_LE(ink.right(), end) << count;
        EXPECT_GE(ink.left(), 73);
    }
}

// --- the ring and its figure ----------------------------------------------------------------

TEST(WidgetPainterTest, theRingShowsTheProgressOfTheModel)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        for (const WidgetModel& model : {modelOf(Phase::sitting, State::running, compact),
                                         modelOf(Phase::standing, State::complete, compact),
                                         modelOf(Phase::pushups, State::running, compact)}) {
            const QImage seen = pictureOf(model);
            const QImage expected = expectedPicture(model, {});
            // The ring is in the square around it, but for the figure in the middle.
            const double side = ring.diameter + ring.lineWidth;
            const QRectF square(ring.center.x() - side / 2, ring.center.y() - side / 2, side, side);
            const QRectF middle = ring.glyph().adjusted(-1, -1, 1, 1);
            for (const QRectF& part :
                 {QRectF(square.topLeft(), QPointF(square.right(), middle.top())),
                  QRectF(square.topLeft(), QPointF(middle.left(), square.bottom())),
                  QRectF(QPointF(middle.right(), square.top()), square.bottomRight())}) {
                EXPECT_LE(largestDifference(partOf(seen, part), partOf(expected, part)), 3);
            }
        }
    }
}

TEST(WidgetPainterTest, theFigureIsThatOfThePhaseAndOfThisMoment)
{
    for (const bool compact : bothForms) {
        const RingGeometry& ring = ringGeometry(compact);
        for (const Phase phase : allPhases) {
            const WidgetModel model = modelOf(phase, State::running, compact);
            QImage expected = expectedPicture(model, {});
            QPainter painter(&expected);
            painter.setRenderHint(QPainter::Antialiasing);
            drawPhaseGlyph(painter, ring.glyph(), phase, now.seconds);
            painter.end();
            const QRectF inner(ring.center - QPointF(0.3, 0.3) * ring.diameter,
                               QSizeF(0.6, 0.6) * ring.diameter);
            EXPECT_LE(largestDifference(partOf(pictureOf(model), inner), partOf(expected, inner)),
                      3);
            EXPECT_NE(partOf(expected, inner), partOf(expectedPicture(model, {}), inner));
        }
    }
}

TEST(WidgetPainterTest, aFigureGrowsAsItComesAndShrinksAsItGoes)
{
    WidgetMotion motion(modelOf(Phase::sitting), now);
    motion.follow(modelOf(Phase::standing), now, true);
    const Instant later = now + 0.1;
    const RingGeometry& ring = ringGeometry(false);
    QImage expected = painted(fullSize, 2, [&](QPainter& painter) {
        motion.phases.visit(later, [&](Phase phase, double presence) {
            paintGroup(painter, presence, ring.glyph(), [&](QPainter& inner) {
                const double side = 92 * (0.7 + 0.3 * presence);
                drawPhaseGlyph(inner,
                               {ring.center.x() - side / 2, ring.center.y() - side / 2, side, side},
                               phase, later.seconds);
            });
        });
    });
    const QImage seen = painted(fullSize, 2, [&](QPainter& painter) {
        paintWidget(painter, motion, later, fullSize, ring.glyph(), Layers::moving);
    });
    EXPECT_LE(largestDifference(seen, expected), 3);
    EXPECT_FALSE(inkBox(expected).isEmpty());
}

TEST(WidgetPainterTest, theRingTakesTheNewColoursGradually)
{
    WidgetMotion motion(modelOf(Phase::sitting), now);
    motion.follow(modelOf(Phase::standing), now, true);
    const RingGeometry& ring = ringGeometry(false);
    const int column = int(ring.center.x() * 2);
    const int row = int((ring.center.y() + ring.radius()) * 2);
    const Levels from = levelsOf(factsOf(Phase::sitting).lightTone);
    const Levels to = levelsOf(factsOf(Phase::standing).lightTone);
    for (const double seconds : {0.0, 0.05, 0.1, 0.2, 2.0}) {
        double part = 0;
        motion.phases.visit(now + seconds, [&](Phase phase, double presence) {
            if (phase == Phase::standing)
                part = presence;
        });
        Levels expected{};
        for (std::size_t i = 0; i < expected.size(); ++i)
            expected[i] = from[i] + (to[i] - from[i]) * part;
        EXPECT_LE(difference(levelsAt(pictureOf(motion, now + seconds, 2), column, row), expected),
                  3)
            << seconds;
    }
}

// --- parts and layers -----------------------------------------------------------------------

TEST(WidgetPainterTest, theLayersTogetherAreThePicture)
{
    for (const bool compact : bothForms) {
        for (const WidgetModel& model : allModels(compact)) {
            const WidgetMotion motion(model, now);
            for (const double scale : allScales) {
                QImage layered = layerOf(motion, now + 0.7, scale, Layers::still);
                QPainter painter(&layered);
                paintWidget(painter, motion, now + 0.7, sizeOf(model), QRectF({}, sizeOf(model)),
                            Layers::moving);
                paintWidget(painter, motion, now, sizeOf(model), QRectF({}, sizeOf(model)),
                            Layers::over);
                painter.end();
                EXPECT_LE(largestDifference(pictureOf(motion, now + 0.7, scale), layered), 2)
                    << nameOf(model) << " at " << scale;
            }
        }
    }
}

TEST(WidgetPainterTest, theStillLayersStandStill)
{
    for (const bool compact : bothForms) {
        for (const WidgetModel& model : allModels(compact)) {
            const WidgetMotion motion(model, now);
            for (const Layers still : {Layers::still, Layers::over}) {
                EXPECT_EQ(layerOf(motion, now, 1, still), layerOf(motion, now + 1.37, 1, still))
                    << nameOf(model);
            }
        }
    }
}

TEST(WidgetPainterTest, whatMovesIsWithinTheMovingBounds)
{
    for (const bool compact : bothForms) {
        for (const WidgetModel& model : allModels(compact)) {
            const WidgetMotion motion(model, now);
            const QRectF bounds = QRectF(movingBounds(motion, now).toAlignedRect());
            QImage last = layerOf(motion, now, 1, Layers::moving);
            QRectF changed;
            for (int i = 1; i <= 60; ++i) {
                const QImage next = layerOf(motion, now + i * 0.083, 1, Layers::moving);
                changed |= changedBox(last, next);
                last = next;
            }
            EXPECT_TRUE(changed.isEmpty() || bounds.contains(changed))
                << nameOf(model) << ": " << textOf(changed) << " is not within " << textOf(bounds);
            EXPECT_EQ(changed.isEmpty(), model.isPaused());
        }
    }
}

TEST(WidgetPainterTest, paintedInPartsItIsTheSamePicture)
{
    for (const bool compact : bothForms) {
        for (const WidgetModel& model : allModels(compact)) {
            // Settled, and on the way from something else.
            WidgetMotion arriving(modelOf(Phase::standing, State::running, compact), now);
            arriving.follow(model, now, true);
            for (const WidgetMotion& motion : {WidgetMotion(model, now), arriving}) {
                for (const double scale : {1.0, 1.5}) {
                    const QImage whole = pictureOf(motion, now + 0.1, scale);
                    const QImage parts = paintedInTiles(
                        sizeOf(model), scale, 37, [&](QPainter& painter, const QRectF& exposed) {
                            paintWidget(painter, motion, now + 0.1, sizeOf(model), exposed);
                        });
                    EXPECT_LE(largestDifference(parts, whole), 1)
                        << nameOf(model) << " at " << scale << ": "
                        << textOf(changedBox(parts, whole, 1));
                }
            }
        }
    }
}

TEST(WidgetPainterTest, nothingIsPaintedBeyondTheCard)
{
    for (const bool compact : bothForms) {
        for (const WidgetModel& model : allModels(compact)) {
            const QImage image = pictureOf(model);
            EXPECT_EQ(pixelAt(image, 0, 0), 0U);
            EXPECT_EQ(pixelAt(image, image.width() - 1, image.height() - 1), 0U);
        }
    }
}

// --- changes --------------------------------------------------------------------------------

TEST(WidgetPainterTest, everyChangeEndsInThePictureOfItsModel)
{
    for (const bool compact : bothForms) {
        for (const WidgetModel& from : allModels(false)) {
            for (const WidgetModel& to : allModels(compact)) {
                WidgetMotion motion(from, now + -4);
                motion.follow(to, now + -4, true);
                const WidgetMotion settled(to, now + -4);
                EXPECT_EQ(pictureOf(motion, now, 1), pictureOf(settled, now, 1))
                    << "from " << nameOf(from) << " to " << nameOf(to);
            }
        }
    }
}

TEST(WidgetPainterTest, everyChangeBeginsInThePictureItLeaves)
{
    // Of the strip only its ring: for its texts see below.
    for (const bool compact : bothForms) {
        const QRectF region = compact ? QRectF(0, 0, 70, 76) : QRectF({}, fullSize);
        for (const WidgetModel& from : allModels(compact)) {
            for (const WidgetModel& to : allModels(compact)) {
                EXPECT_TRUE(firstChange(from, to, region).isEmpty())
                    << "from " << nameOf(from) << " to " << nameOf(to);
            }
        }
    }
}

TEST(WidgetPainterTest, theStripsTitleDoesNotJumpAsTheReadoutChanges)
{
    for (const WidgetModel& from : allModels(true)) {
        for (const WidgetModel& to : allModels(true)) {
            EXPECT_TRUE(firstChange(from, to, QRectF(70, 0, 146, 76)).isEmpty())
                << "from " << nameOf(from) << " to " << nameOf(to);
        }
    }
}
