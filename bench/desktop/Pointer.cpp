#include "bench/desktop/Pointer.h"

#include <xcb/xtest.h>

#include <stdexcept>

Pointer::Pointer()
    : m_connection(xcb_connect(nullptr, nullptr), xcb_disconnect)
{
    if (xcb_connection_has_error(m_connection.get()) != 0)
        throw std::runtime_error("no connection to the display");
}

void Pointer::moveTo(QPoint at)
{
    send(XCB_MOTION_NOTIFY, 0, at);
}

void Pointer::click()
{
    send(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1, {});
    send(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1, {});
}

void Pointer::send(uint8_t type, uint8_t detail, QPoint at)
{
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    xcb_test_fake_input(m_connection.get(), type, detail, XCB_CURRENT_TIME, screen->root,
                        static_cast<int16_t>(at.x()), static_cast<int16_t>(at.y()), 0);
    xcb_flush(m_connection.get());
}
