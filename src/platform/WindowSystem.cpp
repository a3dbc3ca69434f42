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

bool compositorHasLayerShell()
{
    wl_display* display = wl_display_connect(nullptr);
    if (!display)
        return false;
    static constexpr wl_registry_listener listener{
        .global =
            [](void* found, wl_registry*, uint32_t, const char* interface, uint32_t) {
                if (std::strcmp(interface, zwlr_layer_shell_v1_interface.name) == 0)
                    *static_cast<bool*>(found) = true;
            },
        .global_remove = [](void*, wl_registry*, uint32_t) {},
    };
    bool found = false;
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
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return;
    m_isChosen = !qEnvironmentVariableIsSet(platform);
    if (compositorHasLayerShell()) {
        qputenv(roleless, "1");
        if (m_isChosen)
            qputenv(platform, "wayland;xcb");
    } else if (m_isChosen) {
        qputenv(platform, qEnvironmentVariableIsSet("DISPLAY") ? "xcb;wayland" : "wayland");
    }
}

WindowSystem::~WindowSystem()
{
    // The choice is not for programs that are started from here.
    if (m_isChosen)
        qunsetenv(platform);
}
