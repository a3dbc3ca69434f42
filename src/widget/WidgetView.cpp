#include "widget/WidgetView.h"

#include "core/NextPass.h"
#include "paint/DevicePatch.h"
#include "widget/Card.h"
#include "widget/ControlRow.h"
#include "widget/DoneButton.h"
#include "widget/PhaseGlyph.h"
#include "widget/ProgressRing.h"
#include "widget/WidgetAccessible.h"
#include "widget/WidgetGeometry.h"
#include "widget/WidgetPainter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QWindow>

#include <cmath>
#include <numbers>
#include <utility>

namespace {

/// The end of the arc is painted anew when it has gone this far, in device pixels: what is less is
/// not seen.
constexpr double visibleStep = 0.25;

/// The same for the figures, whose lines are finer and move all the time. Below the slowest rate
/// their sparks would flicker.
constexpr double visibleFigureStep = 0.5;
constexpr double slowestFigureRate = 12;

constexpr double ticksPerSecond = 2;

/// The number of the button that goes on to the next phase, as those that report the push-ups do.
constexpr int skipButton = 1;

double figureRate(Phase phase, double devicePixels)
{
    const double rate = phaseGlyphSpeed(phase) * devicePixels / visibleFigureStep;
    return std::max(rate, slowestFigureRate);
}

// The ring around a card that has the keyboard's focus; logical pixels.
constexpr double focusInset = 2.5;
constexpr double focusWidth = 1.5;
constexpr QColor focusColor(255, 255, 255, 230);

/// The rectangle with the pixels that it has only a part of, as it has at scales between whole
/// ones.
QRectF withEdges(const QRect& rect)
{
    return rect.adjusted(-1, -1, 1, 1);
}

QRectF centeredIn(const QRectF& room, QSizeF size)
{
    const double left = room.center().x() - size.width() / 2;
    const double top = std::floor(room.center().y() - size.height() / 2 + 0.5);
    return {QPointF(left, top), size};
}

} // namespace

WidgetView::WidgetView(TimerEngine& engine, const WidgetActions& actions, FrameSource& frames,
                       bool forceHover)
    : m_engine(engine)
    , m_frames(frames)
    , m_forceHover(forceHover)
    , m_motion(readModel(), frames.now())
    , m_milestone(milestoneOf(engine))
    , m_fullControls(new ControlRow(engine, actions, false, this))
    , m_capsule(new DoneButton(DoneButton::Form::capsule, this))
    , m_checkMark(new DoneButton(DoneButton::Form::checkMark, this))
{
    // The last one lies above the check mark.
    m_compactControls = new ControlRow(engine, actions, true, this);
    m_capsule->setPlace(centeredIn(full::geometry().controls, m_capsule->preferredSize()));
    m_checkMark->setPlace(compact::geometry(Readout::Kind::count).checkMark);
    for (DoneButton* button : {m_capsule, m_checkMark}) {
        connect(button, &QAbstractButton::clicked, this, [this] {
            if (m_engine.phase() == Phase::pushups)
                m_engine.advance(true);
        });
    }
    // Nothing below it is painted: it is all there is in its window.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    for (QWidget* control : findChildren<QWidget*>())
        control->setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    installWidgetAccessibility();
    resize(preferredSize(engine.compactMode()));
    showControls(frames.now());

    connect(this, &WidgetView::milestoneReached, this, [this] { announceState(*this); });
    onNextPass(engine, this, [this] { reread(); });
    connect(&frames, &FrameSource::frame, this, &WidgetView::showFrame);
    connect(&frames, &FrameSource::interrupted, this, [this] {
        m_motion.follow(m_motion.model, shownTime(), false);
        showControls(shownTime());
        repaintPart(rect());
    });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focused) {
        m_keyboardInControls = focused && (m_fullControls->isAncestorOf(focused) ||
                                           m_compactControls->isAncestorOf(focused));
        if (m_repaint)
            m_repaint(rect()); // has or had the ring around the card
        reread();
    });
}

WidgetView::~WidgetView()
{
    // A widget that goes gives up its focus, which is told when there is no view left to hear it.
    qApp->disconnect(this);
}

/// Where nothing may move, it is always the same moment.
Instant WidgetView::shownTime() const
{
    return m_frames.isAnimated() ? m_frames.now() : Instant();
}

