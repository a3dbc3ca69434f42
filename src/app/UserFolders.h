#pragma once

#include <QString>

/// The file of the user's settings.
QString settingsPath();

/// The file of the user's history.
QString sessionLogPath();
