#pragma once

#include <chrono>

class TrayHost;
class WindowWatch;

/// Brings the program's widget into each of its states, watches it there for `time`, beside the
/// same widget repainted as a whole, and prints a table.
void compareWidgetStates(WindowWatch& watch, TrayHost& tray, std::chrono::seconds time);
