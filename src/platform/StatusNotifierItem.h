#pragma once

#include "platform/StatusNotifierTypes.h"

#include <QDBusObjectPath>
#include <QImage>
#include <QObject>
#include <QPoint>

/// The tray item as it stands on the bus, under the interface org.kde.StatusNotifierItem.
class StatusNotifierItem : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ announcedTitle)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconThemePath READ none)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(IconPixmaps IconPixmap READ iconPixmaps)
    Q_PROPERTY(QString IconAccessibleDesc READ none)
    Q_PROPERTY(QString OverlayIconName READ none)
    Q_PROPERTY(IconPixmaps OverlayIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionIconName READ none)
    Q_PROPERTY(IconPixmaps AttentionIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionMovieName READ none)
    Q_PROPERTY(StatusToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(QString XAyatanaLabel READ title)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)

public:
    static constexpr auto objectPath = "/StatusNotifierItem";
    static constexpr auto menuPath = "/MenuBar";

    using QObject::QObject;

    /// The text of the item and its label. Trays make it the tool tip too.
    QString title() const { return m_title; }
    void setTitle(const QString& title);

    /// While the tray shows the menu, a new title would have some show its tool tip over the menu:
    /// it is announced afterwards. The label is announced all the same.
    void setMenuOpen(bool open);

    /// The icon in all the sizes that it is drawn in, and the same as a file for trays that take
    /// icons by name only (an empty path for none). The caller sees to it that it looks different.
    void setIcon(const QList<QImage>& sizes, const QString& file);

    QString announcedTitle() const { return m_announcedTitle; }
    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("vantora"); }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString iconName() const { return m_iconFile; }
    IconPixmaps iconPixmaps() const { return m_iconPixmaps; }
    /// None of its own: a text of its own would have to be announced each second, as the title is.
    StatusToolTip toolTip() const { return {}; }
    bool itemIsMenu() const { return true; }
    QDBusObjectPath menu() const { return QDBusObjectPath(QLatin1String(menuPath)); }
    /// The widest usual title: a tray that shows text keeps room for it, so that nothing jumps.
    QString labelGuide() const { return QStringLiteral("\U0001FA91 88:88"); }
    QString none() const { return {}; }
    IconPixmaps noPixmaps() const { return {}; }

    // The calls of the tray. Which click makes which call differs from tray to tray; for a menu
    // item all of them mean the menu.
    Q_SCRIPTABLE Q_INVOKABLE void Activate(int x, int y);
    Q_SCRIPTABLE Q_INVOKABLE void SecondaryActivate(int x, int y);
    Q_SCRIPTABLE Q_INVOKABLE void ContextMenu(int x, int y);
    Q_SCRIPTABLE Q_INVOKABLE void Scroll(int delta, const QString& orientation);

Q_SIGNALS:
    /// The user asks for the menu at a place of the screen; (0, 0) when the tray does not know.
    void menuRequested(QPoint at);

    Q_SCRIPTABLE void NewTitle();
    Q_SCRIPTABLE void NewIcon();
    Q_SCRIPTABLE void XAyatanaNewLabel(const QString& label, const QString& guide);

private:
    void announceTitle();

    QString m_title;
    QString m_announcedTitle;
    bool m_menuIsOpen = false;
    IconPixmaps m_iconPixmaps;
    QString m_iconFile;
};
