"""The screen of a Wayland compositor on which the widget is a surface of the layer shell."""

import time

from hand import Hand
from picture import Picture
from screen import Area
from waiting import wait_until
from wayland_client import Pointer, Toplevels
from world import SCREEN

# Buttons by the numbers that X11 gives them.
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}

WIDGET = "the widget"  # which is no window to the compositor

# The desktop and the other windows are brighter than the widget's card.
DESKTOP = "#bbccdd"
DARK = range(121)

LEFT_SUPER = "logo"


def widget_area(picture):
    """Where the widget is in a picture of the screen."""
    box = picture.box_of(DARK)
    if not box:
        return None
    left, top, width, height = box
    right, middle = left + width, top + height // 2
    # At the small card's corners no long dark row reaches its sides.
    while left > 0 and picture.grey(left - 1, middle) in DARK:
        left -= 1
    while right < picture.width and picture.grey(right, middle) in DARK:
        right += 1
    return Area(left, top, right - left, height)


class LayerScreen(Hand):
    """One of wlroots, which takes pictures and lends a pointer and a keyboard to every program."""

    has_desktops = True  # more than one

    def __init__(self, world, pictures):
        self.world = world
        self._pictures = pictures
        self._pointer = Pointer(world.environment["WAYLAND_DISPLAY"], SCREEN)
        # A keyboard that stays: programs need time to notice one that comes.
        an_hour = 3_600_000
        world.start("wtype", "-s", an_hour, "-k", "Escape")

    def picture(self, name):
        path = self._pictures / f"{name}.png"
        self.world.run("grim", path)
        return Picture(path)

    # --- pointer and keys -------------------------------------------------------------------

    def point_at(self, x, y):
        self._pointer.move_to(x, y)
        time.sleep(0.01)

    def press(self, button):
        self._pointer.press(BUTTONS[button])

    def release(self, button):
        self._pointer.release(BUTTONS[button])

    def keys(self, *names):
        self.world.run("wtype", *(word for name in names for word in ("-k", name)))

    # --- windows ----------------------------------------------------------------------------

    def widget(self):
        return WIDGET if self.area(WIDGET) else None

    def work_area(self):
        return Area(0, 0, *SCREEN)

    def start_window(self, title, grey):
        """Starts an ordinary program with a window of one grey, which writes down its keys."""
        colour = f"{grey:02x}" * 3
        self.world.start("foot", "-T", title, "-w", "360x380", "-o", f"colors.background={colour}",
                         "-o", f"cursor.color={colour} {colour}", "-o", "csd.preferred=none",
                         "sh", "-c", f"stty raw -echo; exec cat >'{self._keys_of(title)}'")

    def _keys_of(self, title):
        return self.world.home / f"keys-{title}"

    def activate(self, window):
        area = self.area(window)
        self.click(area.x + 10, area.y + 10)
        return wait_until(lambda: self.active() == window, 3)

    def raise_window(self, window):
        self.activate(window)

    def kind_of(self, _widget):
        return "X11 window" if "Vantora" in self.states(None) else "layer surface"

    def is_out_of_task_bar(self, _widget):
        return "Vantora" not in self.states(None)

    def ask_for_keyboard(self, _widget, program):
        program.act("focus-widget")

    def has_keyboard(self, window):
        """Whether a key arrives there; for the widget, whether it arrives in no other window."""
        def typed():
            return {path: path.stat().st_size for path in self.world.home.glob("keys-*")}
        before = typed()
        self.keys("x")
        wait_until(lambda: typed() != before, 1)
        now = typed()
        arrived = [path for path in now if now[path] != before.get(path)]
        return arrived == ([] if window == WIDGET else [self._keys_of(window)])


class ToplevelScreen(LayerScreen):
    """One whose windows are known by the protocol for task bars, and seen by their greys."""

    GREYS = (255, 245)

    def __init__(self, world, pictures):
        super().__init__(world, pictures)
        self._windows = Toplevels(world.environment["WAYLAND_DISPLAY"])
        self._greys = {}

    def area(self, window):
        picture = self.picture("looked")
        if window == WIDGET:
            return widget_area(picture)
        box = picture.box_of([self._greys[window]])
        return Area(*box) if box else None

    def active(self):
        return self._windows.active()

    def states(self, _window):
        return [window.title for window in self._windows.all()]

    def demands_attention(self, _widget):
        """Whether it does so that protocol does not tell."""

    def open_window(self, title, x, y):
        """Opens an ordinary window and gives it the focus."""
        self._greys[title] = self.GREYS[len(self._greys)]
        self.start_window(title, self._greys[title])
        if not wait_until(lambda: self._windows.named(title) and self.area(title)):
            raise RuntimeError(f"the window {title} does not open")
        time.sleep(0.5)
        self._move_window(title, x, y)
        self.activate(title)
        return title

    def _move_window(self, title, x, y):
        """Drags it by a corner, as the key Super allows; the widget may cover its middle."""
        area = self.area(title)
        start = (area.x + 15, area.y + area.height - 15)
        holder = self.world.start("wtype", "-M", LEFT_SUPER, "-s", 10_000)
        time.sleep(0.5)
        self.drag(start, (x - area.x, y - area.y))
        self.world.stop(holder)
        time.sleep(0.3)
        if self.area(title).place != (x, y):
            raise RuntimeError(f"{title} is at {self.area(title)} instead of {(x, y)}")

    def make_full_screen(self, window, on):
        self._windows.make_full_screen(window, on)
        return wait_until(lambda: (self.area(window).place == (0, 0)) == on, 3)

    def close(self, window):
        self._windows.close(window)

    def watch_focus(self, window):
        return ToplevelWatch(self._windows, window)


class ToplevelWatch:
    """Counts how often the focus goes to another window."""

    def __init__(self, windows, window):
        self._windows, self._window = windows, window

    def losses(self):
        self._windows.all()  # with the news of all that has happened
        return sum(title != self._window for title in self._windows.active_ones)


def start_background(world):
    """A desktop that is brighter than the widget, behind all windows. It is a picture: of a single
    colour swaybg makes a single pixel, of which some compositors make a gradient."""
    width, height = SCREEN
    picture = world.home / "desktop.png"
    world.run("convert", "-size", f"{width}x{height}", f"xc:{DESKTOP}", picture)
    world.start("swaybg", "-m", "tile", "-i", picture)
