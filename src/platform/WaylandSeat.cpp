#include "platform/WaylandSeat.h"

#include <wayland-client.h>

WaylandSeat::WaylandSeat(wl_seat* seat)
    : m_seat(seat)
{
    static constexpr wl_seat_listener listener{
        .capabilities =
            [](void* self, wl_seat*, uint32_t capabilities) {
                auto* told = static_cast<WaylandSeat*>(self);
                told->m_capabilities = capabilities;
                Q_EMIT told->changed();
            },
        .name = [](void*, wl_seat*, const char*) {},
    };
    wl_seat_add_listener(seat, &listener, this);
}

wl_pointer* WaylandSeat::pointer() const
{
    return (m_capabilities & WL_SEAT_CAPABILITY_POINTER) != 0 ? wl_seat_get_pointer(m_seat)
                                                              : nullptr;
}

wl_keyboard* WaylandSeat::keyboard() const
{
    return (m_capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0 ? wl_seat_get_keyboard(m_seat)
                                                               : nullptr;
}
