#pragma once

#include "platform/StatusNotifierItem.h"

#include <QDBusConnection>
#include <QImage>
#include <QObject>
#include <QTemporaryDir>

#include <memory>
#include <optional>

class BusMenu;
class QMenu;
class XembedTray;

/// The program's place in the tray: a title, an icon and a menu. It offers itself to the tray of
/// the session bus whenever one comes up, and to X11 trays while there is none. Without a bus and
/// without a tray it does nothing.
class StatusItem : public QObject
{
    Q_OBJECT

public:
    /// `menu` has all its actions, and outlives this object. Nothing is shown before start().
    explicit StatusItem(QMenu& menu);
    ~StatusItem() override;

    /// Begins to look for a tray. Returns at once.
    void start();

    QString title() const { return m_item.title(); }
    void setTitle(const QString& title);

    /// The icon, in all the sizes that it is drawn in, smallest first.
    void setIcon(const QList<QImage>& sizes);

private:
    void useBus(QDBusConnection bus);
    void useTrayOf(const QString& watcherOwner);
    void registerItem();
    void useXembed();
    QString writeIconFile();

    QMenu& m_menu;
    StatusNotifierItem m_item;
    std::unique_ptr<BusMenu> m_busMenu;
    std::unique_ptr<XembedTray> m_xembed;
    std::optional<QDBusConnection> m_bus;
    QList<QImage> m_icon;
    QTemporaryDir m_iconFolder;
    int m_iconFiles = 0;
};
