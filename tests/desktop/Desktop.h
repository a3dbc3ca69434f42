#pragma once

#include <QImage>
#include <QList>
#include <QRect>
#include <QString>

#include <xcb/xcb.h>

#include <array>
#include <optional>

/// The display of a world as its user and its window manager see it.
class Desktop
{
public:
    /// Waits for the window manager.
    explicit Desktop(const QString& display);
    ~Desktop();

    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// The windows that the window manager knows, lowest first.
    QList<xcb_window_t> windows() const;

    /// Windows of this title that are on the screen.
    QList<xcb_window_t> shown(const QString& title) const;

    /// Open menus: windows that came onto the screen past the window manager.
    QList<xcb_window_t> popups() const;

    /// Where the window is on the screen.
    QRect geometry(xcb_window_t window) const;

    /// The numbers of a property, such as the states of a window.
    QList<quint32> property(xcb_window_t window, const char* name) const;
    QList<quint32> rootProperty(const char* name) const { return property(m_root, name); }
    quint32 atom(const char* name) const;

    /// Whether the window is cut to a shape that is no rectangle.
    bool isCut(xcb_window_t window) const;

    /// Becomes what makes windows translucent, as far as other programs can tell, or no longer.
    void becomeCompositor(bool yes) const;

    /// Is the settings manager from now on, with these settings (XSETTINGS).
    void manageSettings(const QByteArray& settings) const;

    xcb_window_t focused() const;
    xcb_window_t active() const { return rootProperty("_NET_ACTIVE_WINDOW").value(0); }

    /// Opens an ordinary window; it ends with the desktop.
    xcb_window_t openOtherWindow(const QRect& geometry) const;

    /// Opens a panel of this height along the top of the screen; windows are kept off it.
    void openPanel(int height) const;

    /// Gives a window the focus, as a task bar does.
    void activate(xcb_window_t window) const;

    /// Asks for the window to be closed, as its title bar does.
    void close(xcb_window_t window) const;

    /// Has the window manager move a window, as its own keys do.
    void place(xcb_window_t window, QPoint topLeft) const;

    void raise(xcb_window_t window) const;
    void moveTo(QPoint at) const;
    void press(QPoint at, int button = 1) const;
    void release(int button = 1) const;
    void click(QPoint at, int button = 1) const;

    /// Keeps the pointer from all other programs, as an open menu of another one does; or lets go
    /// of it.
    void grabPointer() const;
    void ungrabPointer() const;

    /// Presses and releases the key with this X11 name (its keysym) on the keyboard.
    void type(quint32 key) const;

    /// The same while the Control key is held.
    void typeWithControl(quint32 key) const;

    /// How often windows that were opened here lost the focus so far.
    int focusLosses();

    /// What the screen shows there.
    QImage picture(const QRect& area) const;

private:
    void waitForWindowManager() const;
    void request(xcb_window_t window, const char* what, std::array<uint32_t, 5> data) const;
    bool isSet(xcb_window_t window, const char* name) const;
    QString titleOf(xcb_window_t window) const;
    bool isViewable(xcb_window_t window) const;
    std::optional<uint8_t> keycodeOf(quint32 key) const;
    void fake(uint8_t type, uint8_t detail, QPoint at) const;

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    xcb_window_t m_service; ///< never seen: it owns what services of a desktop own
    int m_focusLosses = 0;
};
