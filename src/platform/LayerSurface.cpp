#include "platform/LayerSurface.h"

#include "platform/LayerShell.h"
#include "platform/WaylandQueue.h"
#include "platform/WaylandSeat.h"

#include <QGuiApplication>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>
#include <qpa/qplatformscreen.h>
#include <qpa/qwindowsysteminterface.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <unistd.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1.h>

using namespace std::chrono_literals;

namespace {

constexpr auto scope = "vantora";
constexpr uint32_t atTopLeft = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT;
constexpr uint32_t allSides =
    atTopLeft | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
constexpr uint32_t knowsOnDemandSince = 4;

/// How often the compositor may answer something else before it answers the question of a place.
constexpr int mostRoundTrips = 20;
constexpr auto retryAfter = 500ms;

/// A compositor that gives the keyboard on demand to a surface that appears has done so by then,
/// and one that takes it back at once has done that by then.
constexpr auto keyboardSettlesWithin = 300ms;

/// The most units between two places that both are at whole pixels, at the usual scales.
constexpr int largestGrid = 8;

/// The nearest place up or to the left that is at a whole pixel at this scale, if there is one
/// near. From there Qt and the compositor agree on how many pixels a window takes.
QPoint atWholePixel(QPoint place, double scale)
{
    for (int grid = 1; grid <= largestGrid; ++grid) {
        if (std::abs(std::remainder(grid * scale, 1)) < 0.001)
            return {place.x() / grid * grid, place.y() / grid * grid};
    }
    return place;
}

/// Null for the screen that Qt invents while there is none.
wl_output* outputOf(const QScreen& screen)
{
    if (screen.handle()->isPlaceholder())
        return nullptr;
    return static_cast<wl_output*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForScreen(
            "output", const_cast<QScreen*>(&screen)));
}

wl_surface* surfaceOf(QWindow* window)
{
    return static_cast<wl_surface*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", window));
}

} // namespace

LayerSurface::LayerSurface(QWidget& window)
    : QObject(&window)
    , m_window(window)
{
    window.overrideWindowFlags(window.windowFlags() | Qt::BypassWindowManagerHint);
    window.installEventFilter(this);
    m_keyboardTrial.setSingleShot(true);
    m_keyboardTrial.setInterval(keyboardSettlesWithin);
    connect(&m_keyboardTrial, &QTimer::timeout, this, &LayerSurface::insistOnKeyboard);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &LayerSurface::adapt,
            Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &LayerSurface::adapt,
            Qt::QueuedConnection);
}

LayerSurface::~LayerSurface()
{
    detach();
}

LayerSurface* LayerSurface::of(const QWidget& window)
{
    return window.findChild<LayerSurface*>(QString(), Qt::FindDirectChildrenOnly);
}

