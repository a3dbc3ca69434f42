#pragma once

#include <QHash>
#include <QRect>
#include <QSocketNotifier>

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <chrono>
#include <memory>
#include <optional>
#include <sys/types.h>

class Program;

/// Notes when the windows of other programs appear on the X display, and counts the frames drawn
/// into them. The window of a program is the first one that it shows.
class WindowWatch
{
public:
    using Clock = std::chrono::steady_clock;

    WindowWatch();

    /// Whether a window manager has taken the display over.
    bool isManaged() const;

    /// Waits until the program has drawn its first frame; throws when it shows no window.
    void waitForFrame(const Program& program) const;

    /// When the program's window was mapped, and when something was first drawn into it. Both are
    /// there after waitForFrame().
    std::optional<Clock::time_point> mappedAt(const Program& program) const;
    std::optional<Clock::time_point> drawnAt(const Program& program) const;

    /// How often the program has drawn so far. What it draws at once is one frame.
    qint64 framesOf(const Program& program);

    /// Where the program's window is on the screen; nothing while it is hidden.
    std::optional<QRect> placeOf(const Program& program) const;

private:
    struct Window
    {
        std::optional<Clock::time_point> mappedAt;
        std::optional<Clock::time_point> drawnAt;
        qint64 frames = 0;
    };

    void takeEvents();
    void take(const xcb_generic_event_t& event);
    void watch(xcb_window_t window);
    void noteMapped(xcb_window_t window);
    void noteFrame(const xcb_damage_notify_event_t& event);
    const Window* windowOf(const Program& program) const;
    bool isMapped(xcb_window_t window) const;
    std::optional<uint32_t> property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const;
    xcb_atom_t atom(const char* name) const;

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_atom_t m_managedBy = XCB_ATOM_NONE;
    xcb_atom_t m_processOf = XCB_ATOM_NONE;
    uint8_t m_damageEvent = 0;
    QHash<xcb_window_t, Window> m_windows;
    QHash<pid_t, xcb_window_t> m_firstWindows; ///< of the programs
    std::unique_ptr<QSocketNotifier> m_events;
};
