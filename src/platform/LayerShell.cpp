#include "platform/LayerShell.h"

#include "platform/WaylandQueue.h"
#include "platform/WaylandSeat.h"

#include <QGuiApplication>
#include <QScreen>
#include <qpa/qplatformnativeinterface.h>
#include <qpa/qplatformscreen.h>

#include <algorithm>
#include <cstring>
#include <relative-pointer-unstable-v1.h>
#include <viewporter.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1.h>

namespace {

constexpr uint32_t newestShell = 4;

void* bind(wl_registry* registry, uint32_t name, const wl_interface& interface, uint32_t version)
{
    void* proxy = wl_registry_bind(registry, name, &interface, version);
    // Only the listing has a queue of its own; what is bound is served with the rest.
    wl_proxy_set_queue(static_cast<wl_proxy*>(proxy), nullptr);
    return proxy;
}

void takeGlobal(void* data, wl_registry* registry, uint32_t name, const char* interface,
                uint32_t version)
{
    auto* shell = static_cast<LayerShell*>(data);
    if (std::strcmp(interface, zwlr_layer_shell_v1_interface.name) == 0) {
        shell->shell = static_cast<zwlr_layer_shell_v1*>(
            bind(registry, name, zwlr_layer_shell_v1_interface, std::min(version, newestShell)));
    } else if (std::strcmp(interface, zwp_relative_pointer_manager_v1_interface.name) == 0) {
        shell->relativePointers = static_cast<zwp_relative_pointer_manager_v1*>(
            bind(registry, name, zwp_relative_pointer_manager_v1_interface, 1));
    } else if (std::strcmp(interface, wl_shm_interface.name) == 0) {
        shell->shm = static_cast<wl_shm*>(bind(registry, name, wl_shm_interface, 1));
    } else if (std::strcmp(interface, wp_viewporter_interface.name) == 0) {
        shell->viewporter =
            static_cast<wp_viewporter*>(bind(registry, name, wp_viewporter_interface, 1));
    } else if (std::strcmp(interface, "wp_fractional_scale_manager_v1") == 0) {
        shell->tellsFractionalScales = true;
    } else if (std::strcmp(interface, wl_seat_interface.name) == 0 && !shell->seat) {
        shell->seat = new WaylandSeat(static_cast<wl_seat*>(bind(
            registry, name, wl_seat_interface, std::min(version, WaylandSeat::newestVersion))));
    }
}

LayerShell findLayerShell()
{
    LayerShell shell;
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")) ||
        !qEnvironmentVariableIsSet("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT"))
        return shell;
    shell.display = static_cast<wl_display*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("wl_display"));
    if (!shell.display)
        return shell;
    static constexpr wl_registry_listener listener{
        .global = takeGlobal, .global_remove = [](void*, wl_registry*, uint32_t) {}};
    WaylandQueue queue(shell.display);
    wl_registry* registry = wl_display_get_registry(queue.wrap(shell.display).get());
    wl_registry_add_listener(registry, &listener, &shell);
    queue.roundTrip();
    wl_registry_destroy(registry);
    return shell;
}

} // namespace

double waylandUnit()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() / screen->handle()->devicePixelRatio() : 1;
}

const LayerShell* layerShell()
{
    static const LayerShell found = findLayerShell();
    return found.shell ? &found : nullptr;
}
