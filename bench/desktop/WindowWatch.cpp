#include "bench/desktop/WindowWatch.h"

#include "bench/desktop/Program.h"
#include "bench/desktop/Waiting.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

template <typename Message>
using Owned = std::unique_ptr<Message, decltype(&std::free)>;

template <typename Message>
Owned<Message> owned(Message* message)
{
    return {message, &std::free};
}

template <typename Event>
const Event& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const Event&>(event);
}

constexpr uint8_t typeMask = 0x7F;
constexpr auto startTakesAtMost = 30s;

} // namespace

WindowWatch::WindowWatch()
    : m_connection(xcb_connect(nullptr, nullptr), xcb_disconnect)
{
    xcb_connection_t* connection = m_connection.get();
    if (xcb_connection_has_error(connection) != 0)
        throw std::runtime_error("no connection to the display");
    const auto* damage = xcb_get_extension_data(connection, &xcb_damage_id);
    const auto version = owned(xcb_damage_query_version_reply(
        connection, xcb_damage_query_version(connection, 1, 1), nullptr));
    if (!damage || !version)
        throw std::runtime_error("the display does not tell what is drawn");
    m_damageEvent = static_cast<uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
    m_root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    m_managedBy = atom("_NET_SUPPORTING_WM_CHECK");
    m_processOf = atom("_NET_WM_PID");

    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, m_root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection);
    m_events = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection),
                                                 QSocketNotifier::Read);
    QObject::connect(m_events.get(), &QSocketNotifier::activated, m_events.get(),
                     [this] { takeEvents(); });
}

void WindowWatch::takeEvents()
{
    while (const auto event = owned(xcb_poll_for_event(m_connection.get())))
        take(*event);
    xcb_flush(m_connection.get());
}

void WindowWatch::take(const xcb_generic_event_t& event)
{
    const int type = event.response_type & typeMask;
    if (type == XCB_CREATE_NOTIFY)
        watch(as<xcb_create_notify_event_t>(event).window);
    else if (type == XCB_MAP_NOTIFY)
        noteMapped(as<xcb_map_notify_event_t>(event).window);
    else if (type == m_damageEvent)
        noteFrame(as<xcb_damage_notify_event_t>(event));
}

void WindowWatch::watch(xcb_window_t window)
{
    // It may be the id of another program's window of before.
    m_windows.insert(window, {});
    // The window manager puts the window into a frame before it maps it. From then on the root
    // window tells of the frame only, so the window has to be watched itself.
    const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.get(), window, XCB_CW_EVENT_MASK, &mask);
    xcb_damage_create(m_connection.get(), xcb_generate_id(m_connection.get()), window,
                      XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    // On a busy machine it can have been mapped by now, of which no event would tell.
    if (isMapped(window))
        noteMapped(window);
}

void WindowWatch::noteMapped(xcb_window_t window)
{
    const Clock::time_point now = Clock::now();
    const auto pid = property(window, m_processOf, XCB_ATOM_CARDINAL);
    if (!pid || m_firstWindows.contains(static_cast<pid_t>(*pid)))
        return;
    m_firstWindows.insert(static_cast<pid_t>(*pid), window);
    m_windows[window].mappedAt = now;
}

void WindowWatch::noteFrame(const xcb_damage_notify_event_t& event)
{
    Window& window = m_windows[event.drawable];
    if (!window.drawnAt)
        window.drawnAt = Clock::now();
    ++window.frames;
    // The next frame is told of once this one is taken note of.
    xcb_damage_subtract(m_connection.get(), event.damage, XCB_NONE, XCB_NONE);
}

bool WindowWatch::isManaged() const
{
    return property(m_root, m_managedBy, XCB_ATOM_WINDOW).has_value();
}

void WindowWatch::waitForFrame(const Program& program) const
{
    const auto isDrawn = [&] { return mappedAt(program) && drawnAt(program); };
    waitUntil([&] { return isDrawn() || program.hasEnded(); }, startTakesAtMost);
    if (!isDrawn())
        throw std::runtime_error("a program shows no window");
}

std::optional<WindowWatch::Clock::time_point> WindowWatch::mappedAt(const Program& program) const
{
    const Window* window = windowOf(program);
    return window ? window->mappedAt : std::nullopt;
}

std::optional<WindowWatch::Clock::time_point> WindowWatch::drawnAt(const Program& program) const
{
    const Window* window = windowOf(program);
    return window ? window->drawnAt : std::nullopt;
}

qint64 WindowWatch::framesOf(const Program& program)
{
    // What was drawn by now is told before the answer comes.
    owned(xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()),
                                    nullptr));
    takeEvents();
    const Window* window = windowOf(program);
    return window ? window->frames : 0;
}

std::optional<QRect> WindowWatch::placeOf(const Program& program) const
{
    const xcb_window_t window = m_firstWindows.value(program.pid(), XCB_WINDOW_NONE);
    xcb_connection_t* connection = m_connection.get();
    const auto size =
        owned(xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    const auto place = owned(xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, window, m_root, 0, 0), nullptr));
    if (!size || !place || !isMapped(window))
        return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

const WindowWatch::Window* WindowWatch::windowOf(const Program& program) const
{
    const auto window = m_firstWindows.constFind(program.pid());
    if (window == m_firstWindows.cend())
        return nullptr;
    const auto found = m_windows.constFind(*window);
    return found == m_windows.cend() ? nullptr : &*found;
}

bool WindowWatch::isMapped(xcb_window_t window) const
{
    const auto reply = owned(xcb_get_window_attributes_reply(
        m_connection.get(), xcb_get_window_attributes(m_connection.get(), window), nullptr));
    return reply && reply->map_state != XCB_MAP_STATE_UNMAPPED;
}

std::optional<uint32_t> WindowWatch::property(xcb_window_t window, xcb_atom_t name,
                                              xcb_atom_t type) const
{
    const auto reply = owned(xcb_get_property_reply(
        m_connection.get(), xcb_get_property(m_connection.get(), 0, window, name, type, 0, 1),
        nullptr));
    uint32_t value = 0;
    if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(value))
        return std::nullopt;
    std::memcpy(&value, xcb_get_property_value(reply.get()), sizeof(value));
    return value;
}

xcb_atom_t WindowWatch::atom(const char* name) const
{
    const auto reply = owned(xcb_intern_atom_reply(
        m_connection.get(),
        xcb_intern_atom(m_connection.get(), 0, static_cast<uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}
