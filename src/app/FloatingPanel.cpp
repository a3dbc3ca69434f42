#include "app/FloatingPanel.h"

#include "core/SettingsStore.h"
#include "platform/FloatingWindow.h"
#include "platform/NativeSize.h"
#include "platform/SurfacePicture.h"
#include "widget/FrameSource.h"
#include "widget/WidgetView.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QScreen>

#include <chrono>
#include <limits>

using namespace std::chrono_literals;

namespace {

constexpr auto positionKey = "VantoraWidget";
constexpr auto settledAfter = 500ms;

/// How long after a change of the screens a busy window manager may still move windows for it.
constexpr auto calmAfter = 3s;

/// How far above a screen, or to its left, the pointer may seem to be, in logical pixels: where a
/// compositor counts places from the corner that panels leave free, it may be on a panel.
constexpr int thickestPanel = 64;

constexpr Curve resizing{Curve::Shape::easeInOut, 0.3};

} // namespace

FloatingPanel::FloatingPanel(WidgetView* rootView, bool compact, SettingsStore& settings,
                             FrameSource& frames)
    : m_settings(settings)
    , m_rootView(rootView)
    , m_frames(frames)
    , m_compactness(compact)
{
    makeFloating(*this);
    followDesktopScale(*this);
    m_travel = PointerTravel::watch(*this);
    setWindowTitle(QStringLiteral("Vantora"));
    rootView->setParent(this);
    if (SurfacePicture* picture = SurfacePicture::giveTo(*this, *rootView)) {
        rootView->setRepaint([picture](const QRect& part) { picture->update(part); });
        rootView->setPresent(
            [picture](const DevicePatch& frame) {
                picture->put(frame.image, frame.origin);
                return true;
            },
            std::numeric_limits<qsizetype>::max());
        connect(picture, &SurfacePicture::seenChanged, rootView, &WidgetView::setSeen);
    }
    takeSize(WidgetView::preferredSize(compact));
    place();

    connect(&frames, &FrameSource::frame, this, &FloatingPanel::showFrame);
    connect(&frames, &FrameSource::interrupted, this, [this] {
        m_compactness.jumpTo(m_compactness.target());
        showFrame(m_frames.now());
    });

    if (m_travel) {
        connect(m_travel.get(), &PointerTravel::travelled, this,
                [this] { followPointer(m_pressedAt); });
    }

    m_screensSettled.setSingleShot(true);
    m_screensSettled.setInterval(settledAfter);
    connect(&m_screensSettled, &QTimer::timeout, this, &FloatingPanel::place);
    for (QScreen* screen : QGuiApplication::screens())
        watch(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &FloatingPanel::watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &FloatingPanel::screensChanged);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &FloatingPanel::screensChanged);

    connect(rootView, &WidgetView::firstFramePainted, this, [this] {
        const auto cut = [this] { setOutline(*this, m_rootView->outline()); };
        onCompositorChange(*this, [this, cut] {
            cut();
            m_rootView->update();
        });
        cut(); // One may have come while the window was on its way.
    });

    m_moveSettled.setSingleShot(true);
    m_moveSettled.setInterval(settledAfter);
    connect(&m_moveSettled, &QTimer::timeout, this, &FloatingPanel::moveHasSettled);
}

FloatingPanel::~FloatingPanel()
{
    if (m_moveSettled.isActive())
        savePosition();
}

void FloatingPanel::place()
{
    if (m_dragging)
        return;
    if (const auto saved = framePositionFromText(m_settings.text(positionKey)))
        moveTo(broughtBack(topLeftOn(*saved, screenPlaces()), size(), screenPlaces()));
    else if (const QScreen* screen = QGuiApplication::primaryScreen())
        moveTo(firstTopLeft(freeAreaOf(*screen), size()));
}

void FloatingPanel::watch(const QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &FloatingPanel::screensChanged);
}

/// It goes back to its place as soon as the screens are there for it, and is never left where none
/// is. Where it stands meanwhile, or is put by a window manager, is nothing to remember.
void FloatingPanel::screensChanged()
{
    if (m_moveSettled.isActive() && m_screensCalm.hasExpired())
        savePosition();
    m_screensCalm.setRemainingTime(calmAfter);
    m_screensSettled.start();
}

void FloatingPanel::moveTo(QPoint topLeft)
{
    m_topLeft = topLeft;
    moveFloating(*this, topLeft);
}

void FloatingPanel::orderFrontRegardless()
{
    show();
    raise();
}

void FloatingPanel::takeKeyboard()
{
    orderFrontRegardless();
    ::takeKeyboard(*this);
}

void FloatingPanel::orderOut()
{
    prepareToHide(*this);
    hide();
}

void FloatingPanel::resizeAnimated(bool compact)
{
    if (isVisible() && m_frames.isAnimated()) {
        m_compactness.moveTo(compact, resizing, m_frames.now());
        m_frames.request();
    } else {
        m_compactness.jumpTo(compact);
        takeSize(WidgetView::preferredSize(compact));
    }
}