QSize WidgetView::sizeHint() const
{
    return preferredSize(m_engine.compactMode());
}

QPainterPath WidgetView::outline() const
{
    return cardShape(size(), compactnessOf(size()));
}

WidgetModel WidgetView::readModel() const
{
    return {.phase = m_engine.phase(),
            .state = m_engine.state(),
            .compact = m_engine.compactMode(),
            .hovered = m_hovering || m_forceHover || m_keyboardInControls,
            .cycle = m_engine.cycle(),
            .pushupCount = m_engine.pushupCount(),
            .timeString = m_engine.timeString(),
            .progress = m_engine.progress()};
}

void WidgetView::reread()
{
    const Milestone milestone = milestoneOf(m_engine);
    if (std::exchange(m_milestone, milestone) != milestone)
        Q_EMIT milestoneReached();
    const WidgetModel next = readModel();
    const WidgetModel last = m_motion.model;
    if (next == last)
        return;
    const Instant now = shownTime();
    // What is not seen arrives at once.
    m_motion.follow(next, now, m_frames.isAnimated() && isExposed());

    WidgetModel counted = last;
    counted.timeString = next.timeString;
    counted.progress = next.progress;
    WidgetModel hovered = counted;
    hovered.hovered = next.hovered;
    if (hovered != next) {
        m_changing = true;
        repaintPart(rect());
    } else if (next.timeString != last.timeString) {
        repaintStill(readoutBounds(next).toAlignedRect());
    }
    if (counted != next) {
        m_controlsFading = true;
        showControls(now);
    }
    updateArc(now);
    requestFrame(now);
}

// --- motion ---------------------------------------------------------------------------------

bool WidgetView::isExposed() const
{
    const QWindow* window = this->window()->windowHandle();
    return m_seen && isVisible() && window && window->isExposed();
}

void WidgetView::showFrame(Instant now)
{
    if (!isExposed())
        return;
    // What has just come to its end is shown there once more.
    const bool wasChanging = std::exchange(m_changing, m_motion.isChangingAt(now));
    const bool wasFading = std::exchange(m_controlsFading, m_motion.hover.isMovingAt(now));
    updateArc(now);
    if (m_changing || wasChanging || m_controlsFading || wasFading)
        showControls(now);
    QRect changed;
    if (m_changing || wasChanging)
        changed = rect();
    else if (m_motion.isAliveAt(now) && !presentFrame(now))
        changed = movingBounds(m_motion, now).toAlignedRect();
    if (m_repaint && !changed.isEmpty())
        m_repaint(changed);
    else if (!changed.isEmpty())
        repaint(changed); // At once, which spares another round through the event loop.
    requestFrame(now);
}

/// Shows the next picture of what moves without end. The window's own picture keeps an older one,
/// which is seen only until the next frame, should the window system ask for it.
bool WidgetView::presentFrame(Instant now)
{
    const QRect moving = movingBounds(m_motion, now).toAlignedRect();
    const bool covered = (m_motion.model.compact && m_motion.hover.at(now) > 0) || hasFocus();
    if (!m_present || m_stillBounds != moving || covered ||
        m_still.image.sizeInBytes() > m_largestPresented)
        return false;
    DevicePatch frame = m_still;
    frame.paint([&](QPainter& painter) { paintMoving(painter, moving, now); });
    return m_present(frame);
}

void WidgetView::updateArc(Instant now)
{
    const double progress = m_motion.progress.at(now);
    const RingGeometry& ring = ringGeometry(m_motion.model.compact);
    const double step =
        std::abs(progress - m_paintedProgress) * 2 * std::numbers::pi * ring.radius() * m_scale;
    const bool vanishes = progress == 0 && m_paintedProgress != 0;
    if (step < visibleStep && !vanishes)
        return;
    repaintStill(arcDifference(ring, progress, m_paintedProgress).toAlignedRect());
    m_paintedProgress = progress;
}

void WidgetView::setRepaint(Repaint repaint)
{
    m_repaint = std::move(repaint);
    for (const FadingButton* button : findChildren<FadingButton*>()) {
        connect(button, &FadingButton::lookChanged, this, [this, button] {
            m_repaint(QRect(button->mapTo(this, QPoint()), button->size()));
        });
    }
    connect(m_compactControls, &ControlRow::bandChanged, this,
            [this] { m_repaint(m_compactControls->geometry()); });
}

