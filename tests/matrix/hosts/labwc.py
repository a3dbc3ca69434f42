"""The labwc compositor."""

from hosts.headless import start_headless
from layer_screen import LEFT_SUPER, ToplevelScreen, start_background
from window_checks import WindowChecks
from world import SCREEN

SETTINGS = """<?xml version="1.0"?>
<labwc_config>
  <desktops number="2"/>
  <keyboard>
    <keybind key="W-F1"><action name="GoToDesktop" to="1"/></keybind>
    <keybind key="W-F2"><action name="GoToDesktop" to="2"/></keybind>
  </keyboard>
  <mouse>
    <default/>
    <context name="Frame">
      <mousebind button="W-Left" action="Press"><action name="Move"/></mousebind>
    </context>
  </mouse>
</labwc_config>
"""


class LabwcScreen(ToplevelScreen):
    def go_to_desktop(self, number):
        self.world.run("wtype", "-M", LEFT_SUPER, "-k", f"F{number + 1}", "-m", LEFT_SUPER)
        return True


class LabwcWindows:
    kind, name, package, part = "window", "labwc", "labwc", None

    def run(self, world, program, pictures):
        world.write(world.config("labwc/rc.xml"), SETTINGS)
        start_headless(world, ["labwc"], "labwc:wlroots")
        world.start_bus()
        width, height = SCREEN
        world.run("wlr-randr", "--output", "HEADLESS-1", "--custom-mode", f"{width}x{height}")
        start_background(world)
        yield from WindowChecks(LabwcScreen(world, pictures), program).all()
