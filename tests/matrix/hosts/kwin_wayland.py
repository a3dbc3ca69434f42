"""The Wayland session of KWin, as a window that fills an X11 display."""

import shutil

from picture import Picture
from screen import X11Screen
from waiting import wait_until
from window_checks import WindowChecks
from world import SCREEN


class NestedScreen(X11Screen):
    """X11 windows are those of its XWayland; picture, pointer and keys are the outer display's."""

    def __init__(self, world, pictures, outer):
        super().__init__(world, pictures)
        self._outer = f"DISPLAY={outer}"

    def picture(self, name):
        path = self._pictures / f"{name}.png"
        self._world.run("env", self._outer, "import", "-window", "root", path)
        return Picture(path)

    def _input(self, *arguments):
        self._world.run("env", self._outer, "xdotool", *arguments)


class KWinWaylandWindows:
    kind, name, package, part = "window", "kwin-wayland", "kwin-wayland", None

    def run(self, world, program, pictures):
        world.environment.update(XDG_CURRENT_DESKTOP="KDE", XDG_SESSION_TYPE="wayland",
                                 KWIN_COMPOSE="Q")
        world.start_x_server()
        world.start_bus()
        outer = world.environment["DISPLAY"]
        # A copy has no capabilities, which containers refuse.
        kwin = world.home / "kwin_wayland"
        shutil.copy("/usr/bin/kwin_wayland", kwin)
        told = world.home / "displays"
        names = ("DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY")
        lines = "\n".join(f'echo "${name}"' for name in names)
        tell = f"{{ {lines}\n}} >{told}.new; mv {told}.new {told}"
        world.write(world.home / "tell", f"#!/bin/sh\n{tell}\n")
        (world.home / "tell").chmod(0o700)
        world.start(kwin, "--x11-display", outer, "--width", SCREEN[0], "--height", SCREEN[1],
                    "--no-lockscreen", "--xwayland", world.home / "tell")
        if not wait_until(told.exists, 20):
            raise RuntimeError("the compositor does not start")
        world.environment.update(zip(names, told.read_text().splitlines()))
        screen = NestedScreen(world, pictures, outer)
        world.run("gdbus", "call", "--session", "--dest", "org.kde.KWin", "--object-path",
                  "/VirtualDesktopManager", "--method",
                  "org.kde.KWin.VirtualDesktopManager.createDesktop", "1", "two")
        yield from WindowChecks(screen, program).all()
