#include "platform/DesktopAnimations.h"

#include "platform/XSettings.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const QString kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");
const QString gtkGroup = QStringLiteral("Gtk"); // of the settings manager

using Groups = QMap<QString, QVariantMap>;

} // namespace

void DesktopAnimations::watchPortal(QDBusConnection bus)
{
    qDBusRegisterMetaType<Groups>();
    // Only what is known by name can be a parameter of a slot.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"),
                this, SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto* watcher = new QDBusServiceWatcher(portalService, bus,
                                            QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this, bus] { readAll(bus); });
    readAll(bus);
}

void DesktopAnimations::watchXSettings()
{
    auto* settings = new XSettings(this);
    const auto read = [this, settings] {
        take(gtkGroup, QStringLiteral("EnableAnimations"),
             settings->integer("Gtk/EnableAnimations").value_or(1) != 0);
    };
    connect(settings, &XSettings::changed, this, read);
    read();
}

void DesktopAnimations::readAll(const QDBusConnection& bus)
{
    QDBusMessage call = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface,
                                                       QStringLiteral("ReadAll"));
    call << QStringList{appearanceGroup, gnomeGroup, kdeGroup};
    // A desktop that needs its portal has it running already.
    call.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<Groups> reply = *answer;
        if (reply.isError())
            return;
        const Groups groups = reply.value();
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            for (auto entry = group->begin(); entry != group->end(); ++entry)
                take(group.key(), entry.key(), entry.value());
        }
    });
}

void DesktopAnimations::settingChanged(const QString& group, const QString& key,
                                       const QDBusVariant& value)
{
    take(group, key, value.variant());
}

void DesktopAnimations::take(const QString& group, const QString& key, const QVariant& value)
{
    const bool wereEnabled = areEnabled();
    if (group == appearanceGroup && key == QLatin1String("reduced-motion"))
        m_reducedMotion = value.toUInt() == 1;
    else if (group == gnomeGroup && key == QLatin1String("enable-animations"))
        m_gnomeEnabled = value.toBool();
    else if (group == kdeGroup && key == QLatin1String("AnimationDurationFactor"))
        m_kdeEnabled = value.toDouble() > 0;
    else if (group == gtkGroup)
        m_gtkEnabled = value.toBool();
    if (areEnabled() != wereEnabled)
        Q_EMIT changed(areEnabled());
}
