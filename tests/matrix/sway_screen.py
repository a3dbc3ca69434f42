"""The screen of the sway compositor as its user sees and uses it."""

import json
import time

from picture import Picture
from screen import Area
from waiting import wait_until
from wayland_pointer import WaylandPointer
from world import SCREEN

# Buttons by the numbers that X11 gives them.
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}

WIDGET = "the widget"  # which is no window to the compositor

# The desktop and the other windows are brighter than the widget's card.
DESKTOP = "#bbccdd"
DARK = 120


class SwayScreen:
    def __init__(self, world, pictures):
        self._world = world
        self._pictures = pictures
        self._pointer = WaylandPointer(world.environment["WAYLAND_DISPLAY"], SCREEN)
        # A keyboard that stays: programs need time to notice one that comes.
        an_hour = 3_600_000
        world.start("wtype", "-s", an_hour, "-k", "Escape")

    def picture(self, name):
        path = self._pictures / f"{name}.png"
        self._world.run("grim", path)
        return Picture(path)

    # --- pointer and keys -------------------------------------------------------------------

    def move_to(self, x, y):
        self._pointer.move_to(x, y)

    def click(self, x, y, button=1):
        self.move_to(x, y)
        time.sleep(0.15)
        self._pointer.press(BUTTONS[button])
        time.sleep(0.05)
        self._pointer.release(BUTTONS[button])

    def drag(self, start, way, steps=15):
        self.move_to(*start)
        self._pointer.press(BUTTONS[1])
        time.sleep(0.1)
        for step in range(1, steps + 1):
            self.move_to(*(s + round(w * step / steps) for s, w in zip(start, way)))
            time.sleep(0.02)
        time.sleep(0.1)
        self._pointer.release(BUTTONS[1])

    def keys(self, *names):
        self._world.run("wtype", *(word for name in names for word in ("-k", name)))

    # --- windows ----------------------------------------------------------------------------

    def command(self, *words):
        self._world.run("swaymsg", *words)

    def ask(self, what):
        return json.loads(self._world.text("swaymsg", "-r", "-t", what))

    def _windows(self):
        found, nodes = [], [self.ask("get_tree")]
        for node in nodes:
            nodes += node["nodes"] + node["floating_nodes"]
            if node.get("pid"):
                found.append(node)
        return found

    def widget(self):
        return WIDGET if self.area(WIDGET) else None

    def area(self, window):
        if window == WIDGET:
            box = self.picture("looked").dark_box(DARK)
            return Area(*box) if box else None
        boxes = [node["rect"] for node in self._windows() if node["name"] == window]
        return Area(**boxes[0]) if boxes else None

    def work_area(self):
        return Area(0, 0, *SCREEN)

    def active(self):
        return next((node["name"] for node in self._windows() if node["focused"]), None)

    def open_window(self, title, x, y):
        """Opens an ordinary window and gives it the focus."""
        self._world.start("foot", "-T", title, "-W", "360x380", "-o", "colors.background=ffffff",
                          "-o", "cursor.color=ffffff ffffff", "sleep", "3600")
        if not wait_until(lambda: self.area(title)):
            raise RuntimeError(f"the window {title} does not open")
        self.command(f'[title="^{title}$"] resize set 360 380, move absolute position {x} {y}')
        self.activate(title)
        return title

    def activate(self, window):
        area = self.area(window)
        self.click(area.x + 10, area.y + 10)
        return wait_until(lambda: self.active() == window, 3)

    def raise_window(self, window):
        self.activate(window)

    def make_full_screen(self, window, on):
        self.command(f'[title="^{window}$"] fullscreen {"enable" if on else "disable"}')
        return wait_until(lambda: (self.area(window).place == (0, 0)) == on, 3)

    def close(self, window):
        self.command(f'[title="^{window}$"] kill')

    def go_to_desktop(self, number):
        self.command("workspace", "number", str(number + 1))
        return wait_until(lambda: any(
            space["focused"] and space["num"] == number + 1
            for space in self.ask("get_workspaces")), 3)

    def states(self, _window):
        return [node["name"] for node in self._windows()]

    def is_out_of_task_bar(self, _widget):
        return "Vantora" not in self.states(None)

    def demands_attention(self, _widget):
        return any(node["urgent"] for node in self._windows())

    def watch_focus(self, window):
        return FocusWatch(self._world, window)

    def ask_for_keyboard(self, _widget, program):
        program.act("focus-widget")

    def has_keyboard(self, window):
        return self.active() == (None if window == WIDGET else window)


class FocusWatch:
    """Counts how often the focus goes to another window."""

    def __init__(self, world, window):
        self._log = world.logs / f"focus-{window}.log"
        self._window = window
        world.start("swaymsg", "-m", "-r", "-t", "subscribe", '["window"]', log=self._log.stem)

    def losses(self):
        count = 0
        for line in self._log.read_text().splitlines():
            event = json.loads(line) if line.startswith("{") else {}
            count += event.get("change") == "focus" and \
                event["container"]["name"] != self._window
        return count
