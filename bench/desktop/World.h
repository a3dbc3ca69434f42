#pragma once

#include "bench/desktop/Program.h"

#include <QTemporaryDir>

#include <optional>

/// A desktop of its own: home folder, X display, session bus and window manager. While it lives,
/// the environment of this process points to it.
class World
{
public:
    World();

    QByteArray busAddress() const { return m_busAddress; }

private:
    QByteArray folder(const char* name) const;
    QByteArray writeBusConfiguration() const;

    QTemporaryDir m_folder;
    QByteArray m_busAddress;
    std::optional<Program> m_display;
    std::optional<Program> m_bus;
    std::optional<Program> m_windowManager;
};
