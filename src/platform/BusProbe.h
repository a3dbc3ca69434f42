#pragma once

#include <QByteArray>

#include <chrono>

/// Whether the bus at this D-Bus address answers a greeting within `atMost`. Of an address that it
/// does not understand it says yes. It has a connection of its own for that: Qt serves all its
/// connections on one thread, and a bus that takes one and never answers would hold up them all.
bool busAnswers(const QByteArray& address, std::chrono::milliseconds atMost);
