#pragma once

#include <functional>

/// What the widget's buttons ask of the application.
struct WidgetActions
{
    std::function<void()> hide;         ///< hides the widget
    std::function<void()> quit;         ///< ends the program
    std::function<void()> openSettings; ///< opens the panel window with its settings
};
