#include "bench/desktop/World.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

World::World()
{
    qputenv("HOME", folder("home"));
    qputenv("XDG_CONFIG_HOME", folder("home/.config"));
    qputenv("XDG_CACHE_HOME", folder("home/.cache"));
    qputenv("XDG_DATA_HOME", folder("home/.local/share"));
    qputenv("XDG_RUNTIME_DIR", folder("run"));
    qputenv("LC_ALL", "C.UTF-8");
    // What would make the toolkit behave like on the desktop that this is started from.
    for (const char* name :
         {"WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_DESKTOP", "DESKTOP_SESSION",
          "XDG_SESSION_TYPE", "QT_QPA_PLATFORM", "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE",
          "QT_SCALE_FACTOR", "QT_ACCESSIBILITY", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON"})
        qunsetenv(name);

    m_display.emplace(QByteArrayList{"Xvfb", "-displayfd", "1", "-screen", "0", "1920x1080x24",
                                     "-nolisten", "tcp"});
    const QByteArray number = m_display->readLine();
    if (number.isEmpty())
        throw std::runtime_error("Xvfb does not start");
    qputenv("DISPLAY", ':' + number);

    m_bus.emplace(QByteArrayList{"dbus-daemon", "--nofork", "--print-address",
                                 "--config-file=" + writeBusConfiguration()});
    m_busAddress = m_bus->readLine();
    if (m_busAddress.isEmpty())
        throw std::runtime_error("dbus-daemon does not start");
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_busAddress);

    m_windowManager.emplace(QByteArrayList{"openbox", "--sm-disable"});
}

QByteArray World::folder(const char* name) const
{
    const QString path = m_folder.filePath(QLatin1String(name));
    if (!QDir().mkpath(path))
        throw std::runtime_error("no temporary folder");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFile::encodeName(path);
}

/// A session bus that starts no services, which would compete with what is measured.
QByteArray World::writeBusConfiguration() const
{
    QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
    const QByteArray text = "<busconfig>"
                            "<type>session</type>"
                            "<listen>unix:path=" +
                            folder("run") +
                            "/bus</listen>"
                            "<policy context=\"default\">"
                            "<allow send_destination=\"*\"/>"
                            "<allow receive_sender=\"*\"/>"
                            "<allow own=\"*\"/>"
                            "</policy>"
                            "</busconfig>\n";
    if (!file.open(QFile::WriteOnly) || file.write(text) != text.size())
        throw std::runtime_error("no temporary file");
    return QFile::encodeName(file.fileName());
}
