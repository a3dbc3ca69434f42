#pragma once

#include <QHash>
#include <QSocketNotifier>

#include <xcb/xcb.h>

#include <chrono>
#include <memory>
#include <optional>
#include <sys/types.h>

/// Notes when the windows of other programs appear on the X display.
class MapWatch
{
public:
    using Clock = std::chrono::steady_clock;

    MapWatch();

    /// Whether a window manager has taken the display over.
    bool isManaged() const;

    /// When the first window of a process was mapped, if it was.
    std::optional<Clock::time_point> mappedAt(pid_t pid) const;

private:
    void takeEvents();
    void note(xcb_window_t window, Clock::time_point mappedAt);
    bool isMapped(xcb_window_t window) const;
    std::optional<uint32_t> property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const;
    xcb_atom_t atom(const char* name) const;

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_atom_t m_managedBy = XCB_ATOM_NONE;
    xcb_atom_t m_processOf = XCB_ATOM_NONE;
    QHash<pid_t, Clock::time_point> m_mappedAt;
    std::unique_ptr<QSocketNotifier> m_events;
};
