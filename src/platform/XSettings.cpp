#include "platform/XSettings.h"

#include "platform/SelectionWatch.h"
#include "platform/X11.h"

#include <QGuiApplication>
#include <QtEndian>

#include <array>
#include <cstring>

namespace {

/// Reads from the front of the data, in its byte order. Once there is too little left, all that it
/// gives is zero and empty.
class Reader
{
public:
    Reader(QByteArrayView data, bool isBigEndian)
        : m_data(data)
        , m_isBigEndian(isBigEndian)
    {}

    qsizetype left() const { return m_data.size(); }

    template <typename Number>
    Number number()
    {
        const QByteArrayView bytes = text(sizeof(Number));
        if (bytes.isEmpty())
            return 0;
        return m_isBigEndian ? qFromBigEndian<Number>(bytes.data())
                             : qFromLittleEndian<Number>(bytes.data());
    }

    QByteArrayView text(qsizetype size)
    {
        if (size > m_data.size()) {
            m_data = {};
            return {};
        }
        const QByteArrayView front = m_data.first(size);
        m_data = m_data.sliced(size);
        return front;
    }

    /// Texts are filled up to a multiple of four bytes.
    QByteArrayView filledText(qsizetype size)
    {
        const QByteArrayView front = text(size);
        text((4 - size % 4) % 4);
        return front;
    }

private:
    QByteArrayView m_data;
    bool m_isBigEndian;
};

enum Kind : quint8 { integerKind = 0, textKind = 1, colorKind = 2 };

} // namespace

std::optional<int32_t> integerSetting(QByteArrayView data, QByteArrayView name)
{
    Reader reader(data, !data.isEmpty() && data.front() == 1);
    reader.text(8); // the byte order, three unused bytes, and the number of the last change
    for (auto settings = reader.number<quint32>(); settings > 0 && reader.left() > 0; --settings) {
        const auto kind = reader.number<quint8>();
        reader.text(1);
        const auto nameSize = reader.number<quint16>();
        const bool isIt = reader.filledText(nameSize) == name;
        reader.text(4); // the number of its last change
        switch (kind) {
        case integerKind:
            if (isIt && reader.left() >= 4)
                return reader.number<qint32>();
            reader.text(4);
            break;
        case textKind:
            reader.filledText(reader.number<quint32>());
            break;
        case colorKind:
            reader.text(8);
            break;
        default:
            return {};
        }
    }
    return {};
}

XSettings::XSettings(QObject* parent)
    : QObject(parent)
{
    xcb_connection_t* connection = x11Connection();
    if (!connection)
        return;
    const auto ask = [connection](const char* name) {
        return xcb_intern_atom(connection, 0, static_cast<uint16_t>(std::strlen(name)), name);
    };
    const auto answered = [connection](xcb_intern_atom_cookie_t cookie) {
        const auto reply = owned(xcb_intern_atom_reply(connection, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    };
    const auto selection = ask("_XSETTINGS_S0");
    const auto property = ask("_XSETTINGS_SETTINGS");
    m_selection = answered(selection);
    m_property = answered(property);
    qGuiApp->installNativeEventFilter(this);
    connect(new SelectionWatch(connection, m_selection, this), &SelectionWatch::changed, this,
            &XSettings::useManager);
    useManager();
}

void XSettings::useManager()
{
    xcb_connection_t* connection = x11Connection();
    m_manager = ownerOf(connection, m_selection);
    if (m_manager != XCB_WINDOW_NONE) {
        // It may be gone already, which is no error to be told.
        const uint32_t wanted = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        const auto cookie =
            xcb_change_window_attributes_checked(connection, m_manager, XCB_CW_EVENT_MASK, &wanted);
        xcb_discard_reply(connection, cookie.sequence);
    }
    read();
}

void XSettings::read()
{
    constexpr uint32_t atMost = 64 * 1024; // in units of four bytes; usual are some hundred
    m_data.clear();
    if (m_manager != XCB_WINDOW_NONE) {
        xcb_connection_t* connection = x11Connection();
        const auto reply = owned(xcb_get_property_reply(
            connection,
            xcb_get_property(connection, 0, m_manager, m_property, m_property, 0, atMost),
            nullptr));
        if (reply) {
            m_data = QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                xcb_get_property_value_length(reply.get()));
        }
    }
    Q_EMIT changed();
}

bool XSettings::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* event = static_cast<const xcb_property_notify_event_t*>(message);
    if ((event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY && event->window == m_manager &&
        event->atom == m_property)
        read();
    return false;
}
