"""GNOME Shell, whose tray is an extension."""

import re
import time

from hosts.tray import Tray
from hosts.window_managers import WindowManager
from picture import Picture
from screen import X11Screen
from tray_checks import TrayChecks
from waiting import wait_until
from window_checks import WindowChecks
from world import SCREEN

EXTENSION = "ubuntu-appindicators@ubuntu.com"

# It does not while it is still on its way into it.
LEAVE_OVERVIEW = """
if (Main.overview.visible && !Main.overview.animationInProgress) Main.overview.hide();
!Main.overview.visible && !Main.layoutManager._startingUp
"""

SETTINGS = (("welcome-dialog-last-shown-version", "99"),
            ("disable-extension-version-validation", "true"), ("enabled-extensions", "[]"))


def prepare(world):
    world.start_system_bus()
    for key, value in SETTINGS:
        world.set_setting("org.gnome.shell", key, value)
    # A banner that the pointer passes takes the keyboard.
    world.set_setting("org.gnome.desktop.notifications", "show-banners", "false")


def evaluate(world, script):
    """Runs JavaScript in the shell; what came out."""
    return world.text("gdbus", "call", "--session", "--dest", "org.gnome.Shell", "--object-path",
                      "/org/gnome/Shell", "--method", "org.gnome.Shell.Eval", script)


def leave_overview(world):
    if not wait_until(lambda: evaluate(world, LEAVE_OVERVIEW) == "(true, 'true')", 40, every=0.5):
        raise RuntimeError("the shell does not leave its overview")


class OnX11:
    variables = {"XDG_CURRENT_DESKTOP": "GNOME", "XDG_SESSION_TYPE": "x11",
                 "GNOME_SHELL_SESSION_MODE": "user"}
    window_manager = ("gnome-shell", "--x11", "--unsafe-mode")

    def prepare(self, world):
        prepare(world)


class GnomeWindows(OnX11, WindowManager):
    name, package = "gnome-shell", "gnome-shell"

    def make_desktops(self, world):
        leave_overview(world)
        world.set_setting("org.gnome.mutter", "dynamic-workspaces", "false")
        super().make_desktops(world)


class ExtensionTray(Tray):
    package = "gnome-shell-extension-appindicator"
    part = f"600x400+{SCREEN[0] - 600}+0"
    items = (SCREEN[0] // 2 + 150, 0, SCREEN[0] // 2 - 150, 27)

    def wait_for_panel(self, is_seen):
        """The panel has been there from the shell's start on."""

    def start_tray(self, world):
        leave_overview(world)
        world.set_setting("org.gnome.shell", "enabled-extensions", f"['{EXTENSION}']")
        time.sleep(3)

    def stop_tray(self, world):
        world.set_setting("org.gnome.shell", "enabled-extensions", "[]")
        time.sleep(1)


class GnomeTray(OnX11, ExtensionTray):
    name = "gnome-shell-tray"


# --- the Wayland session, where the program comes up on XWayland ---------------------------------

class WaylandScreen(X11Screen):
    """X11 windows are seen as on any X11 display; picture, pointer and keys are the shell's."""

    KEYS = {"Tab": 0xFF09, "space": 0x20}

    def __init__(self, world, pictures):
        super().__init__(world, pictures)
        evaluate(world, """
            const {Clutter, GLib} = imports.gi;
            const seat = Clutter.get_default_backend().get_default_seat();
            global.pointer = seat.create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
            global.keyboard = seat.create_virtual_device(Clutter.InputDeviceType.KEYBOARD_DEVICE);
            global.now = () => GLib.get_monotonic_time();""")
        self.keys("Tab")  # the first one goes to nobody

    def picture(self, name):
        path = self._pictures / f"{name}.png"
        with_cursor, with_flash = "false", "false"
        self._world.run("gdbus", "call", "--session", "--dest", "org.gnome.Shell",
                        "--object-path", "/org/gnome/Shell/Screenshot", "--method",
                        "org.gnome.Shell.Screenshot.Screenshot", with_cursor, with_flash, path)
        return Picture(path)

    def point_at(self, x, y):
        evaluate(self._world, f"global.pointer.notify_absolute_motion(global.now(), {x}, {y})")

    def press(self, button):
        self._button(button, 1)

    def release(self, button):
        self._button(button, 0)

    def _button(self, number, state):
        evaluate(self._world, f"global.pointer.notify_button(global.now(), {number}, {state})")

    def keys(self, *names):
        for name in names:
            for state in (1, 0):
                evaluate(self._world, "global.keyboard.notify_keyval(global.now(), "
                                      f"{self.KEYS[name]}, {state})")

    def go_to_desktop(self, number):
        evaluate(self._world, f"global.workspace_manager.get_workspace_by_index({number})"
                              ".activate(global.get_current_time())")
        return wait_until(lambda: self.numbers("_NET_CURRENT_DESKTOP") == [number], 3)


def start_wayland_session(world, pictures):
    world.environment.update(XDG_CURRENT_DESKTOP="GNOME", XDG_SESSION_TYPE="wayland",
                             GNOME_SHELL_SESSION_MODE="user")
    world.start_bus()
    prepare(world)
    world.set_setting("org.gnome.mutter", "dynamic-workspaces", "false")
    world.start("gnome-shell", "--headless", "--wayland", "--virtual-monitor",
                f"{SCREEN[0]}x{SCREEN[1]}", "--unsafe-mode")
    leave_overview(world)
    # The shell tells its children where it is.
    for name in ("WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY"):
        answer = evaluate(world, f'imports.gi.GLib.getenv("{name}")')
        world.environment[name] = re.search(r"'\"(.*)\"'", answer).group(1)
    return WaylandScreen(world, pictures)


class GnomeWaylandWindows:
    kind, name, package, part = "window", "gnome-wayland", "gnome-shell", None

    def run(self, world, program, pictures):
        yield from WindowChecks(start_wayland_session(world, pictures), program).all()


class GnomeWaylandTray(ExtensionTray):
    name = "gnome-wayland-tray"

    def run(self, world, program, pictures):
        screen = start_wayland_session(world, pictures)
        yield from TrayChecks(world, self, screen, program).all()
