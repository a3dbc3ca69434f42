#pragma once

/// While it lives, a new application starts on the window system that suits the widget best, unless
/// the user has chosen one: Wayland itself where the compositor lets windows float, by a new enough
/// layer shell, else X11, which Wayland desktops serve as well.
class WindowSystem
{
public:
    /// Asks the compositor, if there is one, and waits for its answer.
    WindowSystem();
    ~WindowSystem();

    WindowSystem(const WindowSystem&) = delete;
    WindowSystem& operator=(const WindowSystem&) = delete;

private:
    bool m_isChosen = false;
};
