#pragma once

#include <QDBusConnection>

#include <functional>

class QObject;

/// Connects to the session bus, and calls `connected` on the thread of `context` with the
/// connection, or with one that isConnected() denies when there is no bus. Greeting the bus waits
/// for its answer, so that is done on another thread. Nothing is called once `context` is gone.
void connectToSessionBus(QObject* context, std::function<void(QDBusConnection)> connected);
