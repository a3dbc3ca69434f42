#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

#include <atomic>

/// The program on the session bus under its application id, for launchers, key bindings and second
/// starts, by the interface org.freedesktop.Application.
class ApplicationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    static constexpr auto name = "io.github.vantora.Vantora";
    static constexpr auto path = "/io/github/vantora/Vantora";

    /// Takes the name on the bus. If another program of the user's has it, that one is activated
    /// instead, and isSecond() tells so. Waits for the answers; to be called once, on any thread.
    void claim(QDBusConnection bus);

    /// Whether this program was started beside one that runs.
    bool isSecond() const { return m_isSecond; }

Q_SIGNALS:
    /// Somebody wants to see the program.
    void activated();

    /// Somebody wants this done, by the name of the desktop entry's action.
    void actionActivated(const QString& action);

    /// The bus answered late: the program runs beside another one.
    void becameSecond();

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): the bus calls them so.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& addresses, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& action, const QVariantList& parameters,
                                     const QVariantMap& platformData);
    // NOLINTEND(readability-identifier-naming)

private:
    std::atomic<bool> m_isSecond = false;
};
