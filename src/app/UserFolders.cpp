#include "app/UserFolders.h"

#include <QStandardPaths>

namespace {

/// The program's own folder below a base folder of the user's.
QString userFolder(QStandardPaths::StandardLocation base)
{
    return QStandardPaths::writableLocation(base) + QStringLiteral("/Vantora");
}

} // namespace

QString settingsPath()
{
    return userFolder(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Vantora.conf");
}

QString sessionLogPath()
{
    return userFolder(QStandardPaths::GenericDataLocation) + QStringLiteral("/sessions.json");
}
