#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/// A display with a window manager, a session bus and a home of their own, for one test. All that
/// was started in it ends with it.
class World
{
public:
    enum class Bus { own, none };

    explicit World(Bus bus = Bus::own);
    ~World();

    World(const World&) = delete;
    World& operator=(const World&) = delete;

    /// Sets a variable of the environment of all that is started from now on.
    void setVariable(const QString& name, const QString& value)
    {
        m_environment.insert(name, value);
    }

    void unsetVariable(const QString& name) { m_environment.remove(name); }

    /// Starts a program in this world. It belongs to the world.
    QProcess& start(const QString& program, const QStringList& arguments = {});

    /// The window manager hears of nothing until it goes on.
    void stopWindowManager() const;
    void continueWindowManager() const;

    /// Ends the session bus at once.
    void killBus();

    /// Starts Vantora in this world.
    QProcess& startVantora(const QStringList& arguments = {});

    /// Ends a program at once, as a power cut would.
    static void kill(QProcess& process);

    QString display() const { return m_display; }
    QString busAddress() const { return m_busAddress; }
    QString settingsPath() const
    {
        return m_home.filePath(QStringLiteral("config/Vantora/Vantora.conf"));
    }
    QString historyPath() const
    {
        return m_home.filePath(QStringLiteral("data/Vantora/sessions.json"));
    }
    QString path(const QString& name) const { return m_home.filePath(name); }

    /// What the sound card of this world was given to play so far: 16-bit samples.
    QByteArray soundPlayed() const;

    void writeFile(const QString& path, const QByteArray& content) const;
    static QByteArray readFile(const QString& path);

private:
    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
    QString m_display;
    QString m_busAddress;
    QProcess* m_bus = nullptr;
    QProcess* m_windowManager = nullptr;
    std::vector<std::unique_ptr<QProcess>> m_processes;
};
