#include "platform/FloatingWindow.h"

#include <QGuiApplication>
#include <QWidget>

#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

constexpr uint32_t allDesktops = 0xFFFFFFFF;

/// "From an ordinary application", in the words of the window manager protocol.
constexpr uint32_t sourceApplication = 1;

enum StateChange : uint32_t { removeState = 0, addState = 1 };

/// The X11 connection, or null on other window systems.
xcb_connection_t* x11Connection()
{
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

/// Replies of the X server belong to the caller.
template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply)
{
    return {reply, &std::free};
}

xcb_window_t rootOf(xcb_connection_t* connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

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
        };
        const std::array values{&desktop,     &state,     &above,           &sticky,
                                &skipTaskbar, &skipPager, &demandsAttention};
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

} // namespace

void makeFloating(QWidget& window)
{
    window.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::WindowDoesNotAcceptFocus);
    window.setAttribute(Qt::WA_TranslucentBackground);
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    window.setAttribute(Qt::WA_X11NetWmWindowTypeUtility);
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
    // Qt keeps these when it adds its own states just before mapping the window.
    const std::array states{atom.above, atom.sticky, atom.skipTaskbar, atom.skipPager};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, atom.state, XCB_ATOM_ATOM, 32,
                        states.size(), states.data());
}

bool isAtOrigin(const QWidget& window)
{
    xcb_connection_t* connection = x11Connection();
    if (!connection)
        return window.pos().isNull();
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
    // Some window managers find that a window shown without focus must want attention.
    request(connection, id, atom.state, {removeState, atom.demandsAttention, 0, sourceApplication});
    xcb_flush(connection);
}
