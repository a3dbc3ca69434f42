"""Trays that know nothing of the session bus."""

from hosts.tray import Tray
from world import SCREEN

TINT2 = """
panel_items = S
panel_size = 300 28
panel_position = top left horizontal
panel_background_id = 1
systray_padding = 2 2 2
systray_icon_size = 22
background_color = #557799 100
"""


class Trayer(Tray):
    name, package = "trayer", "trayer"
    menus = (30, 0, SCREEN[0] - 30, SCREEN[1] - 100)  # they cover the panel, but not the item
    panel = ("trayer", "--edge", "top", "--align", "left", "--widthtype", "request", "--height",
             "28", "--expand", "false", "--SetDockType", "true", "--tint", "0xaaccee",
             "--transparent", "false")

    def wait_for_panel(self, is_seen):
        """It is not seen before there is something in it."""


class Tint2(Tray):
    name, package = "tint2", "tint2"
    panel = ("tint2",)

    def prepare(self, world):
        world.write(world.config("tint2/tint2rc"), TINT2)