void WidgetView::repaintPart(const QRect& part)
{
    if (m_repaint)
        m_repaint(part);
    else
        update(part);
}

/// Paints anew what does not move in this part.
void WidgetView::repaintStill(const QRect& part)
{
    if (part.intersects(m_stillBounds))
        m_stillBounds = {};
    repaintPart(part);
}

/// How many frames a second there is something new to be seen in; 0 if there is not.
double WidgetView::frameRate(Instant now) const
{
    if (m_motion.isChangingAt(now) || m_motion.hover.isMovingAt(now))
        return FrameSource::maximumRate;
    const RingGeometry& ring = ringGeometry(m_motion.model.compact);
    double rate = std::abs(m_motion.progress.velocityAt(now)) * 2 * std::numbers::pi *
                  ring.radius() * m_scale / visibleStep;
    // So many come with the ticks of the countdown anyway.
    if (rate < ticksPerSecond)
        rate = 0;
    // The turning ring needs no more frames than a figure: its colours change by little over its
    // length.
    if (m_motion.complete.at(now) > 0)
        rate = FrameSource::maximumRate;
    else if (m_motion.isAliveAt(now))
        rate = std::max(rate, figureRate(m_motion.model.phase, ring.glyphSize * m_scale));
    return std::min(rate, FrameSource::maximumRate);
}

void WidgetView::requestFrame(Instant now)
{
    if (const double rate = frameRate(now); rate > 0 && isExposed())
        m_frames.request(rate);
}

