#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>

struct xcb_connection_t;

/// Tells when an X11 compositor comes or goes: at login it may come after the program.
class CompositorWatch : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// `compositor`: the selection that a compositor owns, on the screen with this root window.
    CompositorWatch(xcb_connection_t* connection, uint32_t root, uint32_t compositor,
                    QObject* parent);

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

Q_SIGNALS:
    void changed();

private:
    uint32_t m_compositor;
    int m_event = -1; ///< the number that the server gives to such news; -1: it knows none
};
