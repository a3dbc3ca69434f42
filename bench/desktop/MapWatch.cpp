#include "bench/desktop/MapWatch.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

template <typename Message>
using Owned = std::unique_ptr<Message, decltype(&std::free)>;

constexpr uint8_t typeMask = 0x7F;

} // namespace

MapWatch::MapWatch()
    : m_connection(xcb_connect(nullptr, nullptr), xcb_disconnect)
{
    if (xcb_connection_has_error(m_connection.get()) != 0)
        throw std::runtime_error("no connection to the display");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
    m_managedBy = atom("_NET_SUPPORTING_WM_CHECK");
    m_processOf = atom("_NET_WM_PID");

    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.get(), m_root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_connection.get());
    m_events = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection.get()),
                                                 QSocketNotifier::Read);
    QObject::connect(m_events.get(), &QSocketNotifier::activated, m_events.get(),
                     [this] { takeEvents(); });
}

void MapWatch::takeEvents()
{
    while (
        const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get()), std::free}) {
        const Clock::time_point now = Clock::now();
        const int type = event->response_type & typeMask;
        if (type == XCB_CREATE_NOTIFY) {
            // The window manager puts the window into a frame before it maps it. From then on the
            // root window tells of the frame only, so the window has to be watched itself.
            const auto* created = reinterpret_cast<const xcb_create_notify_event_t*>(event.get());
            const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
            xcb_change_window_attributes(m_connection.get(), created->window, XCB_CW_EVENT_MASK,
                                         &mask);
            // On a busy machine it can have been mapped by now, of which no event would tell.
            if (isMapped(created->window))
                note(created->window, Clock::now());
        } else if (type == XCB_MAP_NOTIFY) {
            note(reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window, now);
        }
    }
}

void MapWatch::note(xcb_window_t window, Clock::time_point mappedAt)
{
    const auto pid = property(window, m_processOf, XCB_ATOM_CARDINAL);
    if (pid && !m_mappedAt.contains(static_cast<pid_t>(*pid)))
        m_mappedAt.insert(static_cast<pid_t>(*pid), mappedAt);
}

bool MapWatch::isMapped(xcb_window_t window) const
{
    const Owned<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(
            m_connection.get(), xcb_get_window_attributes(m_connection.get(), window), nullptr),
        std::free);
    return reply && reply->map_state != XCB_MAP_STATE_UNMAPPED;
}

bool MapWatch::isManaged() const
{
    return property(m_root, m_managedBy, XCB_ATOM_WINDOW).has_value();
}

std::optional<MapWatch::Clock::time_point> MapWatch::mappedAt(pid_t pid) const
{
    const auto found = m_mappedAt.constFind(pid);
    return found == m_mappedAt.cend() ? std::nullopt : std::optional(*found);
}

std::optional<uint32_t> MapWatch::property(xcb_window_t window, xcb_atom_t name,
                                           xcb_atom_t type) const
{
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection.get(),
                               xcb_get_property(m_connection.get(), 0, window, name, type, 0, 1),
                               nullptr),
        std::free);
    uint32_t value = 0;
    if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(value))
        return std::nullopt;
    std::memcpy(&value, xcb_get_property_value(reply.get()), sizeof(value));
    return value;
}

xcb_atom_t MapWatch::atom(const char* name) const
{
    const Owned<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(
            m_connection.get(),
            xcb_intern_atom(m_connection.get(), 0, static_cast<uint16_t>(std::strlen(name)), name),
            nullptr),
        std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}
