"""GNOME Shell, whose tray is an extension."""

import time

from hosts.tray import Tray
from hosts.window_managers import WindowManager
from waiting import wait_until
from world import SCREEN

# It does not while it is still on its way into it.
LEAVE_OVERVIEW = """
if (Main.overview.visible && !Main.overview.animationInProgress) Main.overview.hide();
!Main.overview.visible && !Main.layoutManager._startingUp
"""

EXTENSION = "ubuntu-appindicators@ubuntu.com"


SETTINGS = (("welcome-dialog-last-shown-version", "99"),
            ("disable-extension-version-validation", "true"), ("enabled-extensions", "[]"))


def prepare(world):
    world.start_system_bus()
    for key, value in SETTINGS:
        world.set_setting("org.gnome.shell", key, value)


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


class GnomeTray(OnX11, Tray):
    name, package = "gnome-shell-tray", "gnome-shell-extension-appindicator"
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
