#pragma once

#include "Desktop.h"
#include "TrayHost.h"
#include "World.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

/// A world with a watchful tray, and Vantora in it.
class DesktopTest : public testing::Test
{
protected:
    void startWithHost(const QStringList& arguments = {QStringLiteral("--demo")})
    {
        host.start();
        startVantora(arguments);
        ASSERT_TRUE(waitUntil([this] { return !host.item().isEmpty(); })) << "no item in the tray";
    }

    void startVantora(const QStringList& arguments = {})
    {
        vantora = &world.startVantora(arguments);
        ASSERT_TRUE(waitUntil([this] { return widget() != 0; })) << "no widget on the screen";
    }

    /// The widget's window, or 0 while it is not on the screen. The panel window has the same title
    /// and is wider.
    xcb_window_t widget() const
    {
        for (const xcb_window_t window : desktop.shown(QStringLiteral("Vantora"))) {
            if (desktop.geometry(window).width() <= 250)
                return window;
        }
        return 0;
    }

    xcb_window_t panelWindow() const
    {
        for (const xcb_window_t window : desktop.shown(QStringLiteral("Vantora"))) {
            if (desktop.geometry(window).width() == 380)
                return window;
        }
        return 0;
    }

    /// An ordinary window of another program, which the user works in.
    xcb_window_t openFocusedWindow()
    {
        const xcb_window_t other = desktop.openOtherWindow({100, 500, 400, 300});
        desktop.activate(other);
        EXPECT_TRUE(waitUntil([&] { return hasFocus(other); }));
        return other;
    }

    bool hasFocus(xcb_window_t window) const
    {
        return desktop.active() == window && desktop.focused() == window;
    }

    /// Lets the widget decide whether it takes the keyboard after a click. It waits for what else
    /// may come, but not for a second of the countdown, which runs.
    void letItDecide()
    {
        for (int seconds = 0; seconds < 2; ++seconds) {
            const QString title = host.title();
            ASSERT_TRUE(waitUntil([&] { return host.title() != title; }));
        }
    }

    bool titleBecomes(const QString& title)
    {
        return waitUntil([&] { return host.title() == title; });
    }

    bool endsByItself()
    {
        return waitUntil([this] { return vantora->state() == QProcess::NotRunning; });
    }

    World world;
    Desktop desktop{world.display()};
    TrayHost host{world.busAddress()};
    QProcess* vantora = nullptr;
};
