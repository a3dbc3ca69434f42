#include "platform/FloatingWindow.h"

#include "platform/LayerPopups.h"
#include "platform/LayerShell.h"
#include "platform/LayerSurface.h"
#include "platform/SelectionWatch.h"
#include "platform/X11.h"

#include <QAbstractNativeEventFilter>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainterPath>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr uint32_t allDesktops = 0xFFFFFFFF;

/// "From an ordinary application", in the words of the window manager protocol.
constexpr uint32_t sourceApplication = 1;

enum StateChange : uint32_t { removeState = 0, addState = 1 };

struct Atoms
{
    explicit Atoms(xcb_connection_t* connection)
    {
        static constexpr std::array names{
            "_NET_WM_DESKTOP",
            "_NET_WM_STATE",
            "_NET_WM_STATE_ABOVE",
            "_NET_WM_STATE_STICKY",
            "_NET_WM_STATE_SKIP_TASKBAR",
            "_NET_WM_STATE_SKIP_PAGER",
            "_NET_WM_STATE_DEMANDS_ATTENTION",
            "WM_PROTOCOLS",
            "WM_TAKE_FOCUS",
            "_NET_WM_CM_S0",
            "_NET_CURRENT_DESKTOP",
            "_NET_WM_WINDOW_TYPE",
            "_KDE_NET_WM_WINDOW_TYPE_CRITICAL_NOTIFICATION",
            "_NET_WM_WINDOW_TYPE_UTILITY",
        };
        const std::array values{&desktop,
                                &state,
                                &above,
                                &sticky,
                                &skipTaskbar,
                                &skipPager,
                                &demandsAttention,
                                &protocols,
                                &takeFocus,
                                &compositor,
                                &currentDesktop,
                                &type,
                                &criticalNotification,
                                &utility};
        // All questions first, so that the answers come in one round trip.
        std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
        for (std::size_t i = 0; i < names.size(); ++i) {
            cookies[i] =
                xcb_intern_atom(connection, 0, static_cast<uint16_t>(strlen(names[i])), names[i]);
        }
        for (std::size_t i = 0; i < names.size(); ++i) {
            const auto reply = owned(xcb_intern_atom_reply(connection, cookies[i], nullptr));
            *values[i] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        }
    }

    xcb_atom_t desktop = XCB_ATOM_NONE;
    xcb_atom_t state = XCB_ATOM_NONE;
    xcb_atom_t above = XCB_ATOM_NONE;
    xcb_atom_t sticky = XCB_ATOM_NONE;
    xcb_atom_t skipTaskbar = XCB_ATOM_NONE;
    xcb_atom_t skipPager = XCB_ATOM_NONE;
    xcb_atom_t demandsAttention = XCB_ATOM_NONE;
    xcb_atom_t protocols = XCB_ATOM_NONE;
    xcb_atom_t takeFocus = XCB_ATOM_NONE;
    xcb_atom_t compositor = XCB_ATOM_NONE;
    xcb_atom_t currentDesktop = XCB_ATOM_NONE;
    xcb_atom_t type = XCB_ATOM_NONE;
    xcb_atom_t criticalNotification = XCB_ATOM_NONE;
    xcb_atom_t utility = XCB_ATOM_NONE;
};

const Atoms& atoms(xcb_connection_t* connection)
{
    static const Atoms atoms(connection);
    return atoms;
}

/// Asks the window manager for something, which it takes from shown windows only.
void request(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t what,
             std::array<uint32_t, 5> data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = what;
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(connection, 0, rootOf(connection),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
}

/// Whether something makes windows translucent, by being the owner of this selection.
bool isComposited(xcb_connection_t* connection)
{
    return ownerOf(connection, atoms(connection).compositor) != XCB_WINDOW_NONE;
}

void focus(const QWidget& window, xcb_timestamp_t at)
{
    xcb_connection_t* connection = x11Connection();
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT,
                        static_cast<xcb_window_t>(window.internalWinId()), at);
    xcb_flush(connection);
}