bool LayerSurface::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        if (!event->spontaneous()) // as when its screen is another one
            attach();
        break;
    case QEvent::Close:
        detach();
        break;
    case QEvent::Hide:
        detach();
        // The next show needs another one.
        m_window.windowHandle()->destroy();
        m_surface = nullptr;
        break;
    case QEvent::Move:
        if (m_isPlaced && m_window.pos() != m_topLeft)
            QMetaObject::invokeMethod(this, &LayerSurface::tellToolkit, Qt::QueuedConnection);
        else if (!m_window.pos().isNull())
            m_topLeft = m_window.pos();
        adapt();
        break;
    case QEvent::Resize:
        adapt();
        break;
    case QEvent::MouseButtonRelease:
        // A drag that has crossed onto another screen ends.
        QMetaObject::invokeMethod(this, &LayerSurface::adapt, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

QScreen* LayerSurface::wantedScreen() const
{
    QScreen* screen = QGuiApplication::screenAt(QRect(m_topLeft, m_window.size()).center());
    return screen ? screen : m_window.screen();
}

QPoint LayerSurface::placeOnScreen() const
{
    return m_screen ? m_topLeft - m_screen->geometry().topLeft() : m_topLeft;
}

void LayerSurface::moveTo(QPoint topLeft)
{
    m_isPlaced = true;
    m_topLeft = topLeft;
    tellToolkit();
    adapt();
}

/// Qt takes the place inside a window for that on the screen when it shows a tool tip for it.
QPoint LayerSurface::placeBesideOwner() const
{
    const QWidget* parent = m_window.parentWidget();
    const LayerSurface* owner = parent ? of(*parent->window()) : nullptr;
    if (!owner)
        return m_window.pos();
    const QPoint place = m_window.pos() + owner->m_topLeft - owner->m_window.mapToGlobal(QPoint());
    const QRect screen = owner->wantedScreen()->geometry();
    return {std::min(place.x(), screen.x() + screen.width() - m_window.width()),
            std::min(place.y(), screen.y() + screen.height() - m_window.height())};
}

void LayerSurface::tellToolkit()
{
    m_window.move(m_topLeft);
}

void LayerSurface::attach()
{
    if (m_role)
        return;
    if (m_surface) {
        // A surface that had a picture gets no role. Qt shows it for another screen, say.
        QMetaObject::invokeMethod(this, &LayerSurface::showAnew, Qt::QueuedConnection);
        return;
    }
    if (!m_isPlaced)
        m_topLeft = placeBesideOwner();
    QWindow* window = m_window.windowHandle();
    window->setFlag(Qt::BypassWindowManagerHint);
    window->create();
    m_surface = surfaceOf(window);
    m_screen = wantedScreen();
    wl_output* output = outputOf(*m_screen);
    if (!m_surface || !output)
        return; // All screens are gone for now.

    const LayerShell& shell = *layerShell();
    WaylandQueue queue(shell.display);
    m_role = zwlr_layer_shell_v1_get_layer_surface(queue.wrap(shell.shell).get(), m_surface, output,
                                                   ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, scope);
    static constexpr zwlr_layer_surface_v1_listener listener{
        .configure =
            [](void* self, zwlr_layer_surface_v1* role, uint32_t serial, uint32_t, uint32_t) {
                zwlr_layer_surface_v1_ack_configure(role, serial);
                static_cast<LayerSurface*>(self)->m_isConfigured = true;
            },
        .closed =
            [](void* self, zwlr_layer_surface_v1*) {
                auto* surface = static_cast<LayerSurface*>(self);
                surface->detach();
                QMetaObject::invokeMethod(surface, &LayerSurface::adapt, Qt::QueuedConnection);
            },
    };
    zwlr_layer_surface_v1_add_listener(m_role, &listener, this);
    zwlr_layer_surface_v1_set_anchor(m_role, atTopLeft);
    m_isNew = true;
    if (m_window.windowType() == Qt::Popup || m_wantsKeyboard)
        askForKeyboard();
    commitPlace();
    // The first picture must not come before the compositor has agreed to the place.
    m_isConfigured = false;
    for (int i = 0; i < mostRoundTrips && m_role && !m_isConfigured; ++i)
        queue.roundTrip();
    if (m_role)
        queue.release(m_role);
    if (m_role && m_isConfigured) {
        m_confirmedTopLeft = m_topLeft;
        Q_EMIT attached();
    } else {
        // As while a screen comes up. A picture now would be the end of the connection.
        detach();
        QTimer::singleShot(retryAfter, this, &LayerSurface::adapt);
    }
    QMetaObject::invokeMethod(this, &LayerSurface::settle, Qt::QueuedConnection);
}

void LayerSurface::settle()
{
    m_isNew = false;
    QWindow* window = m_window.windowHandle();
    if (!window || !window->isVisible())
        return;
    tellToolkit();
    // A window without a role that Qt knows, and that got its geometry before it was shown, is
    // never told to paint.
    if (!window->isExposed())
        QWindowSystemInterface::handleExposeEvent(window, QRect(QPoint(), m_window.size()));
}

void LayerSurface::detach()
{
    if (!m_role)
        return;
    if (m_keyboard)
        WaylandSeat::release(m_keyboard);
    m_keyboard = nullptr;
    m_hasKeyboard = false;
    m_keyboardTrial.stop();
    forgetConfirmations();
    Q_EMIT detached();
    zwlr_layer_surface_v1_destroy(m_role);
    m_role = nullptr;
    wl_display_flush(layerShell()->display);
}

void LayerSurface::adapt()
{
    if (!m_window.isVisible())
        return;
    // A drag ends on the surface that it began on.
    const bool isDragged = m_screen && QGuiApplication::mouseButtons() != Qt::NoButton;
    if (m_role && (m_screen == wantedScreen() || isDragged))
        commitPlace();
    else
        showAnew();
}

void LayerSurface::commitPlace()
{
    if (!m_role)
        return;
    QPoint place = placeOnScreen() * waylandUnit();
    if (!m_keepsToPixels)
        place = atWholePixel(place, m_window.devicePixelRatioF() / waylandUnit());
    const QSize size = m_window.size() * waylandUnit();
    zwlr_layer_surface_v1_set_size(m_role, static_cast<uint32_t>(size.width()),
                                   static_cast<uint32_t>(size.height()));
    zwlr_layer_surface_v1_set_margin(m_role, place.y(), 0, 0, place.x());
    commit();
    confirmPlace();
    Q_EMIT placed();
}

/// Has the compositor answer once it has handled the request for this place: what events tell after
/// that is counted from there.
void LayerSurface::confirmPlace()
{
    const QPoint last =
        m_confirmations.empty() ? m_confirmedTopLeft : m_confirmations.back().topLeft;
    if (m_topLeft == last)
        return;
    static constexpr wl_callback_listener listener{
        .done = [](void* self, wl_callback* callback, uint32_t) {
            auto* surface = static_cast<LayerSurface*>(self);
            surface->m_confirmedTopLeft = surface->m_confirmations.front().topLeft;
            surface->m_confirmations.pop_front();
            wl_callback_destroy(callback);
        }};
    wl_callback* callback = wl_display_sync(layerShell()->display);
    wl_callback_add_listener(callback, &listener, this);
    m_confirmations.push_back({callback, m_topLeft});
}

void LayerSurface::forgetConfirmations()
{
    for (const Confirmation& waiting : m_confirmations)
        wl_callback_destroy(waiting.callback);
    m_confirmations.clear();
}

void LayerSurface::commit()
{
    if (m_keepsToPixels)
        wl_surface_set_buffer_scale(m_surface, 1);
    wl_surface_commit(m_surface);
}

void LayerSurface::showAnew()
{
    if (!m_role && !outputOf(*wantedScreen()))
        return;
    detach();
    m_window.hide();
    m_window.show();
}

bool LayerSurface::canTakeKeyboard() const
{
    const LayerShell& shell = *layerShell();
    return shell.seat && shell.seat->hasKeyboard() &&
           zwlr_layer_shell_v1_get_version(shell.shell) >= knowsOnDemandSince;
}

void LayerSurface::takeKeyboard()
{
    if (m_keyboard || !canTakeKeyboard())
        return;
    m_wantsKeyboard = true;
    if (m_role && m_isNew) {
        askForKeyboard();
        commit();
    } else if (m_role) {
        showAnew();
    }
}

/// With the next commit. On demand, all compositors take the keyboard back for the window that the
/// user clicks; some give it to surfaces that appear, sway for a moment only. Exclusively, all give
/// it, and labwc takes it back for nobody.
void LayerSurface::askForKeyboard()
{
    m_wantsKeyboard = false;
    if (!canTakeKeyboard())
        return;
    listenToKeyboard();
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        m_role, ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND);
    m_keyboardTrial.start();
}

