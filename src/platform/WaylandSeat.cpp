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

bool WaylandSeat::hasPointer() const
{
    return (m_capabilities & WL_SEAT_CAPABILITY_POINTER) != 0;
}

bool WaylandSeat::hasKeyboard() const
{
    return (m_capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
}

bool WaylandSeat::hasTouch() const
{
    return (m_capabilities & WL_SEAT_CAPABILITY_TOUCH) != 0;
}

wl_pointer* WaylandSeat::pointer() const
{
    return hasPointer() ? wl_seat_get_pointer(m_seat) : nullptr;
}

wl_keyboard* WaylandSeat::keyboard() const
{
    return hasKeyboard() ? wl_seat_get_keyboard(m_seat) : nullptr;
}

wl_touch* WaylandSeat::touch() const
{
    return hasTouch() ? wl_seat_get_touch(m_seat) : nullptr;
}

void WaylandSeat::release(wl_pointer* pointer)
{
    if (wl_pointer_get_version(pointer) >= WL_POINTER_RELEASE_SINCE_VERSION)
        wl_pointer_release(pointer);
    else
        wl_pointer_destroy(pointer);
}

void WaylandSeat::release(wl_keyboard* keyboard)
{
    if (wl_keyboard_get_version(keyboard) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
        wl_keyboard_release(keyboard);
    else
        wl_keyboard_destroy(keyboard);
}

void WaylandSeat::release(wl_touch* touch)
{
    if (wl_touch_get_version(touch) >= WL_TOUCH_RELEASE_SINCE_VERSION)
        wl_touch_release(touch);
    else
        wl_touch_destroy(touch);
}
