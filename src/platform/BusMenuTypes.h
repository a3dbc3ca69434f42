#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QStringList>
#include <QVariantMap>

/// The types of the interface com.canonical.dbusmenu. Item 0 is the menu itself.

/// Properties of one item.
struct BusMenuItem
{
    int id = 0;
    QVariantMap properties;
};

/// Names of properties that one item no longer has.
struct BusMenuItemKeys
{
    int id = 0;
    QStringList properties;
};

/// An item with its properties and the items below it.
struct BusMenuLayout
{
    int id = 0;
    QVariantMap properties;
    QList<BusMenuLayout> children;
};

/// What happened to an item: "clicked", "opened", "closed" or "hovered".
struct BusMenuEvent
{
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

/// A key with its modifiers, as {"Control", "q"}; the bus wants a list of such presses.
using BusMenuShortcut = QList<QStringList>;

Q_DECLARE_METATYPE(BusMenuItem)
Q_DECLARE_METATYPE(BusMenuItemKeys)
Q_DECLARE_METATYPE(BusMenuLayout)
Q_DECLARE_METATYPE(BusMenuEvent)

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuItem& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuItem& item);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuItemKeys& keys);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuItemKeys& keys);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuEvent& event);

/// Makes the types above known to the bus; call it before the first use.
void registerBusMenuTypes();
