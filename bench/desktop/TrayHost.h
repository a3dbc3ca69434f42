#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

/// A tray that does the least a tray does with a text: it reads an item's title whenever the item
/// says that it is new.
class TrayHost : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)

public:
    explicit TrayHost(const QByteArray& busAddress);
    ~TrayHost() override;

    bool isHostRegistered() const { return true; }
    int titlesRead() const { return m_titlesRead; }

    Q_SCRIPTABLE Q_INVOKABLE void RegisterStatusNotifierItem(const QString& service);

private Q_SLOTS:
    void readTitle(const QDBusMessage& announcement);

private:
    QDBusConnection m_bus;
    int m_titlesRead = 0;
};
