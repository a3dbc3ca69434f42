#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Snapshot mode: with "--snapshot FOLDER" the program writes pictures of the widget in eight
/// states and ends, without a window, a tray item or a display.
class Snapshot
{
public:
    /// Returns at once if the arguments do not ask for snapshot mode; else never, and the process
    /// ends with status 0. To be called before anything else of the program is there.
    static void runIfRequested(int argc, char* argv[]);

    /// The folder that these arguments ask for pictures in: what follows the first "--snapshot".
    static std::optional<QString> requestedFolder(const QStringList& arguments);
};
