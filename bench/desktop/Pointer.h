#pragma once

#include <QPoint>

#include <xcb/xcb.h>

#include <memory>

/// The mouse of the X display.
class Pointer
{
public:
    Pointer();

    void moveTo(QPoint at);

    /// Clicks where it is.
    void click();

    /// Goes where nothing is.
    void goAway() { moveTo({0, 1079}); }

private:
    void send(uint8_t type, uint8_t detail, QPoint at);

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
};
