#pragma once

#include "platform/BusMenuTypes.h"
#include "platform/StatusNotifierTypes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>

/// The tray of a session bus: it takes items, and asks them as a tray does. Everything is read over
/// the bus.
class TrayHost : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit TrayHost(const QString& busAddress);
    ~TrayHost() override;

    /// Comes up, or goes away, as a panel that is started and stopped. It may say at first that it
    /// is not ready for items.
    void start(bool ready = true);
    void becomeReady();
    void stop();

    /// Whether somebody has asked since start() whether it is ready.
    bool wasAsked() const { return m_wasAsked; }

    /// Asks this item from now on, without being its tray.
    void ask(const QString& item) { m_item = item; }

    /// The bus name of the last item that registered since start(); empty before.
    QString item() const { return m_item; }

    /// The bus names of all items that ever registered.
    QSet<QString> items() const { return m_items; }

    /// A property of the item.
    QVariant read(const QString& property);
    QString title() { return read(QStringLiteral("Title")).toString(); }
    template <typename T>
    T readAs(const QString& property)
    {
        return qdbus_cast<T>(read(property));
    }

    /// A click on the item itself, by the name of the call.
    void activate(const QString& call, QPoint at);

    /// Opens the menu as a tray does, and returns its lines.
    BusMenuLayout openMenu();

    /// Opens the menu and clicks the line with this label; false when there is none to see.
    bool clickLine(const QString& label);

    /// A call on the menu, with its answer or its error.
    QDBusMessage callMenu(const QString& method, const QVariantList& arguments);

    /// Signals of the item and its menu since start(), by name.
    QStringList signalsSeen() const { return m_signals; }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

private Q_SLOTS:
    void noteSignal(const QDBusMessage& message) { m_signals.append(message.member()); }

private:
    QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments);

    QDBusConnection m_bus;
    bool m_ready = true;
    bool m_wasAsked = false;
    QString m_item;
    QSet<QString> m_items;
    QStringList m_signals;
};
