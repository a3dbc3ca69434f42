#pragma once

#include <chrono>
#include <functional>

/// Thrown out of any wait once the user or the system asked the program to end.
struct Interrupted
{};

/// Makes the signals that end a program end a wait, so that everything started is cleaned up.
void endWaitsOnSignals();

/// Throws Interrupted when such a signal came.
void throwIfInterrupted();

/// Runs the event loop until `reached`; false when that took longer than `atMost`.
bool waitUntil(const std::function<bool()>& reached, std::chrono::milliseconds atMost);

/// Runs the event loop for so long.
void waitFor(std::chrono::milliseconds time);
