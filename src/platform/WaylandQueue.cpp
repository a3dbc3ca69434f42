#include "platform/WaylandQueue.h"

#include <wayland-client.h>

WaylandQueue::WaylandQueue(wl_display* display)
    : m_display(display)
    , m_queue(wl_display_create_queue(display))
{}

WaylandQueue::~WaylandQueue()
{
    wl_event_queue_destroy(m_queue);
}

void WaylandQueue::DestroyWrapper::operator()(void* wrapper) const
{
    wl_proxy_wrapper_destroy(wrapper);
}

void* WaylandQueue::makeWrapper(void* proxy)
{
    void* wrapper = wl_proxy_create_wrapper(proxy);
    wl_proxy_set_queue(static_cast<wl_proxy*>(wrapper), m_queue);
    return wrapper;
}

void WaylandQueue::roundTrip()
{
    wl_display_roundtrip_queue(m_display, m_queue);
}

void WaylandQueue::release(void* proxy)
{
    wl_proxy_set_queue(static_cast<wl_proxy*>(proxy), nullptr);
    // One may have come since the last round trip.
    wl_display_dispatch_queue_pending(m_display, m_queue);
}
