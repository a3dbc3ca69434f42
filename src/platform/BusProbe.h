#pragma once

#include <QByteArray>

#include <chrono>
#include <stop_token>

/// What a bus says of a name.
enum class NameOnBus {
    free,   ///< nobody has it, or the bus is none that can be asked here
    taken,  ///< a program has it
    unsaid, ///< the bus is there and does not answer
    noBus,  ///< nobody listens at the address
};

/// The D-Bus address of the session bus: the environment's, or where a user's bus usually is. Empty
/// without one.
QByteArray sessionBusAddress();

/// Asks the bus at this D-Bus address about a name, and waits at most `atMost` for its answer, or
/// until `stop`. Of an address that it does not understand it says that the name is free.
///
/// This is for the start, when Qt's bus library is not loaded yet: it would take as long as all the
/// rest of the start. And Qt serves all its connections on one thread, which a silent bus would
/// hold up for ever.
NameOnBus askBusFor(const QByteArray& name, const QByteArray& address,
                    std::chrono::milliseconds atMost, const std::stop_token& stop = {});
