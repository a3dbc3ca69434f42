#include "platform/PointerTravel.h"

#include "platform/LayerShell.h"
#include "platform/LayerSurface.h"
#include "platform/WaylandSeat.h"

#include <linux/input-event-codes.h>
#include <relative-pointer-unstable-v1.h>
#include <utility>
#include <wayland-client.h>

namespace {

QPointF pointFrom(wl_fixed_t x, wl_fixed_t y)
{
    return QPointF(wl_fixed_to_double(x), wl_fixed_to_double(y)) / waylandUnit();
}

} // namespace

std::unique_ptr<PointerTravel> PointerTravel::watch(QWidget& window)
{
    LayerSurface* surface = LayerSurface::of(window);
    if (!surface || !layerShell()->seat)
        return nullptr;
    return std::unique_ptr<PointerTravel>(new PointerTravel(*surface));
}

PointerTravel::PointerTravel(LayerSurface& surface)
    : m_surface(surface)
{
    connect(layerShell()->seat, &WaylandSeat::changed, this, &PointerTravel::listen);
    listen();
}

PointerTravel::~PointerTravel()
{
    stopListeningToPointer();
    stopListeningToFingers();
}

void PointerTravel::listen()
{
    const WaylandSeat& seat = *layerShell()->seat;
    if (!seat.hasPointer())
        stopListeningToPointer();
    else if (!m_pointer)
        listenToPointer();
    if (!seat.hasTouch())
        stopListeningToFingers();
    else if (!m_touch)
        listenToFingers();
}

/// Events count places from where the surface was when they were sent.
QPointF PointerTravel::placeOnScreen(QPointF inSurface) const
{
    return m_surface.confirmedTopLeft() + inSurface;
}

void PointerTravel::beginAt(QPointF inSurface)
{
    m_from = placeOnScreen(inSurface);
    m_distance = {};
}

void PointerTravel::isAt(QPointF inSurface)
{
    m_distance = placeOnScreen(inSurface) - m_from;
    Q_EMIT travelled();
}

void PointerTravel::listenToPointer()
{
    const LayerShell& shell = *layerShell();
    m_pointer = shell.seat->pointer();
    static const wl_pointer_listener pointerListener = [] {
        wl_pointer_listener listener{}; // of which the seat's version knows these
        listener.enter = [](void* self, wl_pointer*, uint32_t, wl_surface* surface, wl_fixed_t x,
                            wl_fixed_t y) {
            auto* travel = static_cast<PointerTravel*>(self);
            travel->m_isInside = surface && surface == travel->m_surface.surface();
            travel->m_pointerAt = pointFrom(x, y);
        };
        listener.leave = [](void* self, wl_pointer*, uint32_t, wl_surface*) {
            static_cast<PointerTravel*>(self)->m_isInside = false;
        };
        listener.motion = [](void* self, wl_pointer*, uint32_t, wl_fixed_t x, wl_fixed_t y) {
            auto* travel = static_cast<PointerTravel*>(self);
            travel->m_pointerAt = pointFrom(x, y);
            travel->m_hasMoved = true;
        };
        listener.button = [](void* self, wl_pointer*, uint32_t, uint32_t, uint32_t button,
                             uint32_t state) {
            auto* travel = static_cast<PointerTravel*>(self);
            if (button != BTN_LEFT)
                return;
            travel->m_isPressed = state == WL_POINTER_BUTTON_STATE_PRESSED;
            travel->m_isRelative = false;
            if (travel->m_isPressed)
                travel->beginAt(travel->m_pointerAt);
        };
        listener.axis = [](void*, wl_pointer*, uint32_t, uint32_t, wl_fixed_t) {};
        listener.frame = [](void* self, wl_pointer*) {
            auto* travel = static_cast<PointerTravel*>(self);
            const bool hasMoved = std::exchange(travel->m_hasMoved, false);
            // Of tablets and the mice of virtual machines nothing else is told. Of others too, when
            // it is the surface that has moved.
            if (hasMoved && travel->m_isPressed && !travel->m_isRelative)
                travel->isAt(travel->m_pointerAt);
        };
        listener.axis_source = [](void*, wl_pointer*, uint32_t) {};
        listener.axis_stop = [](void*, wl_pointer*, uint32_t, uint32_t) {};
        listener.axis_discrete = [](void*, wl_pointer*, uint32_t, int32_t) {};
        return listener;
    }();
    wl_pointer_add_listener(m_pointer, &pointerListener, this);
    if (!shell.relativePointers)
        return;
    m_relative =
        zwp_relative_pointer_manager_v1_get_relative_pointer(shell.relativePointers, m_pointer);
    static constexpr zwp_relative_pointer_v1_listener relativeListener{
        .relative_motion = [](void* self, zwp_relative_pointer_v1*, uint32_t, uint32_t,
                              wl_fixed_t dx, wl_fixed_t dy, wl_fixed_t, wl_fixed_t) {
            auto* travel = static_cast<PointerTravel*>(self);
            if (!travel->m_isPressed)
                return;
            travel->m_isRelative = true;
            travel->m_distance += pointFrom(dx, dy);
            Q_EMIT travel->travelled();
        }};
    zwp_relative_pointer_v1_add_listener(m_relative, &relativeListener, this);
}

void PointerTravel::listenToFingers()
{
    m_touch = layerShell()->seat->touch();
    static const wl_touch_listener listener = [] {
        wl_touch_listener touch{}; // of which the seat's version knows these
        touch.down = [](void* self, wl_touch*, uint32_t, uint32_t, wl_surface* surface, int32_t id,
                        wl_fixed_t x, wl_fixed_t y) {
            auto* travel = static_cast<PointerTravel*>(self);
            if (travel->m_finger != noFinger || surface != travel->m_surface.surface())
                return;
            travel->m_finger = id;
            travel->beginAt(pointFrom(x, y));
        };
        touch.up = [](void* self, wl_touch*, uint32_t, uint32_t, int32_t id) {
            auto* travel = static_cast<PointerTravel*>(self);
            if (id == travel->m_finger)
                travel->m_finger = noFinger;
        };
        touch.motion = [](void* self, wl_touch*, uint32_t, int32_t id, wl_fixed_t x, wl_fixed_t y) {
            auto* travel = static_cast<PointerTravel*>(self);
            if (id == travel->m_finger)
                travel->isAt(pointFrom(x, y));
        };
        touch.frame = [](void*, wl_touch*) {};
        touch.cancel = [](void* self, wl_touch*) {
            static_cast<PointerTravel*>(self)->m_finger = noFinger;
        };
        return touch;
    }();
    wl_touch_add_listener(m_touch, &listener, this);
}

/// A mouse that comes back is another one; this one's release will not be told.
void PointerTravel::stopListeningToPointer()
{
    if (!m_pointer)
        return;
    m_isPressed = false;
    m_isInside = false;
    m_distance = {};
    if (m_relative)
        zwp_relative_pointer_v1_destroy(std::exchange(m_relative, nullptr));
    WaylandSeat::release(std::exchange(m_pointer, nullptr));
}

void PointerTravel::stopListeningToFingers()
{
    m_finger = noFinger;
    if (m_touch)
        WaylandSeat::release(std::exchange(m_touch, nullptr));
}