void FloatingPanel::takeSize(QSize size)
{
    // On scales between whole ones Qt asks window managers for sizes in steps of two pixels; they
    // count from this one.
    setBaseSize(size);
    setFixedSize(size);
}

void FloatingPanel::showFrame(Instant now)
{
    const QSizeF fullSize = WidgetView::preferredSize(false);
    const QSizeF compactSize = WidgetView::preferredSize(true);
    const QSize wanted = (fullSize + (compactSize - fullSize) * m_compactness.at(now)).toSize();
    if (wanted != size())
        takeSize(wanted);
    if (m_compactness.isMovingAt(now))
        m_frames.request();
}

void FloatingPanel::showEvent(QShowEvent*)
{
    prepareToShow(*this);
    if (canPutOnWindow(*this)) {
        m_rootView->setPresent(
            [this](const DevicePatch& frame) {
                putOnWindow(*this, frame.image, frame.origin);
                return true;
            },
            largestDirectPicture);
    }
    setOutline(*this, m_rootView->outline());
    moveFloating(*this, m_topLeft);
    QTimer::singleShot(0, this, [this] { settleAfterShow(*this); });
}

void FloatingPanel::hideEvent(QHideEvent*)
{
    letGo();
}

void FloatingPanel::resizeEvent(QResizeEvent*)
{
    m_rootView->setGeometry(rect());
    setOutline(*this, m_rootView->outline());
    // Compositors need not say that the window has left a pointer that stands still.
    if (m_travel)
        m_rootView->pointerIsAt(m_travel->pointerInside());
}

void FloatingPanel::moveEvent(QMoveEvent* event)
{
    // While it is dragged, these events tell of places that it has left already. At other times a
    // window manager has moved it, on the user's behalf.
    if (m_dragging || !isVisible() || event->pos() == m_topLeft || !isWhereQtSays(*this))
        return;
    if (!m_screensCalm.hasExpired()) {
        m_screensSettled.start();
        return;
    }
    m_topLeft = event->pos();
    hasMoved();
}

void FloatingPanel::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        letGo(); // The menu that this opens may get the release.
        return;
    }
    // The way of a tablet's pen is told neither as a mouse's nor as a finger's.
    const bool hasWay = !m_travel || event->pointerType() != QPointingDevice::PointerType::Pen;
    if (!hasWay || !m_rootView->isOnCard(event->position()))
        return;
    m_pressed = true;
    m_pressedAt =
        m_travel ? m_topLeft + event->position().toPoint() : event->globalPosition().toPoint();
    m_grabbedAt = m_pressedAt - m_topLeft;
}

void FloatingPanel::mouseMoveEvent(QMouseEvent* event)
{
    if ((event->buttons() & Qt::LeftButton) == 0)
        letGo(); // Somebody else got the release.
    followPointer(event->globalPosition().toPoint());
}

void FloatingPanel::followPointer(QPoint reportedAt)
{
    if (!m_pressed)
        return;
    if (!m_travel) {
        pointerIsAt(reportedAt);
        return;
    }
    const QPoint at = m_pressedAt + m_travel->distance().toPoint();
    const QPoint reached = nearestOnScreens(at, thickestPanel, screenPlaces());
    if (reached != at)
        m_travel->setDistance(reached - m_pressedAt);
    pointerIsAt(reached);
}

void FloatingPanel::pointerIsAt(QPoint at)
{
    if ((at - m_pressedAt).manhattanLength() >= QApplication::startDragDistance())
        m_dragging = true;
    if (m_dragging) {
        moveTo(at - m_grabbedAt);
        hasMoved();
    }
}

void FloatingPanel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    followPointer(event->globalPosition().toPoint());
    letGo();
}

void FloatingPanel::menuHasClosed()
{
    m_rootView->pointerIsAt(m_travel ? m_travel->pointerInside()
                                     : std::optional<QPointF>(QCursor::pos() - m_topLeft));
}

void FloatingPanel::letGo()
{
    m_pressed = false;
    m_dragging = false;
}

void FloatingPanel::hasMoved()
{
    m_movedTo = position();
    m_moveSettled.start();
}

void FloatingPanel::moveHasSettled()
{
    if (m_dragging) {
        m_moveSettled.start();
        return;
    }
    // A window manager may have stopped it short of where it was dragged.
    if (isWhereQtSays(*this))
        m_topLeft = pos();
    if (const QPoint seen = broughtBack(m_topLeft, size(), screenPlaces()); seen != m_topLeft)
        moveTo(seen);
    m_movedTo = position();
    savePosition();
}

FramePosition FloatingPanel::position() const
{
    FramePosition position{.topLeft = m_topLeft};
    if (const QScreen* on = QGuiApplication::screenAt(QRect(m_topLeft, size()).center())) {
        position.screen = on->name();
        position.screenOrigin = on->geometry().topLeft();
    }
    return position;
}

void FloatingPanel::savePosition()
{
    m_moveSettled.stop();
    m_settings.setText(positionKey, toText(m_movedTo));
}
