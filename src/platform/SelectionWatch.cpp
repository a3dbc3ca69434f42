#include "platform/SelectionWatch.h"

#include "platform/X11.h"

#include <QGuiApplication>

#include <xcb/xfixes.h>

SelectionWatch::SelectionWatch(xcb_connection_t* connection, uint32_t selection, QObject* parent)
    : QObject(parent)
    , m_selection(selection)
{
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return;
    m_event = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_xfixes_select_selection_input(connection, rootOf(connection), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    qGuiApp->installNativeEventFilter(this);
}

bool SelectionWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* event = static_cast<const xcb_xfixes_selection_notify_event_t*>(message);
    if ((event->response_type & 0x7F) == m_event && event->selection == m_selection)
        Q_EMIT changed();
    return false;
}
