"""The program under test in a world."""

import re

from waiting import wait_until

SERVICE = "io.github.vantora.Vantora"
OBJECT = "/io/github/vantora/Vantora"


class Program:
    def __init__(self, world, path):
        self._world = world
        self._path = path
        self.process = None

    def start(self, *arguments, **variables):
        """Starts it, and returns when it is on the bus."""
        self.process = self._world.start(self._path, *arguments, **variables)
        if not wait_until(self.bus_names):
            raise RuntimeError("the program did not come onto the bus")

    def stop(self):
        if self.process:
            self._world.stop(self.process)
        self.process = None

    def is_running(self):
        return self.process is not None and self.process.poll() is None

    def call(self, destination, path, method, *arguments):
        return self._world.text("gdbus", "call", "--session", "--timeout", "5", "--dest",
                                destination, "--object-path", path, "--method", method, *arguments)

    def bus_names(self):
        """The names by which messages come from it and go to it; none before it is on the bus."""
        found = re.findall(r"':[^']+'", self.call(
            "org.freedesktop.DBus", "/", "org.freedesktop.DBus.GetNameOwner", self._item_name()))
        return {found[0].strip("'"), self._item_name(), SERVICE} if found else set()

    def _item_name(self):
        return f"org.kde.StatusNotifierItem-{self.process.pid}-1"

    def item_property(self, name):
        return self.call(self._item_name(), "/StatusNotifierItem",
                         "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem", name)

    def title(self):
        """The text of its tray item, such as 🪑 39:59."""
        found = re.search(r"<'(.*)'>", self.item_property("Title"))
        return found.group(1) if found else ""

    def is_paused(self):
        return "⏸" in self.title()

    def act(self, action):
        """Does what launchers and key bindings ask for by name."""
        self.call(SERVICE, OBJECT, "org.freedesktop.Application.ActivateAction", action, "[]", "{}")
