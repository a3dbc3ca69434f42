"""Window managers of X11."""

from screen import X11Screen
from waiting import wait_until
from window_checks import WindowChecks

# A panel that takes a strip of the work area and shows all windows that do not stay out of it.
PANEL = """
panel_items = T
panel_size = 100% 28
panel_position = top center horizontal
panel_background_id = 1
panel_dock = 0
strut_policy = follow_size
taskbar_mode = single_desktop
task_text = 1
task_icon = 0
background_color = #335577 100
"""


class WindowManager:
    kind = "window"
    part = None  # of the screen, to be shown: all of it
    package = None  # the one whose version the table names
    variables = {}
    window_manager = ()

    def prepare(self, world):
        """Writes settings and starts what the window manager needs."""

    def run(self, world, program, pictures):
        """Yields the name and the check of each behaviour."""
        world.environment.update(self.variables)
        world.start_x_server()
        world.start_bus()
        screen = X11Screen(world, pictures)
        self.prepare(world)
        world.start(*self.window_manager)
        if not wait_until(lambda: screen.property(None, "_NET_SUPPORTING_WM_CHECK"), 20):
            raise RuntimeError("the window manager does not start")
        self.make_desktops(world)
        world.write(world.config("tint2/tint2rc"), PANEL)
        world.start("tint2")
        if not wait_until(lambda: screen.numbers("_NET_WORKAREA")[1:2] > [0]):
            raise RuntimeError("the panel takes no room")
        yield from WindowChecks(screen, program).all()

    def make_desktops(self, world):
        world.run("wmctrl", "-n", "3")


class Openbox(WindowManager):
    name, package = "openbox", "openbox"
    window_manager = ("openbox",)


class Xfwm4(WindowManager):
    name, package = "xfwm4", "xfwm4"
    window_manager = ("xfwm4", "--compositor=on")


class KWin(WindowManager):
    name, package = "kwin", "kwin-x11"
    variables = {"XDG_CURRENT_DESKTOP": "KDE", "KWIN_COMPOSE": "N"}
    window_manager = ("kwin_x11",)

    def make_desktops(self, world):
        world.run("gdbus", "call", "--session", "--dest", "org.kde.KWin", "--object-path",
                  "/VirtualDesktopManager", "--method",
                  "org.kde.KWin.VirtualDesktopManager.createDesktop", "1", "two")


class Mutter(WindowManager):
    name, package = "mutter", "mutter"
    window_manager = ("mutter", "--x11", "--sm-disable")


ALL = (Openbox, Xfwm4, KWin, Mutter)
