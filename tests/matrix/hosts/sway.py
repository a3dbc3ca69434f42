"""The sway compositor, and its usual bar."""

import os

from hosts.tray import Tray
from sway_screen import DESKTOP, SwayScreen
from tray_checks import TrayChecks
from waiting import wait_until
from window_checks import WindowChecks
from world import SCREEN

SETTINGS = f"""output HEADLESS-1 resolution {SCREEN[0]}x{SCREEN[1]} position 0 0
output * bg {DESKTOP} solid_color
default_border none
for_window [app_id="foot"] floating enable
"""
WAYBAR = """{"layer": "top", "height": 28, "modules-left": ["tray"],
 "tray": {"icon-size": 21, "spacing": 10}}
"""
NOBODY = 65534


def start_sway(world, pictures):
    """Its screen, once it has come up."""
    folder = world.home / "sway"
    folder.mkdir(mode=0o700)
    settings = world.home / "sway.conf"
    world.write(settings, SETTINGS)
    command = ["sway", "-c", settings]
    if os.geteuid() == 0:
        # It does not run as root.
        os.chown(folder, NOBODY, NOBODY)
        world.home.chmod(0o755)
        command = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups", *command]
    world.environment.update(XDG_CURRENT_DESKTOP="sway", XDG_SESSION_TYPE="wayland")
    world.start(*command, log="sway", XDG_RUNTIME_DIR=str(folder), WLR_BACKENDS="headless",
                WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1")

    def sockets():
        return [next(folder.glob(pattern), None) for pattern in ("wayland-?", "sway-ipc.*")]
    if not wait_until(lambda: all(sockets())):
        raise RuntimeError("sway does not start")
    display, control = map(str, sockets())
    world.environment.update(WAYLAND_DISPLAY=display, SWAYSOCK=control)
    world.start_bus()
    return SwayScreen(world, pictures)


class SwayWindows:
    kind, name, package, part = "window", "sway", "sway", None

    def run(self, world, program, pictures):
        yield from WindowChecks(start_sway(world, pictures), program).all()


class Waybar(Tray):
    name, package = "waybar", "waybar"
    items = (0, 0, 400, 28)

    def run(self, world, program, pictures):
        screen = start_sway(world, pictures)
        world.write(world.config("waybar/config"), WAYBAR)
        self.panel = ("waybar", "-c", world.config("waybar/config"))
        yield from TrayChecks(world, self, screen, program).all()
