#pragma once

class WaylandSeat;
struct wl_display;
struct wl_shm;
struct wp_viewporter;
struct zwlr_layer_shell_v1;
struct zwp_relative_pointer_manager_v1;

/// What the Wayland compositor has for windows that stand beside the ordinary ones.
struct LayerShell
{
    wl_display* display = nullptr;
    zwlr_layer_shell_v1* shell = nullptr;
    zwp_relative_pointer_manager_v1* relativePointers = nullptr; ///< may be missing
    WaylandSeat* seat = nullptr;                                 ///< may be missing
    wl_shm* shm = nullptr;                                       ///< may be missing
    wp_viewporter* viewporter = nullptr;                         ///< may be missing
    bool tellsFractionalScales = false;
};

/// The compositor's layer shell, or null where there is none: on other window systems, and where
/// the application was not prepared for it (`WindowSystem`). Needs the application.
const LayerShell* layerShell();

/// How many of Wayland's units make one of Qt's: more than one where variables of the environment
/// have it show everything larger. Needs the application.
double waylandUnit();
