#pragma once

class QWidget;

/// Gives a window on X11 the pixels of its size whenever the desktop's scale changes: Qt paints it
/// larger or smaller then, and leaves the window as it was. Elsewhere nothing is done.
void followDesktopScale(QWidget& window);
