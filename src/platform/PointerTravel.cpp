#include "platform/PointerTravel.h"

#include "platform/LayerShell.h"

#include <QGuiApplication>
#include <qpa/qplatformnativeinterface.h>

#include <relative-pointer-unstable-v1.h>

std::unique_ptr<PointerTravel> PointerTravel::begin()
{
    const LayerShell* shell = layerShell();
    if (!shell || !shell->relativePointers)
        return nullptr;
    auto* pointer = static_cast<wl_pointer*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("wl_pointer"));
    if (!pointer)
        return nullptr;
    return std::unique_ptr<PointerTravel>(new PointerTravel(
        zwp_relative_pointer_manager_v1_get_relative_pointer(shell->relativePointers, pointer)));
}

PointerTravel::PointerTravel(zwp_relative_pointer_v1* pointer)
    : m_pointer(pointer)
{
    static constexpr zwp_relative_pointer_v1_listener listener{
        .relative_motion = [](void* self, zwp_relative_pointer_v1*, uint32_t, uint32_t,
                              wl_fixed_t dx, wl_fixed_t dy, wl_fixed_t, wl_fixed_t) {
            auto* travel = static_cast<PointerTravel*>(self);
            travel->m_distance += QPointF(wl_fixed_to_double(dx), wl_fixed_to_double(dy));
            Q_EMIT travel->travelled(travel->m_distance);
        }};
    zwp_relative_pointer_v1_add_listener(pointer, &listener, this);
}

PointerTravel::~PointerTravel()
{
    zwp_relative_pointer_v1_destroy(m_pointer);
}
