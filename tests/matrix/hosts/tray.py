"""What the trays of X11 have in common."""

from screen import X11Screen
from tray_checks import LEFT, RIGHT, TrayChecks
from waiting import wait_until
from world import SCREEN


class Tray:
    kind = "tray"
    part = "500x300+0+0"  # of the screen, to be shown
    package = None  # the one whose version the table names
    variables = {}
    window_manager = ("openbox",)
    panel = ()  # the command that starts the tray

    # Where items come, where menus open, and a place for the pointer beside both.
    items = (0, 0, SCREEN[0], 32)
    menus = (0, 32, SCREEN[0], SCREEN[1] - 132)
    aside = (SCREEN[0] // 2, SCREEN[1] - 20)

    # The buttons that open the menu, the usual one first, and what the other one does.
    menu_buttons = (LEFT, RIGHT)
    other_button = ""

    def run(self, world, program, pictures):
        """Yields the name and the check of each behaviour."""
        world.environment.update(self.variables)
        world.start_x_server()
        world.start_bus()
        self.screen = X11Screen(world, pictures)
        self.prepare(world)
        world.start(*self.window_manager)
        if not wait_until(lambda: self.screen.property(None, "_NET_SUPPORTING_WM_CHECK")):
            raise RuntimeError("the window manager does not start")
        yield from TrayChecks(world, self, self.screen, program).all()

    def prepare(self, world):
        """Writes settings and starts what the tray needs."""

    def wait_for_panel(self, is_seen):
        if not wait_until(is_seen, 20, every=0.5):
            raise RuntimeError("the panel does not start")

    def start_tray(self, world):
        self.process = world.start(*self.panel)

    def stop_tray(self, world):
        world.stop(self.process)
