#include "platform/MenuGrab.h"

#include "platform/X11.h"

#include <QMenu>
#include <QWindow>

#include <chrono>

using namespace std::chrono_literals;

MenuGrab::MenuGrab(QMenu& menu)
    : QObject(&menu)
    , m_menu(menu)
{
    if (!x11Connection())
        return;
    m_again.setInterval(50ms);
    connect(&m_again, &QTimer::timeout, this, &MenuGrab::grab);
    connect(&menu, &QMenu::aboutToShow, &m_again, qOverload<>(&QTimer::start));
    connect(&menu, &QMenu::aboutToHide, &m_again, &QTimer::stop);
}

void MenuGrab::grab()
{
    QWindow* window = m_menu.windowHandle();
    if (!window || !window->isExposed())
        return;
    // Qt takes every answer of the server for a yes. Its request comes right after one of ours, so
    // it succeeds when ours does.
    xcb_connection_t* connection = x11Connection();
    const auto ours = xcb_grab_pointer(connection, 0, static_cast<xcb_window_t>(window->winId()),
                                       XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                                       XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    window->setMouseGrabEnabled(true);
    const auto reply = owned(xcb_grab_pointer_reply(connection, ours, nullptr));
    if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS)
        m_again.stop();
}
