#pragma once

#include <Qt>

class QWidget;

/// The window system's side of a small window that floats above all others, on all desktops, out of
/// the task bar, and that takes no keyboard focus.

/// Makes `window`, not yet shown, such a window.
void makeFloating(QWidget& window);

/// To be called whenever `window` is about to be shown: what X11 window managers read at that time.
void prepareToShow(QWidget& window);

/// Whether the window system has `window` at the screen's very corner. Asks it, and waits.
bool isAtOrigin(const QWidget& window);

/// To be called after `window` was shown: what they take as requests only.
void settleAfterShow(QWidget& window);
