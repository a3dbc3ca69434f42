#include "app/UserFolders.h"

#include "core/Fatal.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// What a variable names, if that is a whole path: relative ones are to be ignored.
QString folderIn(const char* variable)
{
    const QString folder = qEnvironmentVariable(variable);
    return QDir::isAbsolutePath(folder) ? QDir::cleanPath(folder) : QString();
}

/// A base folder of the user's: the one that the variable names, or the usual one in the home.
/// Empty where there is neither.
QString baseFolder(const char* variable, const QString& inHome)
{
    const QString named = folderIn(variable);
    const QString home = folderIn("HOME");
    return named.isEmpty() && !home.isEmpty() ? home + inHome : named;
}

} // namespace

QString configFolder()
{
    const QString folder = baseFolder("XDG_CONFIG_HOME", QStringLiteral("/.config"));
    return folder.isEmpty() ? QStringLiteral("/nonexistent") : folder;
}

QString configFile(const QString& name)
{
    QStringList folders = qEnvironmentVariable("XDG_CONFIG_DIRS").split(u':', Qt::SkipEmptyParts);
    if (folders.isEmpty())
        folders = {QStringLiteral("/etc/xdg")};
    folders.prepend(configFolder());
    for (const QString& folder : folders) {
        const QString path = folder + u'/' + name;
        if (QDir::isAbsolutePath(folder) && QFileInfo::exists(path))
            return path;
    }
    return {};
}

QString settingsPath()
{
    return configFolder() + QStringLiteral("/Vantora/Vantora.conf");
}

QString sessionLogPath()
{
    const QString folder = baseFolder("XDG_DATA_HOME", QStringLiteral("/.local/share"));
    if (folder.isEmpty())
        stopProcess("there is no folder for the history: neither HOME nor XDG_DATA_HOME is set");
    return folder + QStringLiteral("/Vantora/sessions.json");
}
