"""The phoc compositor of phones."""

from hosts.headless import start_headless, write_teller
from layer_screen import ToplevelScreen, start_background
from waiting import wait_until
from window_checks import WindowChecks
from world import SCREEN

SETTINGS = f"""[output:HEADLESS-1]
mode = {SCREEN[0]}x{SCREEN[1]}
scale = 1
"""
FLOATING = """[sm/puri/phoc]
auto-maximize=false
"""


class PhocScreen(ToplevelScreen):
    has_desktops = False


class PhocWindows:
    kind, name, package, part = "window", "phoc", "phoc", None

    def run(self, world, program, pictures):
        settings = world.home / "phoc.ini"
        world.write(settings, SETTINGS)
        world.write(world.config("glib-2.0/settings/keyfile"), FLOATING)
        start_headless(world, ["env", "GSETTINGS_BACKEND=keyfile", "phoc", "-C", settings, "-E",
                               write_teller(world, "DISPLAY")], "GNOME")
        told = world.home / "compositor" / "told"
        # The program may choose its XWayland.
        if wait_until(told.exists, 20):
            world.environment["DISPLAY"] = told.read_text().strip()
        world.start_bus()
        start_background(world)
        yield from WindowChecks(PhocScreen(world, pictures), program).all()
