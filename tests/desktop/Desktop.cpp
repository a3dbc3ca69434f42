#include "Desktop.h"

#include "support/Waiting.h"

#include <xcb/shape.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

/// Replies of xcb belong to the caller.
template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply)
{
    return {reply, &std::free};
}

/// Windows lower than this are no menus but tool tips and helpers of the window manager.
constexpr int leastMenuHeight = 100;

} // namespace

Desktop::Desktop(const QString& display)
    : m_connection(xcb_connect(display.toLatin1().constData(), nullptr))
    , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
    , m_service(xcb_generate_id(m_connection))
{
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_service, m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (!waitUntil([this] { return isSet(m_root, "_NET_SUPPORTING_WM_CHECK"); }))
        qFatal("no window manager on %s", qPrintable(display));
    // It says so before it takes up its work: see it done with a first window.
    const xcb_window_t first = openOtherWindow({0, 0, 10, 10});
    xcb_destroy_window(m_connection, first);
    xcb_flush(m_connection);
    if (!waitUntil([&] { return !windows().contains(first); }))
        qFatal("the window manager on %s does not answer", qPrintable(display));
}

Desktop::~Desktop()
{
    xcb_disconnect(m_connection);
}

quint32 Desktop::atom(const char* name) const
{
    const auto reply = owned(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : 0;
}

bool Desktop::isSet(xcb_window_t window, const char* name) const
{
    const auto reply = owned(xcb_get_property_reply(
        m_connection,
        xcb_get_property(m_connection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 0),
        nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

QList<quint32> Desktop::property(xcb_window_t window, const char* name) const
{
    const auto reply = owned(xcb_get_property_reply(
        m_connection,
        xcb_get_property(m_connection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1000),
        nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* values = static_cast<const quint32*>(xcb_get_property_value(reply.get()));
    return QList<quint32>(values, values + reply->value_len);
}

QList<xcb_window_t> Desktop::windows() const
{
    return rootProperty("_NET_CLIENT_LIST_STACKING");
}

QString Desktop::titleOf(xcb_window_t window) const
{
    const auto reply =
        owned(xcb_get_property_reply(m_connection,
                                     xcb_get_property(m_connection, 0, window, atom("_NET_WM_NAME"),
                                                      XCB_GET_PROPERTY_TYPE_ANY, 0, 1000),
                                     nullptr));
    if (!reply)
        return {};
    return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(reply.get())),
                             xcb_get_property_value_length(reply.get()));
}

bool Desktop::isViewable(xcb_window_t window) const
{
    const auto reply = owned(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

QList<xcb_window_t> Desktop::shown(const QString& title) const
{
    QList<xcb_window_t> found;
    for (const xcb_window_t window : windows()) {
        if (titleOf(window) == title && isViewable(window))
            found.append(window);
    }
    return found;
}

QList<xcb_window_t> Desktop::popups() const
{
    QList<xcb_window_t> found;
    const auto tree =
        owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const auto attributes = owned(xcb_get_window_attributes_reply(
            m_connection, xcb_get_window_attributes(m_connection, children[i]), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->override_redirect && geometry(children[i]).height() > leastMenuHeight)
            found.append(children[i]);
    }
    return found;
}

QRect Desktop::geometry(xcb_window_t window) const
{
    const auto size = owned(
        xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    const auto place = owned(xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, window, m_root, 0, 0), nullptr));
    if (!size || !place)
        return {};
    return {place->dst_x, place->dst_y, size->width, size->height};
}

bool Desktop::isCut(xcb_window_t window) const
{
    const auto reply = owned(xcb_shape_query_extents_reply(
        m_connection, xcb_shape_query_extents(m_connection, window), nullptr));
    return reply && reply->bounding_shaped != 0;
}

void Desktop::becomeCompositor(bool yes) const
{
    xcb_set_selection_owner(m_connection, yes ? m_service : xcb_window_t{XCB_WINDOW_NONE},
                            atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
    xcb_flush(m_connection);
}

void Desktop::manageSettings(const QByteArray& settings) const
{
    const xcb_atom_t property = atom("_XSETTINGS_SETTINGS");
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_service, property, property, 8,
                        static_cast<uint32_t>(settings.size()), settings.constData());
    xcb_set_selection_owner(m_connection, m_service, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
    xcb_flush(m_connection);
}

xcb_window_t Desktop::focused() const
{
    const auto reply =
        owned(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return reply ? reply->focus : 0;
}

xcb_window_t Desktop::openOtherWindow(const QRect& geometry) const
{
    const xcb_window_t window = xcb_generate_id(m_connection);
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    const std::array<uint32_t, 2> attributes{screen->white_pixel, XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(
        m_connection, XCB_COPY_FROM_PARENT, window, m_root, static_cast<int16_t>(geometry.x()),
        static_cast<int16_t>(geometry.y()), static_cast<uint16_t>(geometry.width()),
        static_cast<uint16_t>(geometry.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        screen->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, attributes.data());
    // Where the test wants it, not where the window manager finds it a good place.
    constexpr uint32_t userPosition = 1;
    std::array<uint32_t, 18> hints{userPosition};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    constexpr std::array<uint32_t, 9> takesInput{1, 1};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_HINTS,
                        XCB_ATOM_WM_HINTS, 32, takesInput.size(), takesInput.data());
    xcb_map_window(m_connection, window);
    // A window manager that is still starting may not see a request before the next one.
    int requests = 0;
    do {
        if (++requests > 100)
            qFatal("the window manager does not take up a window");
        request(window, "_NET_REQUEST_FRAME_EXTENTS", {});
    } while (
        !waitUntil([&] { return windows().contains(window); }, std::chrono::milliseconds(200)));
    return window;
}

void Desktop::request(xcb_window_t window, const char* what, std::array<uint32_t, 5> data) const
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(what);
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection);
}

void Desktop::openPanel(int height) const
{
    const xcb_window_t panel = openOtherWindow({0, 0, 1920, height});
    const xcb_atom_t type = atom("_NET_WM_WINDOW_TYPE_DOCK");
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, panel, atom("_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &type);
    const std::array<uint32_t, 4> room{0, 0, static_cast<uint32_t>(height)};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, panel, atom("_NET_WM_STRUT"),
                        XCB_ATOM_CARDINAL, 32, room.size(), room.data());
    xcb_flush(m_connection);
    if (!waitUntil(
            [&] { return rootProperty("_NET_WORKAREA").value(1) == static_cast<quint32>(height); }))
        qFatal("the window manager knows no panels");
}

void Desktop::activate(xcb_window_t window) const
{
    constexpr uint32_t sourceTaskBar = 2;
    request(window, "_NET_ACTIVE_WINDOW", {sourceTaskBar});
}

void Desktop::close(xcb_window_t window) const
{
    request(window, "_NET_CLOSE_WINDOW", {});
}

void Desktop::place(xcb_window_t window, QPoint topLeft) const
{
    constexpr uint32_t northWest = 1;
    constexpr uint32_t hasX = 1 << 8;
    constexpr uint32_t hasY = 1 << 9;
    request(window, "_NET_MOVERESIZE_WINDOW",
            {northWest | hasX | hasY, static_cast<uint32_t>(topLeft.x()),
             static_cast<uint32_t>(topLeft.y())});
}

void Desktop::raise(xcb_window_t window) const
{
    constexpr uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(m_connection);
}

void Desktop::fake(uint8_t type, uint8_t detail, QPoint at) const
{
    xcb_test_fake_input(m_connection, type, detail, XCB_CURRENT_TIME, m_root,
                        static_cast<int16_t>(at.x()), static_cast<int16_t>(at.y()), 0);
    xcb_flush(m_connection);
}

void Desktop::moveTo(QPoint at) const
{
    fake(XCB_MOTION_NOTIFY, 0, at);
}

void Desktop::press(QPoint at, int button) const
{
    moveTo(at);
    fake(XCB_BUTTON_PRESS, static_cast<uint8_t>(button), at);
    // A window manager holds presses back until it has looked at them. What comes on its heels may
    // overtake it.
    waitForWindowManager();
}

void Desktop::release(int button) const
{
    fake(XCB_BUTTON_RELEASE, static_cast<uint8_t>(button), {});
}

void Desktop::click(QPoint at, int button) const
{
    press(at, button);
    release(button);
}

void Desktop::waitForWindowManager() const
{
    const char* const answer = "_NET_FRAME_EXTENTS";
    const xcb_window_t unmapped = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, unmapped, m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    request(unmapped, "_NET_REQUEST_FRAME_EXTENTS", {});
    if (!waitUntil([&] { return isSet(unmapped, answer); }))
        qFatal("the window manager does not answer");
    xcb_destroy_window(m_connection, unmapped);
    xcb_flush(m_connection);
}

void Desktop::grabPointer() const
{
    const auto reply = owned(xcb_grab_pointer_reply(
        m_connection,
        xcb_grab_pointer(m_connection, 0, m_root, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS)
        qFatal("the pointer cannot be grabbed");
}

void Desktop::ungrabPointer() const
{
    xcb_ungrab_pointer(m_connection, XCB_CURRENT_TIME);
    xcb_flush(m_connection);
}

std::optional<uint8_t> Desktop::keycodeOf(quint32 key) const
{
    const auto* setup = xcb_get_setup(m_connection);
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto mapping = owned(xcb_get_keyboard_mapping_reply(
        m_connection, xcb_get_keyboard_mapping(m_connection, setup->min_keycode, count), nullptr));
    if (!mapping)
        return std::nullopt;
    const std::ptrdiff_t symbolsOfKey = mapping->keysyms_per_keycode;
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int code = 0; code < count; ++code) {
        // The first symbol is what the key gives without a modifier.
        if (symbols[code * symbolsOfKey] == key)
            return static_cast<uint8_t>(setup->min_keycode + code);
    }
    return std::nullopt;
}

void Desktop::type(quint32 key) const
{
    if (const auto code = keycodeOf(key)) {
        fake(XCB_KEY_PRESS, *code, {});
        fake(XCB_KEY_RELEASE, *code, {});
    }
}

void Desktop::typeWithControl(quint32 key) const
{
    constexpr quint32 leftControl = 0xFFE3;
    const auto control = keycodeOf(leftControl);
    if (!control)
        return;
    fake(XCB_KEY_PRESS, *control, {});
    type(key);
    fake(XCB_KEY_RELEASE, *control, {});
}

int Desktop::focusLosses()
{
    while (const auto event = owned(xcb_poll_for_event(m_connection))) {
        const auto* focus = reinterpret_cast<const xcb_focus_out_event_t*>(event.get());
        // A grab of the keyboard by the window manager takes it for a moment only.
        m_focusLosses +=
            (event->response_type & 0x7F) == XCB_FOCUS_OUT && focus->mode == XCB_NOTIFY_MODE_NORMAL;
    }
    return m_focusLosses;
}

QImage Desktop::picture(const QRect& area) const
{
    const auto reply = owned(xcb_get_image_reply(
        m_connection,
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root,
                      static_cast<int16_t>(area.x()), static_cast<int16_t>(area.y()),
                      static_cast<uint16_t>(area.width()), static_cast<uint16_t>(area.height()),
                      ~0U),
        nullptr));
    if (!reply)
        return {};
    return QImage(xcb_get_image_data(reply.get()), area.width(), area.height(),
                  QImage::Format_RGB32)
        .copy();
}
