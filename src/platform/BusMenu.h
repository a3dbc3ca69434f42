#pragma once

#include "platform/BusMenuTypes.h"

#include <QDBusContext>
#include <QObject>
#include <QTimer>

#include <chrono>

class QAction;
class QMenu;

/// A QMenu as it stands on the bus, under the interface com.canonical.dbusmenu. Its items are the
/// menu's actions, which stay the same; what can change is their texts and states. They are brought
/// up to date when the tray is about to show the menu, through QMenu::aboutToShow, and only changes
/// are announced.
class BusMenu : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    /// `menu` has all its actions, and outlives this object.
    explicit BusMenu(QMenu& menu);

    /// Brings the texts up to date, unless the tray shows them just now.
    void refreshUnlessOpen();

    uint version() const { return 3; }
    QString status() const { return QStringLiteral("normal"); }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QStringList iconThemePath() const { return {}; }

    Q_SCRIPTABLE Q_INVOKABLE uint GetLayout(int parentId, int recursionDepth,
                                            const QStringList& propertyNames,
                                            BusMenuLayout& layout);
    Q_SCRIPTABLE Q_INVOKABLE QList<BusMenuItem>
    GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames);
    Q_SCRIPTABLE Q_INVOKABLE QDBusVariant GetProperty(int id, const QString& name);
    Q_SCRIPTABLE Q_INVOKABLE void Event(int id, const QString& eventId, const QDBusVariant& data,
                                        uint timestamp);
    Q_SCRIPTABLE Q_INVOKABLE QList<int> EventGroup(const QList<BusMenuEvent>& events);
    Q_SCRIPTABLE Q_INVOKABLE bool AboutToShow(int id);
    Q_SCRIPTABLE Q_INVOKABLE QList<int> AboutToShowGroup(const QList<int>& ids,
                                                         QList<int>& idErrors);

Q_SIGNALS:
    /// The tray shows the menu now, or no longer, as far as it tells. Not all tell of the end: it
    /// is taken for closed a minute after the tray told that it is open, and 15 seconds after the
    /// tray only asked what it says.
    void shown(bool isOpen);

    Q_SCRIPTABLE void ItemsPropertiesUpdated(const QList<BusMenuItem>& updatedProps,
                                             const QList<BusMenuItemKeys>& removedProps);
    Q_SCRIPTABLE void LayoutUpdated(uint revision, int parent);
    Q_SCRIPTABLE void ItemActivationRequested(int id, uint timestamp);

private:
    bool isItem(int id) const { return id >= 0 && id < m_shown.size(); }
    QVariantMap current(int id) const;
    QVariantMap told(int id, const QStringList& propertyNames) const;
    bool handle(int id, const QString& eventId);
    bool refresh();
    bool aboutToShow();
    void takeForOpen(std::chrono::milliseconds duration);

    QMenu& m_menu;
    QTimer m_openAtMost;
    uint m_revision = 1;
    QList<QVariantMap> m_shown; ///< by item, what the tray was told last; item 0 is the menu
};
