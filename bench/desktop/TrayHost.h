#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

/// A tray that does the least a tray does with a text: it reads an item's title whenever the item
/// says that it is new, and when the item comes.
class TrayHost : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)

public:
    explicit TrayHost(const QByteArray& busAddress);
    ~TrayHost() override;

    /// Leaves the bus to programs without a tray, or comes back. Programs must not be running.
    void setPresent(bool present);
    bool isPresent() const { return m_present; }

    bool isHostRegistered() const { return true; }
    int titlesRead() const { return m_titlesRead; }

    /// The last title read of the item that came last; empty before the first one.
    QString title() const { return m_title; }

    Q_SCRIPTABLE Q_INVOKABLE void RegisterStatusNotifierItem(const QString& service);

private Q_SLOTS:
    void readTitle(const QDBusMessage& announcement);

private:
    void readTitleOf(const QString& service);

    QDBusConnection m_bus;
    bool m_present = false;
    int m_titlesRead = 0;
    QString m_title;
};
