"""A pointer of a Wayland compositor that is moved from here, by its virtual pointer protocol."""

import socket
import struct
import time

DISPLAY = 1  # the one object that is there from the start
SYNC, GET_REGISTRY = 0, 1
BIND = 0
GLOBAL = 0
CREATE_VIRTUAL_POINTER = 0
MOTION_ABSOLUTE, BUTTON, FRAME = 1, 2, 4
MANAGER = "zwlr_virtual_pointer_manager_v1"


class WaylandPointer:
    def __init__(self, display, size):
        """`display` is the path of the compositor's socket, `size` that of its screen."""
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(display)
        self._size = size
        self._last_object = DISPLAY
        self._names = {}
        self._registry = self._new_object()
        self._send(DISPLAY, GET_REGISTRY, struct.pack("=I", self._registry))
        self._round_trip()
        manager, self._pointer = self._new_object(), self._new_object()
        interface = MANAGER.encode() + b"\0"
        interface = struct.pack("=I", len(interface)) + interface.ljust((len(interface) + 3) & ~3,
                                                                        b"\0")
        self._send(self._registry, BIND, struct.pack("=I", self._names[MANAGER]) + interface +
                   struct.pack("=II", 1, manager))
        no_seat = 0
        self._send(manager, CREATE_VIRTUAL_POINTER, struct.pack("=II", no_seat, self._pointer))
        self._round_trip()

    def move_to(self, x, y):
        self._request(MOTION_ABSOLUTE, struct.pack("=IIIII", self._now(), x, y, *self._size))

    def press(self, button):
        self._request(BUTTON, struct.pack("=III", self._now(), button, 1))

    def release(self, button):
        self._request(BUTTON, struct.pack("=III", self._now(), button, 0))

    @staticmethod
    def _now():
        return int(time.monotonic() * 1000) & 0xFFFFFFFF

    def _request(self, opcode, arguments):
        self._send(self._pointer, opcode, arguments)
        self._send(self._pointer, FRAME, b"")
        self._round_trip()

    def _new_object(self):
        self._last_object += 1
        return self._last_object

    def _send(self, target, opcode, arguments):
        self._socket.sendall(struct.pack("=II", target, (8 + len(arguments)) << 16 | opcode) +
                             arguments)

    def _receive(self, size):
        data = b""
        while len(data) < size:
            part = self._socket.recv(size - len(data))
            if not part:
                raise RuntimeError("the compositor has closed the connection")
            data += part
        return data

    def _round_trip(self):
        """Waits until the compositor has handled all that was sent."""
        callback = self._new_object()
        self._send(DISPLAY, SYNC, struct.pack("=I", callback))
        while True:
            source, word = struct.unpack("=II", self._receive(8))
            arguments = self._receive((word >> 16) - 8)
            if source == self._registry and word & 0xFFFF == GLOBAL:
                name, length = struct.unpack_from("=II", arguments)
                self._names[arguments[8:8 + length - 1].decode()] = name
            if source == callback:
                return
