"""The sway compositor, and its usual bar."""

from hosts.headless import start_headless
from hosts.tray import Tray
from layer_screen import DESKTOP
from sway_screen import SwayScreen
from tray_checks import TrayChecks
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


def start_sway(world, pictures):
    """Its screen, once it has come up."""
    settings = world.home / "sway.conf"
    world.write(settings, SETTINGS)
    sockets = start_headless(world, ["sway", "-c", settings], "sway", ("wayland-?", "sway-ipc.*"))
    world.environment["SWAYSOCK"] = sockets[1]
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
