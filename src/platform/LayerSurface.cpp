#include "platform/LayerSurface.h"

#include "platform/LayerShell.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1.h>

namespace {

constexpr auto scope = "vantora";
constexpr uint32_t atTopLeft = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT;
constexpr uint32_t allSides =
    atTopLeft | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
constexpr uint32_t knowsOnDemandSince = 4;

/// How often the compositor may answer something else before it answers the question of a place.
constexpr int mostRoundTrips = 20;

wl_output* outputOf(const QScreen& screen)
{
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
    window.setWindowFlag(Qt::BypassWindowManagerHint);
    window.installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &LayerSurface::focusChanged);
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
        attach();
        break;
    case QEvent::Close:
        detach();
        break;
    case QEvent::Hide:
        detach();
        // A surface has one role for its life; the next show needs another one.
        m_window.windowHandle()->destroy();
        break;
    case QEvent::Move:
        if (m_window.pos().isNull()) // Qt has lost it.
            QMetaObject::invokeMethod(this, &LayerSurface::tellToolkit, Qt::QueuedConnection);
        else
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

void LayerSurface::moveTo(QPoint topLeft)
{
    m_isPlaced = true;
    m_topLeft = topLeft;
    tellToolkit();
    adapt();
}

void LayerSurface::tellToolkit()
{
    // A window that is moved just before its first picture never gets to paint it.
    if (m_window.windowHandle() && m_window.windowHandle()->isVisible())
        m_window.move(m_topLeft);
}

void LayerSurface::attach()
{
    if (m_role)
        return;
    if (!m_isPlaced)
        m_topLeft = m_window.pos();
    QWindow* window = m_window.windowHandle();
    window->setFlag(Qt::BypassWindowManagerHint);
    window->create();
    m_surface = surfaceOf(window);
    m_screen = wantedScreen();
    wl_output* output = outputOf(*m_screen);
    if (!m_surface || !output)
        return; // All screens are gone for now.

    const LayerShell& shell = *layerShell();
    m_role = zwlr_layer_shell_v1_get_layer_surface(shell.shell, m_surface, output,
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
    if (m_window.windowType() == Qt::Popup)
        takeKeyboard();
    commitPlace();
    // The first picture must not come before the compositor has agreed to the place.
    m_isConfigured = false;
    for (int i = 0; i < mostRoundTrips && m_role && !m_isConfigured; ++i)
        wl_display_roundtrip(shell.display);
    QMetaObject::invokeMethod(this, &LayerSurface::tellToolkit, Qt::QueuedConnection);
}

void LayerSurface::detach()
{
    if (!m_role)
        return;
    m_hasKeyboard = false;
    zwlr_layer_surface_v1_destroy(m_role);
    m_role = nullptr;
    wl_display_flush(layerShell()->display);
}

void LayerSurface::adapt()
{
    if (!m_window.isVisible())
        return;
    if (m_role && (m_screen == wantedScreen() || QGuiApplication::mouseButtons() != Qt::NoButton))
        commitPlace();
    else
        showAnew();
}

void LayerSurface::commitPlace()
{
    if (!m_role)
        return;
    const QPoint place = m_topLeft - m_screen->geometry().topLeft();
    zwlr_layer_surface_v1_set_size(m_role, static_cast<uint32_t>(m_window.width()),
                                   static_cast<uint32_t>(m_window.height()));
    zwlr_layer_surface_v1_set_margin(m_role, place.y(), 0, 0, place.x());
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

void LayerSurface::takeKeyboard()
{
    if (m_role && zwlr_layer_surface_v1_get_version(m_role) >= knowsOnDemandSince)
        setKeyboard(ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE);
}

void LayerSurface::setKeyboard(uint32_t interactivity)
{
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_role, interactivity);
    wl_surface_commit(m_surface);
    wl_display_flush(layerShell()->display);
}

void LayerSurface::focusChanged(const QWindow* focused)
{
    const bool hasKeyboard = focused && focused == m_window.windowHandle();
    if (!m_role || hasKeyboard == m_hasKeyboard)
        return;
    m_hasKeyboard = hasKeyboard;
    if (hasKeyboard) {
        // Taken; from now on the user may give it to another window.
        setKeyboard(ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND);
    } else {
        // A click does not bring it back.
        setKeyboard(ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
        if (m_window.windowType() == Qt::Popup)
            m_window.close();
    }
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
    wl_surface* surface = wl_compositor_create_surface(compositor);
    zwlr_layer_surface_v1* role = zwlr_layer_shell_v1_get_layer_surface(
        shell.shell, surface, output, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, scope);
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
    wl_display_roundtrip(shell.display);
    zwlr_layer_surface_v1_destroy(role);
    wl_surface_destroy(surface);
    return size.isEmpty() ? screen.availableGeometry() : QRect(screen.geometry().topLeft(), size);
}
