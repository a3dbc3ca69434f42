"""What is asked of a Wayland compositor from here: a pointer, and the list of windows."""

import socket
import struct
import time

DISPLAY = 1  # the one object that is there from the start
SYNC, GET_REGISTRY = 0, 1
ERROR = 0
BIND = 0
GLOBAL = 0


def string(text):
    data = text.encode() + b"\0"
    return struct.pack("=I", len(data)) + data.ljust((len(data) + 3) & ~3, b"\0")


def read_string(data):
    length, = struct.unpack_from("=I", data)
    return data[4:4 + length - 1].decode()


class Connection:
    def __init__(self, display):
        """`display` is the path of the compositor's socket."""
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(display)
        self._last_object = DISPLAY
        self._globals = {}
        self._handlers = {DISPLAY: self._display_event}
        self._registry = self.new_object(self._registry_event)
        self.send(DISPLAY, GET_REGISTRY, struct.pack("=I", self._registry))
        self.round_trip()

    def bind(self, interface, version, handler=None):
        """A new object for a global of the compositor."""
        if interface not in self._globals:
            raise RuntimeError(f"the compositor has no {interface}")
        found = self.new_object(handler)
        self.send(self._registry, BIND, struct.pack("=I", self._globals[interface]) +
                  string(interface) + struct.pack("=II", version, found))
        return found

    def new_object(self, handler=None):
        self._last_object += 1
        self.listen(self._last_object, handler)
        return self._last_object

    def listen(self, target, handler):
        """Has `handler` called with the opcode and the arguments of each event of an object."""
        if handler:
            self._handlers[target] = handler

    def send(self, target, opcode, arguments=b""):
        self._socket.sendall(struct.pack("=II", target, (8 + len(arguments)) << 16 | opcode) +
                             arguments)

    def round_trip(self):
        """Waits until the compositor has handled all that was sent, and handles its events."""
        answers = []
        callback = self.new_object(lambda *_: answers.append(True))
        self.send(DISPLAY, SYNC, struct.pack("=I", callback))
        while not answers:
            source, word = struct.unpack("=II", self._receive(8))
            arguments = self._receive((word >> 16) - 8)
            if source in self._handlers:
                self._handlers[source](word & 0xFFFF, arguments)
        del self._handlers[callback]

    def _receive(self, size):
        data = b""
        while len(data) < size:
            part = self._socket.recv(size - len(data))
            if not part:
                raise RuntimeError("the compositor has closed the connection")
            data += part
        return data

    def _display_event(self, opcode, arguments):
        if opcode == ERROR:
            raise RuntimeError(f"the compositor objects: {read_string(arguments[8:])}")

    def _registry_event(self, opcode, arguments):
        if opcode == GLOBAL:
            self._globals[read_string(arguments[4:])] = struct.unpack_from("=I", arguments)[0]


class Pointer:
    """A pointer of the compositor that is moved from here, by its virtual pointer protocol."""

    CREATE_VIRTUAL_POINTER = 0
    MOTION_ABSOLUTE, BUTTON, FRAME = 1, 2, 4

    def __init__(self, display, size):
        """`size` is that of the compositor's screen."""
        self._connection = Connection(display)
        self._size = size
        manager = self._connection.bind("zwlr_virtual_pointer_manager_v1", 1)
        self._pointer = self._connection.new_object()
        no_seat = 0
        self._connection.send(manager, self.CREATE_VIRTUAL_POINTER,
                              struct.pack("=II", no_seat, self._pointer))
        self._connection.round_trip()

    def move_to(self, x, y):
        self._request(self.MOTION_ABSOLUTE,
                      struct.pack("=IIIII", self._now(), x, y, *self._size))

    def press(self, button):
        self._request(self.BUTTON, struct.pack("=III", self._now(), button, 1))

    def release(self, button):
        self._request(self.BUTTON, struct.pack("=III", self._now(), button, 0))

    @staticmethod
    def _now():
        return int(time.monotonic() * 1000) & 0xFFFFFFFF

    def _request(self, opcode, arguments):
        self._connection.send(self._pointer, opcode, arguments)
        self._connection.send(self._pointer, self.FRAME)
        self._connection.round_trip()


class Finger:
    """A finger on KWin's screen, by its protocol for input that is made up."""

    AUTHENTICATE, DOWN, MOTION, UP, FRAME = 0, 4, 5, 6, 8

    def __init__(self, display):
        self._connection = Connection(display)
        self._input = self._connection.bind("org_kde_kwin_fake_input", 2)
        self._connection.send(self._input, self.AUTHENTICATE, string("matrix") + string("test"))
        self._connection.round_trip()

    def drag(self, start, way, steps=15):
        self._request(self.DOWN, self._place(*start))
        for step in range(1, steps + 1):
            time.sleep(0.01)  # as often as touch screens tell
            self._request(self.MOTION,
                          self._place(*(s + round(w * step / steps) for s, w in zip(start, way))))
        time.sleep(0.1)
        self._request(self.UP)

    @staticmethod
    def _place(x, y):
        return struct.pack("=ii", x * 256, y * 256)

    def _request(self, opcode, place=b""):
        self._connection.send(self._input, opcode, struct.pack("=I", 0) + place)
        self._connection.send(self._input, self.FRAME)
        self._connection.round_trip()


class Toplevel:
    """One window in the list."""

    def __init__(self, identity):
        self.identity = identity
        self.title = ""
        self.states = set()


class Toplevels:
    """The windows that a task bar would show, by the protocol for task bars."""

    TOPLEVEL = 0
    TITLE, STATE, DONE, CLOSED = 0, 4, 5, 6
    CLOSE, SET_FULL_SCREEN, UNSET_FULL_SCREEN = 5, 8, 9
    STATES = {0: "maximized", 1: "minimized", 2: "activated", 3: "full-screen"}

    def __init__(self, display):
        self._connection = Connection(display)
        self._found = {}
        # The title of the window that had the focus after each change of one.
        self.active_ones = []
        self._connection.bind("zwlr_foreign_toplevel_manager_v1", 2, self._manager_event)
        self._connection.round_trip()

    def all(self):
        self._connection.round_trip()
        return list(self._found.values())

    def named(self, title):
        return next((one for one in self.all() if one.title == title), None)

    def active(self):
        return next((one.title for one in self.all() if "activated" in one.states), None)

    def close(self, title):
        self._connection.send(self.named(title).identity, self.CLOSE)
        self._connection.round_trip()

    def make_full_screen(self, title, on):
        on_any_screen = struct.pack("=I", 0)
        self._connection.send(
            self.named(title).identity, self.SET_FULL_SCREEN if on else self.UNSET_FULL_SCREEN,
            on_any_screen if on else b"")
        self._connection.round_trip()

    def _manager_event(self, opcode, arguments):
        if opcode == self.TOPLEVEL:
            identity, = struct.unpack("=I", arguments)
            one = self._found[identity] = Toplevel(identity)
            self._connection.listen(
                identity, lambda opcode, arguments: self._event(one, opcode, arguments))

    def _event(self, one, opcode, arguments):
        if opcode == self.TITLE:
            one.title = read_string(arguments)
        elif opcode == self.STATE:
            count = struct.unpack_from("=I", arguments)[0] // 4
            one.states = {self.STATES.get(state) for state in
                          struct.unpack_from(f"={count}I", arguments, 4)}
        elif opcode == self.DONE:
            if "activated" in one.states:
                self.active_ones.append(one.title)
        elif opcode == self.CLOSED:
            self._found.pop(one.identity, None)
