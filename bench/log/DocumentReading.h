#pragma once

#include "log/SessionEntry.h"

#include <QByteArray>

#include <vector>

/// The log read in Qt's usual way, which the program's own reading is compared with: the text
/// becomes a QJsonDocument, and a loop over it fills the history.
std::vector<SessionEntry> readOverDocument(const QByteArray& json);