/// Whether the server shows the window, which Qt may not have heard of yet.
bool isViewable(const QWidget& window)
{
    xcb_connection_t* connection = x11Connection();
    const auto attributes = owned(xcb_get_window_attributes_reply(
        connection,
        xcb_get_window_attributes(connection, static_cast<xcb_window_t>(window.internalWinId())),
        nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

/// Gives a window the keyboard as soon as it is on the screen. The window manager may still be
/// about to put it there.
class FocusOnceSeen : public QObject
{
public:
    explicit FocusOnceSeen(QWidget& window)
        : QObject(&window)
        , m_window(window)
    {
        window.windowHandle()->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Expose && m_window.windowHandle()->isExposed()) {
            focus(m_window, XCB_CURRENT_TIME);
            deleteLater();
        } else if (event->type() == QEvent::Hide) {
            deleteLater();
        }
        return false;
    }

private:
    QWidget& m_window;
};

/// A window manager offers the keyboard to a floating window when it is clicked, when the user goes
/// to another desktop, and when the user asks for the window by other means, as a key binding. Only
/// the last is taken.
class FocusOffers : public QObject, public QAbstractNativeEventFilter
{
public:
    explicit FocusOffers(QWidget& window)
        : QObject(&window)
        , m_window(window)
    {
        window.installEventFilter(this);
        qGuiApp->installNativeEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::WinIdChange && m_window.windowHandle())
            m_window.windowHandle()->installEventFilter(this);
        else if (event->type() == QEvent::MouseButtonPress)
            rememberClick(static_cast<QMouseEvent*>(event)->timestamp());
        return false;
    }

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override
    {
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        switch (event->response_type & 0x7F) {
        case XCB_CLIENT_MESSAGE:
            receive(*reinterpret_cast<const xcb_client_message_event_t*>(event));
            break;
        case XCB_PROPERTY_NOTIFY:
            if (reinterpret_cast<const xcb_property_notify_event_t*>(event)->atom ==
                atoms(x11Connection()).currentDesktop)
                m_desktopChange.setRemainingTime(desktopSettlesWithin);
            break;
        }
        return false;
    }

private:
    static constexpr std::chrono::milliseconds clickComesWithin{100};
    static constexpr std::chrono::milliseconds desktopSettlesWithin{500};

    /// In milliseconds. Some window managers give the time of the click, some one near it, and the
    /// farther from it the busier the machine is.
    static constexpr qint64 offerIsNear = 200;

    void receive(const xcb_client_message_event_t& event)
    {
        const Atoms& atom = atoms(x11Connection());
        if (event.window != m_window.internalWinId() || event.type != atom.protocols ||
            event.data.data32[0] != atom.takeFocus)
            return;
        // The click, or the change of the desktop, that it may be about can come after it.
        QTimer::singleShot(clickComesWithin, this,
                           [this, offeredAt = event.data.data32[1]] { take(offeredAt); });
    }

    void rememberClick(quint64 time)
    {
        std::shift_right(m_clicks.begin(), m_clicks.end(), 1);
        m_clicks.front() = time;
    }

    void take(xcb_timestamp_t offeredAt)
    {
        const bool isAboutClick =
            std::any_of(m_clicks.begin(), m_clicks.end(), [offeredAt](quint64 click) {
                return std::abs(static_cast<qint64>(offeredAt) - static_cast<qint64>(click)) <=
                       offerIsNear;
            });
        if (!isAboutClick && m_desktopChange.hasExpired() && m_window.isVisible())
            focus(m_window, offeredAt);
    }

    QWidget& m_window;
    /// When the last clicks began, by the clock of the X server, in milliseconds; more of them than
    /// there are while an offer waits.
    std::array<quint64, 8> m_clicks{};
    QDeadlineTimer m_desktopChange{0}; ///< runs while its consequences may come
};

} // namespace

void makeFloating(QWidget& window)
{
    window.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::WindowDoesNotAcceptFocus);
    window.setAttribute(Qt::WA_TranslucentBackground);
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    window.setAttribute(Qt::WA_X11NetWmWindowTypeUtility);
    // It is hardly ever the active window, which alone would have tool tips.
    window.setAttribute(Qt::WA_AlwaysShowToolTips);
    if (x11Connection()) {
        new FocusOffers(window);
    } else if (layerShell()) {
        new LayerSurface(window);
        new LayerPopups(&window);
    }
}

void prepareToShow(QWidget& window)
{
    xcb_connection_t* connection = x11Connection();
    if (!connection)
        return;
    const Atoms& atom = atoms(connection);
    const auto id = static_cast<xcb_window_t>(window.winId());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, atom.desktop, XCB_ATOM_CARDINAL, 32,
                        1, &allDesktops);
    // KWin has windows of the first type above full-screen ones as well; others know the second.
    const std::array types{atom.criticalNotification, atom.utility};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, atom.type, XCB_ATOM_ATOM, 32,
                        types.size(), types.data());
    // Qt keeps these when it adds its own states just before mapping the window.
    const std::array states{atom.above, atom.sticky, atom.skipTaskbar, atom.skipPager};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, atom.state, XCB_ATOM_ATOM, 32,
                        states.size(), states.data());
}

void prepareToHide(QWidget& window)
{
    if (LayerSurface* surface = LayerSurface::of(window))
        surface->detach();
}

