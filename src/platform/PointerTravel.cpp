#include "platform/PointerTravel.h"

#include "platform/LayerShell.h"
#include "platform/WaylandSeat.h"

#include <linux/input-event-codes.h>
#include <relative-pointer-unstable-v1.h>
#include <wayland-client.h>

std::unique_ptr<PointerTravel> PointerTravel::watch()
{
    const LayerShell* shell = layerShell();
    if (!shell || !shell->relativePointers || !shell->seat)
        return nullptr;
    return std::unique_ptr<PointerTravel>(new PointerTravel);
}

PointerTravel::PointerTravel()
{
    connect(layerShell()->seat, &WaylandSeat::changed, this, &PointerTravel::listen);
    listen();
}

void PointerTravel::listen()
{
    if (!layerShell()->seat->hasPointer())
        stopListening();
    if (m_pointer)
        return;
    m_pointer = layerShell()->seat->pointer();
    if (!m_pointer)
        return;
    m_relative = zwp_relative_pointer_manager_v1_get_relative_pointer(
        layerShell()->relativePointers, m_pointer);
    static const wl_pointer_listener pointerListener = [] {
        wl_pointer_listener listener{}; // of which the seat's version knows these
        listener.enter = [](void*, wl_pointer*, uint32_t, wl_surface*, wl_fixed_t, wl_fixed_t) {};
        listener.leave = [](void*, wl_pointer*, uint32_t, wl_surface*) {};
        listener.motion = [](void*, wl_pointer*, uint32_t, wl_fixed_t, wl_fixed_t) {};
        listener.button = [](void* self, wl_pointer*, uint32_t, uint32_t, uint32_t button,
                             uint32_t state) {
            auto* travel = static_cast<PointerTravel*>(self);
            if (button != BTN_LEFT)
                return;
            travel->m_isPressed = state == WL_POINTER_BUTTON_STATE_PRESSED;
            if (travel->m_isPressed)
                travel->m_distance = {};
        };
        listener.axis = [](void*, wl_pointer*, uint32_t, uint32_t, wl_fixed_t) {};
        return listener;
    }();
    static constexpr zwp_relative_pointer_v1_listener relativeListener{
        .relative_motion = [](void* self, zwp_relative_pointer_v1*, uint32_t, uint32_t,
                              wl_fixed_t dx, wl_fixed_t dy, wl_fixed_t, wl_fixed_t) {
            auto* travel = static_cast<PointerTravel*>(self);
            if (!travel->m_isPressed)
                return;
            travel->m_distance +=
                QPointF(wl_fixed_to_double(dx), wl_fixed_to_double(dy)) / waylandUnit();
            Q_EMIT travel->travelled();
        }};
    wl_pointer_add_listener(m_pointer, &pointerListener, this);
    zwp_relative_pointer_v1_add_listener(m_relative, &relativeListener, this);
}

/// A mouse that comes back is another one; this one's release will not be told.
void PointerTravel::stopListening()
{
    m_isPressed = false;
    m_distance = {};
    if (!m_pointer)
        return;
    zwp_relative_pointer_v1_destroy(m_relative);
    WaylandSeat::release(m_pointer);
    m_pointer = nullptr;
}

PointerTravel::~PointerTravel()
{
    stopListening();
}
