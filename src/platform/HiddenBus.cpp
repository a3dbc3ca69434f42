#include "platform/HiddenBus.h"

#include <QDBusConnection>
#include <QtGlobal>

namespace {

constexpr auto busAddress = "DBUS_SESSION_BUS_ADDRESS";

} // namespace

HiddenBus::HiddenBus()
{
    if (qEnvironmentVariableIsSet(busAddress))
        m_address = qgetenv(busAddress);
    qputenv(busAddress, "unix:path=/dev/null");
}

HiddenBus::~HiddenBus()
{
    // Qt and its bus library look for the bus once, and remember that there was none.
    QDBusConnection::sessionBus();
    if (m_address)
        qputenv(busAddress, *m_address);
    else
        qunsetenv(busAddress);
}
