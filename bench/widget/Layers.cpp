#include "bench/widget/Layers.h"

#include "paint/DevicePatch.h"
#include "widget/Card.h"
#include "widget/CompletionPulse.h"
#include "widget/ControlRow.h"
#include "widget/PhaseGlyph.h"
#include "widget/ProgressRing.h"
#include "widget/WidgetPainter.h"
#include "widget/WidgetView.h"

#include <QPainter>

#include <memory>
#include <numbers>

namespace {

using State = TimerEngine::State;

constexpr double progress = 0.6;
constexpr double opaque = 1;

/// What a frame of the arc's end changes at least, in logical pixels along the arc.
constexpr double arcStep = 0.25;

QRect around(const QRectF& rect)
{
    return rect.toAlignedRect();
}

/// The layers of one form, as they are collected.
class LayerList
{
public:
    LayerList(bool compact, TimerEngine& engine, FrameSource& frames)
        : m_compact(compact)
        , m_engine(engine)
        , m_frames(frames)
        , m_whole({}, WidgetView::preferredSize(compact))
        , m_ring(ringGeometry(compact))
    {
        addCard();
        addRing();
        addFigures();
        addTexts();
        addControls();
        addFrames();
        addWidget();
    }

    std::vector<Layer> all;

private:
    using Paint = std::function<void(QPainter&, double)>;

    void add(std::string name, const QRect& part, Paint paint)
    {
        all.push_back({std::move(name), part, std::move(paint)});
    }

    static Tones tones()
    {
        const PhaseFacts& facts = factsOf(Phase::sitting);
        return {facts.lightTone, facts.darkTone};
    }

    QRect figurePart(Phase phase) const
    {
        return around(phaseGlyphMotionBounds(m_ring.glyph(), phase));
    }

    WidgetModel model(Phase phase, State state) const
    {
        WidgetModel model;
        model.phase = phase;
        model.state = state;
        model.compact = m_compact;
        model.pushupCount = 50;
        model.timeString = QStringLiteral("39:59");
        if (phase != Phase::pushups)
            model.progress = state == State::complete ? 0 : progress;
        return model;
    }

    void addCard()
    {
        const CardLook look{m_whole.size(), m_compact ? 1.0 : 0.0, tones().dark};
        const auto add = [&](const char* name, const QRect& part) {
            this->add(name, part,
                      [=](QPainter& painter, double) { paintCard(painter, look, part); });
        };
        add("Card, whole", m_whole);
        add("Card, below the sitting figure", figurePart(Phase::sitting));
    }

    void addRing()
    {
        const QRect part = around(ringBounds(m_ring));
        const RingGeometry ring = m_ring;
        add("Track", part, [=](QPainter& painter, double) { paintTrack(painter, ring, part); });
        const auto addArc = [&](const char* name, const QRect& exposed) {
            add(name, exposed, [=](QPainter& painter, double) {
                paintArc(painter, ring, tones(), progress, opaque, exposed);
            });
        };
        const double step = arcStep / (2 * std::numbers::pi * ring.radius());
        addArc("Arc, whole", part);
        addArc("Arc, its end", around(arcDifference(ring, progress, progress - step)));
        add("Glow of the turning ring", part, [=](QPainter& painter, double) {
            paintTurningGlow(painter, ring, tones(), opaque, part);
        });
        add("Turning ring", part, [=](QPainter& painter, double seconds) {
            paintTurningRing(painter, ring, tones(), seconds, opaque, part);
        });
        const QRect pulse = around(pulseBounds(ring));
        add("Pulse", pulse, [=](QPainter& painter, double seconds) {
            paintCompletionPulse(painter, ring, tones().dark, seconds, opaque, pulse);
        });
    }

    void addFigures()
    {
        for (const Phase phase : allPhases) {
            add("Figure, " + factsOf(phase).title.toStdString(), figurePart(phase),
                [phase, square = m_ring.glyph()](QPainter& painter, double seconds) {
                    drawPhaseGlyph(painter, square, phase, seconds);
                });
        }
    }

    /// Texts are painted with what is below them.
    void addTexts()
    {
        const WidgetModel shown = model(Phase::sitting, State::running);
        addPicture("Readout, with the card", shown, around(readoutBounds(shown)));
        if (m_compact)
            return;
        const full::Geometry& place = full::geometry();
        addPicture("Header, with the card", shown,
                   around({0, 0, fullSize.width(), place.badge.bottom() + 1}));
        addPicture("Hint, with the card", shown, around(place.hint));
    }

    void addPicture(const char* name, const WidgetModel& shown, const QRect& part)
    {
        const WidgetMotion motion(shown, {});
        add(name, part, [=, size = m_whole.size()](QPainter& painter, double seconds) {
            paintWidget(painter, motion, {seconds}, size, part);
        });
    }

    void addControls()
    {
        const auto nothing = [] {};
        const auto row = std::make_shared<ControlRow>(
            m_engine, WidgetActions{nothing, nothing, nothing}, m_compact, nullptr);
        row->setShown(opaque, 1);
        add("Control row", row->geometry(), [row](QPainter& painter, double) {
            row->render(&painter, row->pos(), {}, QWidget::DrawChildren);
        });
    }

    void addFrames()
    {
        for (const Phase phase : allPhases)
            addFrame("Frame, " + factsOf(phase).title.toStdString(), model(phase, State::running));
        addFrame("Frame, complete", model(Phase::sitting, State::complete));
    }

    /// A frame as it is painted while nothing but the endless motions goes on.
    void addFrame(std::string name, const WidgetModel& shown)
    {
        const WidgetMotion motion(shown, {});
        const QRect part = around(movingBounds(motion, {}));
        add(std::move(name), part,
            [=, still = DevicePatch(), over = DevicePatch(),
             size = m_whole.size()](QPainter& painter, double seconds) mutable {
                const auto layer = [&](Layers layers) {
                    DevicePatch patch(painter, part);
                    patch.paint([&](QPainter& inner) {
                        paintWidget(inner, motion, {}, size, part, layers);
                    });
                    return patch;
                };
                if (still.image.isNull() || !still.fits(painter)) {
                    still = layer(Layers::still);
                    over = layer(Layers::over);
                }
                painter.setCompositionMode(QPainter::CompositionMode_Source);
                drawPatch(painter, still);
                painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
                paintWidget(painter, motion, {seconds}, size, part, Layers::moving);
                if (shown.isComplete())
                    drawPatch(painter, over);
            });
    }

    void addWidget()
    {
        m_engine.compactMode = m_compact;
        const auto nothing = [] {};
        const auto view = std::make_shared<WidgetView>(
            m_engine, WidgetActions{nothing, nothing, nothing}, m_frames);
        add("Whole widget", m_whole, [view](QPainter& painter, double) {
            view->render(&painter, {}, {}, QWidget::DrawChildren);
        });
    }

    const bool m_compact;
    TimerEngine& m_engine;
    FrameSource& m_frames;
    const QRect m_whole;
    const RingGeometry m_ring;
};

} // namespace

std::vector<Layer> layersOf(bool compact, TimerEngine& engine, FrameSource& frames)
{
    return LayerList(compact, engine, frames).all;
}
