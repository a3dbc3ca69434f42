from hosts.tray import Tray
from packages import version_of

# A panel across the top of the screen with nothing in it but the tray, without entries of its own.
OWN_ENTRIES = ",".join(f"org.kde.plasma.{name}" for name in (
    "battery", "bluetooth", "clipboard", "devicenotifier", "keyboardindicator", "keyboardlayout",
    "manage-inputmethod", "mediacontroller", "networkmanagement", "notifications", "printmanager",
    "volume", "brightness", "nightcolorcontrol", "vault"))
PANEL = f"""[Containments][1]
formfactor=2
immutability=1
lastScreen=0
location=3
plugin=org.kde.panel

[Containments][1][Applets][2]
immutability=1
plugin=org.kde.plasma.systemtray

[Containments][1][Applets][2][Configuration]
SystrayContainmentId=3

[Containments][1][General]
AppletOrder=2

[Containments][3]
formfactor=2
immutability=1
lastScreen=0
location=3
plugin=org.kde.plasma.private.systemtray

[Containments][3][General]
extraItems=
knownItems={OWN_ENTRIES}
"""
THICKNESS = """[PlasmaViews][Panel 1][Defaults]
thickness=32
"""


class Plasma(Tray):
    name, package = "plasmashell", "plasma-workspace"
    window_manager = ("kwin_x11",)
    panel = ("plasmashell", "--no-respawn")

    @property
    def variables(self):
        # 5 or 6: the version without what Debian puts before it.
        version = version_of(self.package).rpartition(":")[2]
        return {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true",
                "KDE_SESSION_VERSION": version.partition(".")[0], "KWIN_COMPOSE": "N",
                "QT_QUICK_BACKEND": "software", "QT_XCB_GL_INTEGRATION": "none"}

    def prepare(self, world):
        world.write(world.config("plasma-org.kde.plasma.desktop-appletsrc"), PANEL)
        world.write(world.config("plasmashellrc"), THICKNESS)
