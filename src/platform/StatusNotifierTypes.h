#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QString>

/// One size of an icon as it travels to the tray: ARGB32 in network byte order, row by row.
struct IconPixmap
{
    int width = 0;
    int height = 0;
    QByteArray argb;

    bool operator==(const IconPixmap&) const = default;
};
using IconPixmaps = QList<IconPixmap>;

/// A tool tip as the tray takes it.
struct StatusToolTip
{
    QString iconName;
    IconPixmaps iconPixmaps;
    QString title;
    QString text;
};

Q_DECLARE_METATYPE(IconPixmap)
Q_DECLARE_METATYPE(StatusToolTip)

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip);

/// Makes the types above known to the bus; call it before the first use.
void registerStatusNotifierTypes();
