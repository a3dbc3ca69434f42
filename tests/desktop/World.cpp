#include "World.h"

#include "support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

namespace {

/// The first line that a program prints, such as an address to reach it at.
QString firstLine(QProcess& process)
{
    while (!process.canReadLine()) {
        if (!process.waitForReadyRead(20'000))
            qFatal("%s does not start", qPrintable(process.program()));
    }
    return QString::fromUtf8(process.readLine()).trimmed();
}

} // namespace

World::World(Bus bus)
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    for (const QString& folder : {QStringLiteral("config"), QStringLiteral("data"),
                                  QStringLiteral("cache"), QStringLiteral("runtime")})
        QDir(m_home.path()).mkdir(folder);
    QFile::setPermissions(path(QStringLiteral("runtime")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const QString& name :
         {QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("QT_QPA_PLATFORM"),
          QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("XDG_CURRENT_DESKTOP")})
        m_environment.remove(name);
    m_environment.insert(QStringLiteral("HOME"), m_home.path());
    m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
    m_environment.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral("data")));
    m_environment.insert(QStringLiteral("XDG_CACHE_HOME"), path(QStringLiteral("cache")));
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("runtime")));
    m_environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    m_environment.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
    m_environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));

    // A sound card that writes what it is given into a file.
    writeFile(path(QStringLiteral("asound.conf")),
              QStringLiteral("pcm.!default { type file file \"%1\" format raw "
                             "slave.pcm { type null } }\n")
                  .arg(path(QStringLiteral("played.raw")))
                  .toUtf8());
    m_environment.insert(QStringLiteral("ALSA_CONFIG_PATH"), path(QStringLiteral("asound.conf")));
    m_environment.insert(QStringLiteral("CANBERRA_DRIVER"), QStringLiteral("alsa"));

    QProcess& xvfb =
        start(QStringLiteral("Xvfb"),
              {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
               QStringLiteral("0"), QStringLiteral("1920x1080x24"), QStringLiteral("-nolisten"),
               QStringLiteral("tcp")});
    m_display = QLatin1Char(':') + firstLine(xvfb);
    m_environment.insert(QStringLiteral("DISPLAY"), m_display);

    m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                         QStringLiteral("unix:path=") + path(QStringLiteral("no-bus")));
    if (bus == Bus::own) {
        QProcess& daemon =
            start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address"),
                   QStringLiteral("--address=unix:path=") + path(QStringLiteral("bus"))});
        m_busAddress = firstLine(daemon);
        m_bus = &daemon;
        m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_busAddress);
    }
    m_windowManager = &start(QStringLiteral("openbox"));
}

World::~World()
{
    // In the opposite order, so that nobody complains of a display or a bus that is gone.
    while (!m_processes.empty()) {
        QProcess& process = *m_processes.back();
        process.terminate();
        if (!process.waitForFinished(3000))
            kill(process);
        m_processes.pop_back();
    }
}

QProcess& World::start(const QString& program, const QStringList& arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    if (program == QStringLiteral(VANTORA_PROGRAM))
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    else
        process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    if (!process->waitForStarted())
        qFatal("%s cannot be started", qPrintable(program));
    m_processes.push_back(std::move(process));
    return *m_processes.back();
}

QProcess& World::startVantora(const QStringList& arguments)
{
    return start(QStringLiteral(VANTORA_PROGRAM), arguments);
}

void World::stopWindowManager() const
{
    ::kill(static_cast<pid_t>(m_windowManager->processId()), SIGSTOP);
}

void World::continueWindowManager() const
{
    ::kill(static_cast<pid_t>(m_windowManager->processId()), SIGCONT);
}

void World::killBus()
{
    kill(*m_bus);
}

void World::kill(QProcess& process)
{
    process.kill();
    process.waitForFinished();
}

QByteArray World::soundPlayed() const
{
    return readFile(path(QStringLiteral("played.raw")));
}

void World::writeFile(const QString& path, const QByteArray& content) const
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}

QByteArray World::readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
