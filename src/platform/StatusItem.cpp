#include "platform/StatusItem.h"

#include "platform/BusMenu.h"
#include "platform/BusMenuTypes.h"
#include "platform/PngFile.h"
#include "platform/SessionBus.h"
#include "platform/XembedTray.h"

#include <QCursor>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>

#include <chrono>
#include <utility>

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

constexpr std::chrono::milliseconds trayIsReadyWithin{1000};

/// A tray that restarts is gone for no longer than this.
constexpr std::chrono::milliseconds trayComesBackWithin{3000};

QString itemService()
{
    return QStringLiteral("org.kde.StatusNotifierItem-%1-1")
        .arg(QCoreApplication::applicationPid());
}

/// The program's id where it runs in a Flatpak's sandbox; empty elsewhere.
QString sandboxId()
{
    return qEnvironmentVariable("FLATPAK_ID");
}

/// Where the icon's file is made, in the user's own memory-backed folder; empty without one.
QString iconFolder()
{
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (runtimeFolder.isEmpty())
        return {};
    // From a sandbox the desktop sees nothing else by the same path.
    const QString sandbox = sandboxId();
    return runtimeFolder +
           (sandbox.isEmpty() ? QStringLiteral("/vantora") : QStringLiteral("/app/") + sandbox);
}

QDBusMessage busCall(const QString& method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace

StatusItem::StatusItem(QMenu& menu, DrawIcon drawIcon)
    : m_menu(menu)
    , m_drawIcon(std::move(drawIcon))
{
    m_item.blockSignals(true); // until somebody listens
    m_untilReady.setSingleShot(true);
    m_untilReady.setInterval(trayIsReadyWithin);
    connect(&m_untilReady, &QTimer::timeout, this, &StatusItem::registerItem);
    m_untilGone.setSingleShot(true);
    m_untilGone.setInterval(trayComesBackWithin);
    connect(&m_untilGone, &QTimer::timeout, this, &StatusItem::useXembed);
    connect(&m_item, &StatusNotifierItem::menuRequested, this,
            [this](QPoint at) { m_menu.popup(at.isNull() ? QCursor::pos() : at); });
}

StatusItem::~StatusItem()
{
    removeIconFile();
    if (!iconFolder().isEmpty())
        QDir().rmdir(iconFolder());
}

void StatusItem::start(SessionBus& sessionBus)
{
    sessionBus.follow(this, [this](const QDBusConnection& bus) {
        if (bus.isConnected())
            useBus(bus);
        else
            useXembed();
    });
}

void StatusItem::useBus(QDBusConnection bus)
{
    m_bus = bus;
    registerStatusNotifierTypes();
    registerBusMenuTypes();
    m_busMenu = std::make_unique<BusMenu>(m_menu);
    connect(m_busMenu.get(), &BusMenu::shown, &m_item, &StatusNotifierItem::setMenuOpen);
    constexpr auto exported = QDBusConnection::ExportAllProperties |
                              QDBusConnection::ExportScriptableInvokables |
                              QDBusConnection::ExportScriptableSignals;
    bus.registerObject(QLatin1String(StatusNotifierItem::objectPath), &m_item, exported);
    bus.registerObject(QLatin1String(StatusNotifierItem::menuPath), m_busMenu.get(), exported);

    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(busIsGone()));

    bus.connect(QString(), watcherPath, watcherService,
                QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(trayIsReady()));

    // No call to the watcher waits for its answer: a panel may be asking us something just then.
    auto* watcher = new QDBusServiceWatcher(watcherService, bus,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { useTrayOf(owner); });

    QDBusMessage ownName = busCall(QStringLiteral("RequestName"));
    ownName << itemService() << 0U;
    bus.asyncCall(ownName);

    QDBusMessage watcherOwner = busCall(QStringLiteral("GetNameOwner"));
    watcherOwner << watcherService;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(watcherOwner), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QString> owner = *answer;
        useTrayOf(owner.isError() ? QString() : owner.value());
        answer->deleteLater();
    });
}

void StatusItem::useTrayOf(const QString& watcherOwner)
{
    const bool hadTray = std::exchange(m_busHasTray, !watcherOwner.isEmpty());
    m_item.blockSignals(!m_busHasTray);
    m_untilReady.stop();
    m_untilGone.stop();
    if (!m_busHasTray) {
        // Qt's item for X11 trays offers itself on the bus if a tray is there by then: there would
        // be two.
        if (hadTray)
            m_untilGone.start();
        else
            useXembed();
        return;
    }
    m_xembed.reset();
    redrawIcon();
    registerWhenReady();
}

/// The panel takes the watcher's name before it listens for items, and some miss one in between.
void StatusItem::registerWhenReady()
{
    m_untilReady.start();
    QDBusMessage isReady = QDBusMessage::createMethodCall(
        watcherService, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    isReady << watcherService << QStringLiteral("IsStatusNotifierHostRegistered");
    auto* answer = new QDBusPendingCallWatcher(m_bus->asyncCall(isReady), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> ready = *answer;
        if (ready.isError() || ready.value().variant().toBool())
            trayIsReady();
        answer->deleteLater();
    });
}

void StatusItem::trayIsReady()
{
    if (!m_untilReady.isActive())
        return;
    m_untilReady.stop();
    registerItem();
}

void StatusItem::registerItem()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherService, watcherPath, watcherService, QStringLiteral("RegisterStatusNotifierItem"));
    // Not by the item's own name: GNOME's extension watches that of an item that has one, and lost
    // the item when it heard of the name after the item. A sandbox would not grant it either.
    call << m_bus->baseService();
    m_bus->asyncCall(call);
}

void StatusItem::useXembed()
{
    if (m_xembed || QGuiApplication::platformName() != QStringLiteral("xcb"))
        return;
    m_xembed = std::make_unique<XembedTray>(m_menu);
    m_xembed->setTitle(title());
    redrawIcon();
}

void StatusItem::setTitle(const QString& title)
{
    if (title == m_item.title())
        return;
    m_item.setTitle(title);
    if (m_xembed)
        m_xembed->setTitle(title);
}

void StatusItem::refreshMenu()
{
    if (m_busMenu && m_busHasTray)
        m_busMenu->refreshUnlessOpen();
}

void StatusItem::busIsGone()
{
    useTrayOf({});
}

void StatusItem::redrawIcon()
{
    if (!m_busHasTray && !m_xembed)
        return;
    const QList<QImage> sizes = m_drawIcon();
    if (m_busHasTray && sizes != m_icon) {
        m_icon = sizes;
        m_item.setIcon(sizes, writeIconFile(sizes.last()));
    }
    if (m_xembed)
        m_xembed->setIcon(sizes);
}

/// The icon as a file of a new name, since trays remember what a name looked like. Empty when it
/// cannot be written.
QString StatusItem::writeIconFile(const QImage& icon)
{
    const QDir folder(iconFolder());
    if (iconFolder().isEmpty() || !folder.mkpath(QStringLiteral(".")))
        return {};
    removeIconFile();
    if (m_iconFiles == 0) {
        // A killed program may have left one.
        for (const QString& file : folder.entryList({QStringLiteral("icon-*.png")}, QDir::Files))
            QFile::remove(folder.filePath(file));
    }
    const QString path = folder.filePath(QStringLiteral("icon-%1-%2.png")
                                             .arg(QCoreApplication::applicationPid())
                                             .arg(++m_iconFiles));
    return writePng(icon, path) ? path : QString();
}

void StatusItem::removeIconFile()
{
    if (!m_item.iconName().isEmpty())
        QFile::remove(m_item.iconName());
}
