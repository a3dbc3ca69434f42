#pragma once

/// Compares how long the program takes for its pictures with how long it takes to start and end,
/// and prints a table.
void compareSnapshots();
