"""The X11 display of a world as its user sees and uses it."""

import re
from dataclasses import dataclass

from hand import Hand
from picture import Picture
from waiting import wait_until

WIDEST_WIDGET = 250  # the program's other window is wider


@dataclass(frozen=True)
class Area:
    x: int
    y: int
    width: int
    height: int

    @property
    def place(self):
        return (self.x, self.y)

    @property
    def center(self):
        return (self.x + self.width // 2, self.y + self.height // 2)


class X11Screen(Hand):
    has_desktops = True  # more than one

    def __init__(self, world, pictures):
        """Pictures go into the folder `pictures`."""
        self._world = world
        self._pictures = pictures

    def picture(self, name):
        path = self._pictures / f"{name}.png"
        self._world.run("import", "-window", "root", path)
        return Picture(path)

    # --- pointer and keys -------------------------------------------------------------------

    def _xdotool(self, *arguments):
        return self._world.text("xdotool", *arguments)

    def _input(self, *arguments):
        """Has the pointer or the keys do something."""
        self._xdotool(*arguments)

    def point_at(self, x, y):
        self._input("mousemove", x, y)

    def press(self, button):
        self._input("mousedown", button)

    def release(self, button):
        self._input("mouseup", button)

    def keys(self, *names):
        self._input("key", *names)

    # --- windows ----------------------------------------------------------------------------

    def property(self, window, name):
        """The value of a property as xprop prints it; empty without one."""
        printed = self._world.text("xprop", *(("-root",) if window is None else ("-id", window)),
                                   name)
        return printed.partition(" = ")[2] or printed.partition("# ")[2]

    def root_windows(self, name):
        return [int(window, 16) for window in
                re.findall(r"0x[0-9a-f]+", self.property(None, name))]

    def numbers(self, name):
        return [int(number) for number in re.findall(r"\d+", self.property(None, name))]

    def stack(self):
        """The windows that the window manager knows, lowest first."""
        return self.root_windows("_NET_CLIENT_LIST_STACKING")

    def active(self):
        return (self.root_windows("_NET_ACTIVE_WINDOW") or [0])[0]

    def focused(self):
        return int(self._xdotool("getwindowfocus", "-f") or 0)

    def work_area(self):
        return Area(*self.numbers("_NET_WORKAREA")[:4])

    def widget(self):
        return self.shown("Vantora", WIDEST_WIDGET)

    def kind_of(self, _widget):
        return "X11 window"

    def states(self, window):
        return set(re.findall(r"_NET_WM_STATE_(\w+)", self.property(window, "_NET_WM_STATE")))

    def area(self, window):
        """Where the window is on the screen; None when it is not on it."""
        printed = self._world.text("xwininfo", "-id", window)
        if "IsViewable" not in printed:
            return None
        values = [re.search(rf"{name}:\s+(-?\d+)", printed) for name in
                  ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
        return Area(*(int(value.group(1)) for value in values)) if all(values) else None

    def shown(self, title, widest):
        """The uppermost window of this title on the screen that is no wider, or None."""
        for window in reversed(self.stack()):
            if self.property(window, "_NET_WM_NAME") == f'"{title}"':
                area = self.area(window)
                if area and area.width <= widest:
                    return window
        return None

    def open_window(self, title, x, y):
        """Opens an ordinary window and gives it the focus."""
        self._world.start("xterm", "-T", title, "-geometry", f"60x25+{x}+{y}", "-bg", "white",
                          "-fg", "black", "-e", "sleep", "3600")
        # xterm names its window only the old way.
        window = wait_until(lambda: next(
            (w for w in self.stack()
             if self.property(w, "WM_NAME") == f'"{title}"' and self.area(w)), None))
        if not window:
            raise RuntimeError(f"the window {title} does not open")
        self.activate(window)
        return window

    def activate(self, window):
        """As a task bar does."""
        self._world.run("wmctrl", "-i", "-a", hex(window))
        return wait_until(lambda: self.active() == window, 3)

    def raise_window(self, window):
        self._xdotool("windowraise", window)

    def make_full_screen(self, window, on):
        """False when it does not become so."""
        self._world.run("wmctrl", "-i", "-r", hex(window), "-b",
                        f"{'add' if on else 'remove'},fullscreen")
        return wait_until(lambda: (self.area(window).place == (0, 0)) == on, 3)

    def is_out_of_task_bar(self, window):
        return {"SKIP_TASKBAR", "SKIP_PAGER"} <= self.states(window)

    def demands_attention(self, window):
        return "DEMANDS_ATTENTION" in self.states(window)

    def watch_focus(self, window):
        return FocusWatch(self._world, window)

    def ask_for_keyboard(self, widget, _program):
        """As a key binding of the desktop does."""
        self.activate(widget)

    def has_keyboard(self, window):
        return self.focused() == window

    def close(self, window):
        self._world.run("wmctrl", "-i", "-c", hex(window))

    def go_to_desktop(self, number):
        self._xdotool("set_desktop", number)
        return wait_until(lambda: self.numbers("_NET_CURRENT_DESKTOP") == [number], 3)


class FocusWatch:
    """Counts how often a window loses the focus."""

    def __init__(self, world, window):
        self._log = world.logs / f"focus-{window}.log"
        self._world = world
        self._log.unlink(missing_ok=True)
        self._process = world.start("xev", "-id", window, "-event", "focus", log=self._log.stem)

    def losses(self):
        # A grab of the keyboard by the window manager takes it for a moment only.
        events = self._log.read_text().split("\n\n")
        return sum("FocusOut" in event and "NotifyNormal" in event and "NotifyPointer" not in event
                   for event in events)

    def stop(self):
        self._world.stop(self._process)
