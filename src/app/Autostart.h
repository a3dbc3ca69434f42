#pragma once

#include <QString>

/// Has the desktop start `program` (an absolute path) when the user logs in, or no longer, by the
/// entry in the user's autostart folder. An entry that somebody has changed is kept, and switched
/// on or off. Returns what went wrong, or nothing.
QString setAutostart(bool on, const QString& program);
