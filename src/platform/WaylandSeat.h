#pragma once

#include <QObject>

#include <cstdint>

struct wl_keyboard;
struct wl_pointer;
struct wl_seat;

/// The mouse and the keyboard of a Wayland session, as far as it has them: they come and go.
class WaylandSeat : public QObject
{
    Q_OBJECT

public:
    /// A seat that was bound in its first version, and just now.
    explicit WaylandSeat(wl_seat* seat);

    /// The caller's own. Null while there is none: asking the compositor would end the connection.
    wl_pointer* pointer() const;
    wl_keyboard* keyboard() const;

Q_SIGNALS:
    void changed();

private:
    wl_seat* m_seat;
    uint32_t m_capabilities = 0;
};
