"""The screen of the sway compositor as its user sees and uses it."""

import json

from layer_screen import WIDGET, LayerScreen, widget_area
from screen import Area
from waiting import wait_until

WHITE = 255


class SwayScreen(LayerScreen):
    def command(self, *words):
        self.world.run("swaymsg", *words)

    def ask(self, what):
        return json.loads(self.world.text("swaymsg", "-r", "-t", what))

    def _windows(self):
        found, nodes = [], [self.ask("get_tree")]
        for node in nodes:
            nodes += node["nodes"] + node["floating_nodes"]
            if node.get("pid"):
                found.append(node)
        return found

    def area(self, window):
        if window == WIDGET:
            return widget_area(self.picture("looked"))
        boxes = [node["rect"] for node in self._windows() if node["name"] == window]
        return Area(**boxes[0]) if boxes else None

    def active(self):
        return next((node["name"] for node in self._windows() if node["focused"]), None)

    def open_window(self, title, x, y):
        """Opens an ordinary window and gives it the focus."""
        self.start_window(title, WHITE)
        if not wait_until(lambda: self.area(title)):
            raise RuntimeError(f"the window {title} does not open")
        self.command(f'[title="^{title}$"] resize set 360 380, move absolute position {x} {y}')
        self.activate(title)
        return title

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

    def demands_attention(self, _widget):
        return any(node["urgent"] for node in self._windows())

    def watch_focus(self, window):
        return FocusWatch(self.world, window)


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
