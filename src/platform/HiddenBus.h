#pragma once

#include <QByteArray>

#include <optional>

/// Hides a session bus that does not answer from Qt, which would wait for it: from 6.8 on while an
/// application is made, and always when the first window is shown. It lives while the application
/// is made; Qt has no session bus then until the end of the process, and assistive technology finds
/// the program at its next start only.
class HiddenBus
{
public:
    HiddenBus();

    /// Programs that are started from now on find the bus. Needs the application.
    ~HiddenBus();

    HiddenBus(const HiddenBus&) = delete;
    HiddenBus& operator=(const HiddenBus&) = delete;

private:
    std::optional<QByteArray> m_address; ///< of the environment, unless it has none
};
