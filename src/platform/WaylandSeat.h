#pragma once

#include <QObject>

#include <cstdint>

struct wl_keyboard;
struct wl_pointer;
struct wl_seat;
struct wl_touch;

/// The mouse, the keyboard and the touch screen of a Wayland session, as far as it has them: they
/// come and go.
class WaylandSeat : public QObject
{
    Q_OBJECT

public:
    /// The newest version of the interface that may be bound for this.
    static constexpr uint32_t newestVersion = 5;

    /// A seat that was bound just now.
    explicit WaylandSeat(wl_seat* seat);

    bool hasPointer() const;
    bool hasKeyboard() const;
    bool hasTouch() const;

    /// The caller's own, to be given back with release(). Null while there is none: asking the
    /// compositor would end the connection.
    wl_pointer* pointer() const;
    wl_keyboard* keyboard() const;
    wl_touch* touch() const;
    static void release(wl_pointer* pointer);
    static void release(wl_keyboard* keyboard);
    static void release(wl_touch* touch);

Q_SIGNALS:
    void changed();

private:
    wl_seat* m_seat;
    uint32_t m_capabilities = 0;
};
