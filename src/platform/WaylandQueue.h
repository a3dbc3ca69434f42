#pragma once

#include <memory>

struct wl_display;
struct wl_event_queue;
struct wl_proxy;

/// An event queue of its own for a question to the compositor. Its answers are handled while all
/// other events wait: Qt must not hear of a window before it is ready to.
class WaylandQueue
{
public:
    explicit WaylandQueue(wl_display* display);
    ~WaylandQueue();

    WaylandQueue(const WaylandQueue&) = delete;
    WaylandQueue& operator=(const WaylandQueue&) = delete;

    struct DestroyWrapper
    {
        void operator()(void* wrapper) const;
    };
    template <typename Proxy>
    using Wrapper = std::unique_ptr<Proxy, DestroyWrapper>;

    /// Stands for `proxy` in requests: what they make has its events in this queue.
    template <typename Proxy>
    Wrapper<Proxy> wrap(Proxy* proxy)
    {
        return Wrapper<Proxy>(static_cast<Proxy*>(makeWrapper(proxy)));
    }

    /// Waits until the compositor has done all that it was asked for, and handles the events of
    /// this queue.
    void roundTrip();

    /// From now on the events of `proxy` are handled with those of the application.
    void release(void* proxy);

private:
    void* makeWrapper(void* proxy);

    wl_display* m_display;
    wl_event_queue* m_queue;
};