void takeKeyboard(QWidget& window)
{
    if (LayerSurface* surface = LayerSurface::of(window))
        surface->takeKeyboard();
    else if (x11Connection() && isViewable(window))
        focus(window, XCB_CURRENT_TIME);
    else if (x11Connection())
        new FocusOnceSeen(window);
}

QRect freeAreaOf(const QScreen& screen)
{
    return layerShell() ? freeArea(screen) : screen.availableGeometry();
}

void moveFloating(QWidget& window, QPoint topLeft)
{
    if (LayerSurface* surface = LayerSurface::of(window))
        surface->moveTo(topLeft);
    else
        window.move(topLeft);
}

void onCompositorChange(QWidget& window, std::function<void()> react)
{
    xcb_connection_t* connection = x11Connection();
    if (!connection)
        return;
    auto* watch = new SelectionWatch(connection, atoms(connection).compositor, &window);
    // Once it has settled: Qt learns of it as well.
    QObject::connect(watch, &SelectionWatch::changed, &window, std::move(react),
                     Qt::QueuedConnection);
}

bool isWhereQtSays(const QWidget& window)
{
    if (const LayerSurface* surface = LayerSurface::of(window))
        return surface->topLeft() == window.pos();
    xcb_connection_t* connection = x11Connection();
    if (!connection || !window.geometry().topLeft().isNull())
        return true;
    // After the first show it may say (0, 0) of any place.
    const auto id = static_cast<xcb_window_t>(window.winId());
    const auto place = owned(xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, id, rootOf(connection), 0, 0), nullptr));
    return place && place->dst_x == 0 && place->dst_y == 0;
}

void settleAfterShow(QWidget& window)
{
    xcb_connection_t* connection = x11Connection();
    if (!connection)
        return;
    const Atoms& atom = atoms(connection);
    const auto id = static_cast<xcb_window_t>(window.winId());
    request(connection, id, atom.desktop, {allDesktops, sourceApplication});
    // A window manager that hears late of the last hiding has taken them off meanwhile.
    request(connection, id, atom.state, {addState, atom.above, atom.sticky, sourceApplication});
    request(connection, id, atom.state,
            {addState, atom.skipTaskbar, atom.skipPager, sourceApplication});
    // Some window managers find that a window shown without focus must want attention.
    request(connection, id, atom.state, {removeState, atom.demandsAttention, 0, sourceApplication});
    xcb_flush(connection);
}

void setOutline(QWidget& window, const QPainterPath& outline)
{
    xcb_connection_t* connection = x11Connection();
    if (LayerSurface::of(window))
        window.windowHandle()->setMask(QRegion(outline.toFillPolygon().toPolygon()));
    if (!connection || !window.internalWinId())
        return;
    const auto id = static_cast<xcb_window_t>(window.internalWinId());
    const double scale = window.devicePixelRatioF();
    const QPolygon polygon = outline.toFillPolygon(QTransform::fromScale(scale, scale)).toPolygon();
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect& part : QRegion(polygon)) {
        rectangles.push_back({static_cast<int16_t>(part.x()), static_cast<int16_t>(part.y()),
                              static_cast<uint16_t>(part.width()),
                              static_cast<uint16_t>(part.height())});
    }
    const auto cut = [&](xcb_shape_sk_t what) {
        xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, what, XCB_CLIP_ORDERING_YX_BANDED, id, 0,
                             0, static_cast<uint32_t>(rectangles.size()), rectangles.data());
    };
    cut(XCB_SHAPE_SK_INPUT);
    if (isComposited(connection))
        xcb_shape_mask(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, id, 0, 0, XCB_NONE);
    else
        cut(XCB_SHAPE_SK_BOUNDING);
}

bool canPutOnWindow(const QWidget& window)
{
    const QWindow* handle = window.windowHandle();
    return x11Connection() && handle && handle->format().alphaBufferSize() > 0 &&
           xcb_get_setup(x11Connection())->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
}

void putOnWindow(const QWidget& window, const QImage& picture, QPoint at)
{
    constexpr uint8_t depth = 32;
    xcb_connection_t* connection = x11Connection();
    const auto id = static_cast<xcb_window_t>(window.internalWinId());
    // One for all frames of a window: ids of such things come to an end within a day.
    static xcb_window_t lastWindow = XCB_WINDOW_NONE;
    static xcb_gcontext_t context = XCB_NONE;
    if (lastWindow != id) {
        lastWindow = id;
        context = xcb_generate_id(connection);
        xcb_create_gc(connection, context, id, 0, nullptr);
    }
    xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, id, context,
                  static_cast<uint16_t>(picture.width()), static_cast<uint16_t>(picture.height()),
                  static_cast<int16_t>(at.x()), static_cast<int16_t>(at.y()), 0, depth,
                  static_cast<uint32_t>(picture.sizeInBytes()), picture.constBits());
    xcb_flush(connection);
}