void LayerSurface::insistOnKeyboard()
{
    m_keyboardTrial.stop();
    if (!m_hasKeyboard)
        setKeyboard(ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE);
}

void LayerSurface::keyboardTaken()
{
    m_hasKeyboard = true;
    if (m_keyboardTrial.isActive())
        m_keyboardTrial.start();
}

/// Some compositors give it to another window on a click, and back at once: Qt does not notice.
void LayerSurface::listenToKeyboard()
{
    static constexpr wl_keyboard_listener listener{
        .keymap = [](void*, wl_keyboard*, uint32_t, int32_t fd, uint32_t) { ::close(fd); },
        .enter =
            [](void* self, wl_keyboard*, uint32_t, wl_surface* entered, wl_array*) {
                auto* surface = static_cast<LayerSurface*>(self);
                if (entered == surface->m_surface)
                    surface->keyboardTaken();
            },
        .leave =
            [](void* self, wl_keyboard*, uint32_t, wl_surface* left) {
                auto* surface = static_cast<LayerSurface*>(self);
                if (left == surface->m_surface)
                    surface->keyboardLost();
            },
        .key = [](void*, wl_keyboard*, uint32_t, uint32_t, uint32_t, uint32_t) {},
        .modifiers = [](void*, wl_keyboard*, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t) {},
        .repeat_info = [](void*, wl_keyboard*, int32_t, int32_t) {},
    };
    m_keyboard = layerShell()->seat->keyboard();
    wl_keyboard_add_listener(m_keyboard, &listener, this);
}

void LayerSurface::setKeyboard(uint32_t interactivity)
{
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_role, interactivity);
    commit();
    wl_display_flush(layerShell()->display);
}

void LayerSurface::keyboardLost()
{
    m_hasKeyboard = false;
    if (m_keyboardTrial.isActive()) {
        insistOnKeyboard();
        return;
    }
    WaylandSeat::release(m_keyboard);
    m_keyboard = nullptr;
    // A click does not bring it back.
    setKeyboard(ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
    if (m_window.windowType() == Qt::Popup)
        QMetaObject::invokeMethod(&m_window, &QWidget::close, Qt::QueuedConnection);
}

QRect freeArea(const QScreen& screen)
{
    const LayerShell& shell = *layerShell();
    auto* compositor = static_cast<wl_compositor*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("compositor"));
    wl_output* output = outputOf(screen);
    if (!compositor || !output)
        return screen.availableGeometry();
    // A surface that asks for all the room that there is, and is told how much that is.
    WaylandQueue queue(shell.display);
    wl_surface* surface = wl_compositor_create_surface(queue.wrap(compositor).get());
    zwlr_layer_surface_v1* role = zwlr_layer_shell_v1_get_layer_surface(
        queue.wrap(shell.shell).get(), surface, output, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, scope);
    static constexpr zwlr_layer_surface_v1_listener listener{
        .configure =
            [](void* size, zwlr_layer_surface_v1*, uint32_t, uint32_t width, uint32_t height) {
                *static_cast<QSize*>(size) =
                    QSize(static_cast<int>(width), static_cast<int>(height));
            },
        .closed = [](void*, zwlr_layer_surface_v1*) {},
    };
    QSize size;
    zwlr_layer_surface_v1_add_listener(role, &listener, &size);
    zwlr_layer_surface_v1_set_anchor(role, allSides);
    wl_surface_commit(surface);
    queue.roundTrip();
    zwlr_layer_surface_v1_destroy(role);
    wl_surface_destroy(surface);
    return size.isEmpty() ? screen.availableGeometry()
                          : QRect(screen.geometry().topLeft(), size / waylandUnit());
}
