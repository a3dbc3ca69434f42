#pragma once

#include "platform/StatusNotifierItem.h"

#include <QDBusConnection>
#include <QImage>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class BusMenu;
class QMenu;
class SessionBus;
class XembedTray;

/// The program's place in the tray: a title, an icon and a menu. It offers itself to the tray of
/// the session bus whenever one comes up, and to X11 trays while there is none. Without a bus and
/// without a tray it does nothing.
class StatusItem : public QObject
{
    Q_OBJECT

public:
    /// Draws the icon as it should look now, in all the sizes that trays use, smallest first.
    using DrawIcon = std::function<QList<QImage>()>;

    /// `menu` has all its actions, and outlives this object. Nothing is shown before start(), and
    /// `drawIcon` is called only while there is a tray.
    StatusItem(QMenu& menu, DrawIcon drawIcon);
    ~StatusItem() override;

    /// Begins to look for a tray, once `sessionBus` has answered. Returns at once. Called once.
    void start(SessionBus& sessionBus);

    QString title() const { return m_item.title(); }
    void setTitle(const QString& title);

    /// To be called when the icon would look different.
    void redrawIcon();

    /// To be called when the menu would say something else. Some trays measure it before they ask
    /// what it says, so they are told before it opens; while it is open it stays as it is.
    void refreshMenu();

private:
    void useBus(QDBusConnection bus);
    void useTrayOf(const QString& watcherOwner);
    void registerWhenReady();
    void registerItem();
    void useXembed();
    QString writeIconFile(const QImage& icon);
    void removeIconFile();

private Q_SLOTS:
    void busIsGone();
    void trayIsReady();

private:
    QMenu& m_menu;
    StatusNotifierItem m_item;
    std::unique_ptr<BusMenu> m_busMenu;
    std::unique_ptr<XembedTray> m_xembed;
    std::optional<QDBusConnection> m_bus;
    bool m_busHasTray = false;
    QTimer m_untilReady; ///< runs while the tray is waited for
    QTimer m_untilGone;  ///< runs while one that has gone may come back
    DrawIcon m_drawIcon;
    QList<QImage> m_icon; ///< as it was last given out
    int m_iconFiles = 0;
};
