#pragma once

#include <QString>

/// The folder of all programs' settings; one that is nowhere for a user without a home.
QString configFolder();

/// The first file of this name below the user's folder of settings and the system's; empty where
/// none has it.
QString configFile(const QString& name);

/// The file of the user's settings.
QString settingsPath();

/// The file of the user's history. A user without a home and without a folder for data can have
/// none: the process stops with a message.
QString sessionLogPath();