void WidgetView::showControls(Instant now)
{
    const WidgetModel& model = m_motion.model;
    const double compactness = m_motion.compactness.at(now);
    const double done = m_motion.doneButton.at(now);
    const double hover = m_motion.hover.at(now);
    const double pause = m_motion.pauseButton.at(now);

    for (ControlRow* row : {m_fullControls, m_compactControls}) {
        row->setOffersResume(model.isPaused());
        row->setOffersPause(model.offersPause());
    }
    m_fullControls->setShown((1 - compactness) * (1 - done) * hover, pause);
    m_compactControls->setShown(compactness * hover, pause);
    m_capsule->setOpacity((1 - compactness) * done);
    m_checkMark->setOpacity(compactness * done);

    const int focusedButton =
        m_capsule->hasFocus() || m_checkMark->hasFocus()
            ? skipButton
            : std::max(m_fullControls->focusedButton(), m_compactControls->focusedButton());
    // What is on its way out is still seen, but no longer there for the hand.
    const auto offer = [](QWidget* control, bool offered, bool seen) {
        control->setAttribute(Qt::WA_TransparentForMouseEvents, !offered);
        control->setEnabled(offered);
        control->setVisible(offered || seen);
    };
    offer(m_fullControls, !model.compact && !model.offersDone(), compactness < 1 && done < 1);
    offer(m_compactControls, model.compact, compactness > 0);
    offer(m_capsule, !model.compact && model.offersDone(), compactness < 1 && done > 0);
    offer(m_checkMark, model.compact && model.offersDone(), compactness > 0 && done > 0);
    // What is not seen is not pressed, by a finger for example, which comes without hovering.
    if (!model.hovered) {
        for (ControlRow* row : {m_fullControls, m_compactControls})
            row->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    keepFocus(focusedButton);
}

/// A user of the keyboard stays at the controls when they are exchanged for others: at the same
/// button of the other form, or at what comes in place of the row.
void WidgetView::keepFocus(int button)
{
    const WidgetModel& model = m_motion.model;
    ControlRow* row = model.compact ? m_compactControls : m_fullControls;
    if (button < 0 || row->focusedButton() >= 0 || m_checkMark->hasFocus())
        return;
    if (model.offersDone() && !model.compact)
        m_capsule->setFocus(Qt::TabFocusReason);
    else
        row->focusButton(button);
}

// --- painting -------------------------------------------------------------------------------

void WidgetView::paintEvent(QPaintEvent* event)
{
    const Instant now = shownTime();
    QPainter painter(this);
    m_scale = painter.deviceTransform().m11();
    for (const QRect& part : event->region()) {
        painter.setClipRect(part);
        paintPart(painter, part, now);
    }
    if (hasFocus())
        paintFocus(painter);
    requestFrame(now);
    // A pass later it is on the screen.
    if (!std::exchange(m_painted, true))
        QMetaObject::invokeMethod(this, &WidgetView::firstFramePainted, Qt::QueuedConnection);
}

void WidgetView::paintFocus(QPainter& painter)
{
    const QSizeF inner = QSizeF(size()) - QSizeF(2 * focusInset, 2 * focusInset);
    painter.setClipping(false);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(cardShape(inner, compactnessOf(size())).translated(focusInset, focusInset),
                       QPen(focusColor, focusWidth));
}

void WidgetView::paintPart(QPainter& painter, const QRect& part, Instant now)
{
    const QRect moving = movingBounds(m_motion, now).toAlignedRect();
    if (m_motion.isChangingAt(now) || !moving.contains(part)) {
        if (part.intersects(m_stillBounds))
            m_stillBounds = {};
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(part, Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        paintWidget(painter, m_motion, now, size(), part);
        return;
    }
    if (m_stillBounds != moving || !m_still.fits(painter))
        makeStill(painter, moving, now);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    drawPatch(painter, m_still);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    paintMoving(painter, part, now);
}

void WidgetView::makeStill(const QPainter& painter, const QRect& moving, Instant now)
{
    const auto layer = [&](Layers layers) {
        DevicePatch patch(painter, moving);
        patch.paint([&](QPainter& inner) {
            paintWidget(inner, m_motion, now, size(), withEdges(moving), layers);
        });
        return patch;
    };
    m_still = layer(Layers::still);
    m_over = m_motion.model.isComplete() ? layer(Layers::over) : DevicePatch();
    m_stillBounds = moving;
}

void WidgetView::paintMoving(QPainter& painter, const QRect& part, Instant now)
{
    paintWidget(painter, m_motion, now, size(), withEdges(part), Layers::moving);
    if (!m_over.image.isNull())
        drawPatch(painter, m_over);
}

void WidgetView::resizeEvent(QResizeEvent*)
{
    m_stillBounds = {};
}

// --- pointer and keyboard -------------------------------------------------------------------

void WidgetView::setHovering(bool hovering)
{
    if (hovering == m_hovering)
        return;
    m_hovering = hovering;
    reread();
}

void WidgetView::showEvent(QShowEvent*)
{
    if (QWindow* shownIn = window()->windowHandle())
        shownIn->installEventFilter(this);
}

/// A window that comes back, as after the desktop was shown, is shown as it was; it is not painted,
/// which would let it move on.
bool WidgetView::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Expose && isExposed())
        showAnew();
    return false;
}

void WidgetView::showAnew()
{
    showControls(m_frames.now());
    repaintPart(rect());
}

void WidgetView::setSeen(bool seen)
{
    m_seen = seen;
    if (isExposed())
        showAnew();
}

void WidgetView::hideEvent(QHideEvent*)
{
    m_mayBeTap = false;
    setHovering(false);
}

void WidgetView::enterEvent(QEnterEvent* event)
{
    setHovering(isOnCard(event->position()));
}

void WidgetView::leaveEvent(QEvent*)
{
    setHovering(false);
}

// The mouse also drags the window, which is the window's business: the events go on to it.

void WidgetView::mousePressEvent(QMouseEvent* event)
{
    m_pressedAt = event->globalPosition();
    m_mayBeTap = event->button() == Qt::LeftButton && isOnCard(event->position());
    event->ignore();
}

void WidgetView::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton)
        setHovering(isOnCard(event->position()));
    const QPointF way = event->globalPosition() - m_pressedAt;
    if (way.manhattanLength() >= QApplication::startDragDistance())
        m_mayBeTap = false;
    event->ignore();
}

void WidgetView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && std::exchange(m_mayBeTap, false))
        tap();
    event->ignore();
}

void WidgetView::keyPressEvent(QKeyEvent* event)
{
    const auto key = event->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)
        tap();
    else
        QWidget::keyPressEvent(event);
}

void WidgetView::tap()
{
    if (canBeTapped())
        m_engine.advance(false);
}
