from hosts.tray import Tray

SETTINGS = """[General]
__userfile__=true
panels=panel1

[panel1]
alignment=-1
iconSize=22
panelSize=32
lineCount=1
width=100
width-percent=true
position=Top
desktop=0
plugins=statusnotifier

[statusnotifier]
alignment=Left
type=statusnotifier
"""


class Lxqt(Tray):
    name, package = "lxqt-panel", "lxqt-panel"
    variables = {"XDG_CURRENT_DESKTOP": "LXQt"}
    panel = ("lxqt-panel",)
    items = (0, 0, 400, 32)

    def prepare(self, world):
        world.write(world.config("lxqt/lxqt.conf"),
                    "[General]\nicon_theme=breeze\ntheme=ambiance\n")
        world.write(world.config("lxqt/panel.conf"), SETTINGS)
