"""A display, a session bus and a home of their own, for one desktop."""

import ctypes
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

from waiting import wait_until

# Variables of the desktop that the matrix itself is started from.
FOREIGN_VARIABLES = (
    "DBUS_SESSION_BUS_ADDRESS", "DESKTOP_SESSION", "DISPLAY", "GTK_MODULES", "KDE_FULL_SESSION",
    "QT_QPA_PLATFORM", "QT_QPA_PLATFORMTHEME", "QT_SCALE_FACTOR", "SESSION_MANAGER",
    "WAYLAND_DISPLAY", "XAUTHORITY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE",
)

SCREEN = (1280, 800)


def adopt_orphans():
    """Makes processes whose parents end our children, so that a world can end all of its own."""
    set_child_subreaper = 36
    ctypes.CDLL(None).prctl(set_child_subreaper, 1)


def descendants():
    """The processes that this one has started, and theirs, the youngest generation last."""
    parents = {}
    for entry in Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                stat = (entry / "stat").read_text()
            except OSError:
                continue
            parents[int(entry.name)] = int(stat.rpartition(")")[2].split()[1])
    found = [os.getpid()]
    for parent in found:
        found += [child for child, of in parents.items() if of == parent]
    return found[1:]


class World:
    """All that is started in it ends with it."""

    def __init__(self, logs):
        """`logs` is the folder for what its programs print."""
        self.logs = Path(logs)
        self.logs.mkdir(parents=True, exist_ok=True)
        self.home = Path(tempfile.mkdtemp(prefix="vantora-desktop-"))
        self.environment = {k: v for k, v in os.environ.items() if k not in FOREIGN_VARIABLES}
        for name, folder in (("HOME", "home"), ("XDG_CONFIG_HOME", "home/.config"),
                             ("XDG_DATA_HOME", "home/.local/share"),
                             ("XDG_CACHE_HOME", "home/.cache"), ("XDG_RUNTIME_DIR", "runtime")):
            path = self.home / folder
            path.mkdir(parents=True, exist_ok=True)
            self.environment[name] = str(path)
        (self.home / "runtime").chmod(0o700)
        self.environment.update(
            LC_ALL="C.UTF-8", NO_AT_BRIDGE="1", GTK_A11Y="none", LIBGL_ALWAYS_SOFTWARE="1",
            GSETTINGS_BACKEND="dconf", CANBERRA_DRIVER="null")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    def config(self, name):
        return Path(self.environment["XDG_CONFIG_HOME"]) / name

    def write(self, path, text):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    # --- programs ---------------------------------------------------------------------------

    def start(self, *arguments, log=None, **variables):
        """Starts a program that goes on. It leads a process group of its own."""
        name = log or Path(str(arguments[0])).name
        with open(self.logs / f"{name}.log", "ab") as output:
            return subprocess.Popen(
                list(map(str, arguments)), env={**self.environment, **variables},
                stdin=subprocess.DEVNULL, stdout=output, stderr=output, start_new_session=True,
                cwd=self.home)

    def run(self, *arguments, timeout=20):
        """Runs a program to its end; what it printed. What it complains of goes to the log."""
        with open(self.logs / "run.log", "ab") as errors:
            return subprocess.run(
                list(map(str, arguments)), env=self.environment, stdin=subprocess.DEVNULL,
                stdout=subprocess.PIPE, stderr=errors, timeout=timeout, cwd=self.home,
                check=False).stdout

    def text(self, *arguments, **options):
        return self.run(*arguments, **options).decode(errors="replace").strip()

    @staticmethod
    def stop(process, seconds=3):
        """Ends a program and what it has started itself."""
        for sign in (signal.SIGTERM, signal.SIGKILL):
            try:
                os.killpg(process.pid, sign)
            except ProcessLookupError:
                pass
            try:
                process.wait(seconds)
                return
            except subprocess.TimeoutExpired:
                pass

    def end(self):
        for sign in (signal.SIGTERM, signal.SIGKILL):
            # The last ones first: those that serve the others outlive them.
            for process in reversed(descendants()):
                try:
                    os.kill(process, sign)
                except ProcessLookupError:
                    pass
            wait_until(self._all_ended, 3)
        shutil.rmtree(self.home, ignore_errors=True)

    @staticmethod
    def _all_ended():
        try:
            while os.waitpid(-1, os.WNOHANG)[0]:
                pass
        except ChildProcessError:
            return True
        return not descendants()

    # --- what programs need -----------------------------------------------------------------

    def start_x_server(self, *options):
        width, height = SCREEN
        read, write = os.pipe()
        with open(self.logs / "Xvfb.log", "ab") as output:
            subprocess.Popen(
                ["Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24",
                 "-nolisten", "tcp", *options],
                pass_fds=[write], env=self.environment, stdout=output, stderr=output,
                start_new_session=True)
        os.close(write)
        with os.fdopen(read) as answer:
            self.environment["DISPLAY"] = ":" + answer.readline().strip()

    def start_bus(self):
        """To be called when the environment stands: the bus starts programs itself."""
        address = f"unix:path={self.environment['XDG_RUNTIME_DIR']}/bus"
        self.start("dbus-daemon", "--session", "--nofork", f"--address={address}")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self._wait_for_socket("bus")

    def start_system_bus(self):
        """An empty system bus, for desktops that do not start without one."""
        path = self.home / "runtime" / "system-bus"
        self.write(self.home / "system-bus.conf", f"""<busconfig>
  <type>system</type>
  <listen>unix:path={path}</listen>
  <policy context="default">
    <allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
  </policy>
</busconfig>
""")
        self.start("dbus-daemon", "--nofork", f"--config-file={self.home}/system-bus.conf",
                   log="system-bus")
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={path}"
        self._wait_for_socket("system-bus")

    def _wait_for_socket(self, name):
        if not wait_until((self.home / "runtime" / name).exists):
            raise RuntimeError(f"{name} does not start")

    def set_setting(self, schema, key, value):
        """Sets a value of GSettings in this world."""
        self.run("gsettings", "set", schema, key, value)
        time.sleep(0.1)
