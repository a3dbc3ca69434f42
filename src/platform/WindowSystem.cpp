#include "platform/WindowSystem.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstring>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1.h>

namespace {

constexpr auto platform = "QT_QPA_PLATFORM";

/// Qt gives windows with the hint of this name no role of their own, if this is set.
constexpr auto roleless = "QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT";

/// The first layer shell that gives windows the keyboard on demand. Compositors with an older one,
/// as KWin 5, take it away from other windows when a surface is clicked.
constexpr uint32_t modest = 4;

/// The version of the compositor's layer shell; 0 without one.
uint32_t layerShellVersion()
{
    wl_display* display = wl_display_connect(nullptr);
    if (!display)
        return 0;
    static constexpr wl_registry_listener listener{
        .global =
            [](void* found, wl_registry*, uint32_t, const char* interface, uint32_t version) {
                if (std::strcmp(interface, zwlr_layer_shell_v1_interface.name) == 0)
                    *static_cast<uint32_t*>(found) = version;
            },
        .global_remove = [](void*, wl_registry*, uint32_t) {},
    };
    uint32_t found = 0;
    wl_registry* registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, &found);
    wl_display_roundtrip(display);
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
    return found;
}

} // namespace

WindowSystem::WindowSystem()
{
    // Of several monitors of X11 Qt takes the whole for free of panels, if this is not set.
    qputenv("QT_RELY_ON_NET_WORKAREA_ATOM", "1");
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && qgetenv("XDG_SESSION_TYPE") != "wayland")
        return;
    m_isChosen = !qEnvironmentVariableIsSet(platform);
    const uint32_t version = layerShellVersion();
    if (version > 0)
        qputenv(roleless, "1");
    if (!m_isChosen)
        return;
    if (version >= modest)
        qputenv(platform, "wayland;xcb");
    else
        qputenv(platform, qEnvironmentVariableIsSet("DISPLAY") ? "xcb;wayland" : "wayland");
}

WindowSystem::~WindowSystem()
{
    // The choice is not for programs that are started from here.
    if (m_isChosen)
        qunsetenv(platform);
}
