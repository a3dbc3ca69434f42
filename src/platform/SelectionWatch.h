#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>

struct xcb_connection_t;

/// Tells when an X11 selection gets an owner, another one or none. Services of a desktop that are
/// found by a selection, as its compositor, may come after the program at login.
class SelectionWatch : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// `selection`: the atom of its name.
    SelectionWatch(xcb_connection_t* connection, uint32_t selection, QObject* parent);

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

Q_SIGNALS:
    void changed();

private:
    uint32_t m_selection;
    int m_event = -1; ///< the number that the server gives to such news; -1: it knows none
};
