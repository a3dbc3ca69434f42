"""The Wayland session of KWin, as a window that fills an X11 display."""

import json
import shutil
import struct
import time
from pathlib import Path

from bus import Recorder
from hosts.headless import write_teller
from layer_screen import WIDGET, start_background, widget_area
from picture import Picture
from screen import Area, X11Screen
from waiting import wait_until
from wayland_client import Finger
from window_checks import WindowChecks
from world import SCREEN

# Windows without frames: nothing but the widget is dark.
RULES = """[1]
Description=all
noborder=true
noborderrule=2
wmclassmatch=0

[General]
count=1
rules=1
"""

# It says of each window what a task bar asks.
LIST_WINDOWS = """
const all = workspace.windowList ? workspace.windowList() : workspace.clientList();
callDBus("org.vantora.Matrix", "/", "org.vantora.Matrix", "Windows", JSON.stringify(all.map(
    window => ({title: window.caption, demands: window.demandsAttention,
                shown: window.normalWindow && !(window.skipTaskbar && window.skipPager)}))));
"""


class NestedScreen(X11Screen):
    """X11 windows are those of its XWayland, where KWin 5 has the widget as well; picture, pointer
    and keys are the outer display's."""

    def __init__(self, world, pictures, outer):
        super().__init__(world, pictures)
        self._outer = f"DISPLAY={outer}"

    def picture(self, name):
        path = self._pictures / f"{name}.png"
        self._world.run("env", self._outer, "import", "-window", "root", path)
        return Picture(path)

    def _input(self, *arguments):
        self._world.run("env", self._outer, "xdotool", *arguments)

    def work_area(self):
        return Area(0, 0, *SCREEN)

    def finger(self):
        environment = self._world.environment
        return Finger(str(Path(environment["XDG_RUNTIME_DIR"]) / environment["WAYLAND_DISPLAY"]))

    def widget(self):
        return super().widget() or (WIDGET if self.area(WIDGET) else None)

    def area(self, window):
        return widget_area(self.picture("looked")) if window == WIDGET else super().area(window)

    # --- the widget as a surface of the layer shell -----------------------------------------

    def _all_windows(self):
        """What a task bar knows of all windows, those of the layer shell included."""
        script = self._world.home / "list.js"
        self._world.write(script, LIST_WINDOWS)
        recorder = Recorder(self._world)
        time.sleep(0.5)
        self._scripting("loadScript", script, f"list-{time.monotonic_ns()}")
        self._scripting("start")
        time.sleep(0.5)
        answers = [m.body for m in recorder.stop() if m.member == "Windows"]
        if not answers:
            raise RuntimeError("KWin does not tell of its windows")
        length, = struct.unpack_from("=I", answers[0])
        return json.loads(answers[0][4:4 + length])

    def _scripting(self, method, *arguments):
        self._world.run("gdbus", "call", "--session", "--dest", "org.kde.KWin", "--object-path",
                        "/Scripting", "--method", f"org.kde.kwin.Scripting.{method}", *arguments)

    def kind_of(self, window):
        return "layer surface" if window == WIDGET else super().kind_of(window)

    def states(self, window):
        return self._all_windows() if window == WIDGET else super().states(window)

    def is_out_of_task_bar(self, window):
        if window != WIDGET:
            return super().is_out_of_task_bar(window)
        shown = [one["title"] for one in self._all_windows() if one["shown"]]
        return "other" in shown and "Vantora" not in shown

    def demands_attention(self, window):
        if window != WIDGET:
            return super().demands_attention(window)
        return any(one["demands"] for one in self._all_windows())

    def ask_for_keyboard(self, widget, program):
        if widget == WIDGET:
            program.act("focus-widget")
        else:
            super().ask_for_keyboard(widget, program)

    def has_keyboard(self, window):
        return self.active() == 0 if window == WIDGET else super().has_keyboard(window)


class KWinWaylandWindows:
    kind, name, package, part = "window", "kwin-wayland", "kwin-wayland", None

    def run(self, world, program, pictures):
        world.environment.update(XDG_CURRENT_DESKTOP="KDE", XDG_SESSION_TYPE="wayland",
                                 KWIN_COMPOSE="Q", KWIN_WAYLAND_NO_PERMISSION_CHECKS="1")
        world.write(world.config("kwinrulesrc"), RULES)
        world.start_x_server()
        world.start_bus()
        outer = world.environment["DISPLAY"]
        # A copy has no capabilities, which containers refuse.
        kwin = world.home / "kwin_wayland"
        shutil.copy("/usr/bin/kwin_wayland", kwin)
        names = ("DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY")
        told = world.home / "runtime" / "told"
        world.start(kwin, "--x11-display", outer, "--width", SCREEN[0], "--height", SCREEN[1],
                    "--no-lockscreen", "--xwayland", write_teller(world, *names))
        if not wait_until(told.exists, 20):
            raise RuntimeError("the compositor does not start")
        world.environment.update(zip(names, told.read_text().splitlines()))
        screen = NestedScreen(world, pictures, outer)
        world.run("gdbus", "call", "--session", "--dest", "org.kde.KWin", "--object-path",
                  "/VirtualDesktopManager", "--method",
                  "org.kde.KWin.VirtualDesktopManager.createDesktop", "1", "two")
        start_background(world)
        yield from WindowChecks(screen, program).all()
