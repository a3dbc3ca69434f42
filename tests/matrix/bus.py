"""What goes over the session bus: calls, and a record of all messages."""

import struct
import subprocess
import time
from collections import Counter
from dataclasses import dataclass

METHOD_CALL, METHOD_RETURN, ERROR, SIGNAL = 1, 2, 3, 4

# The fields of a message's header.
MEMBER, REPLY_SERIAL, DESTINATION, SENDER = 3, 5, 6, 7


@dataclass
class Message:
    kind: int
    member: str
    sender: str
    destination: str
    size: int
    body: bytes


def parse(data):
    """One message from its bytes."""
    order = "<" if data[0:1] == b"l" else ">"

    def number(at):
        return struct.unpack_from(order + "I", data, at)[0]

    fields, at = {}, 16
    end = at + number(12)
    while at < end:
        at = (at + 7) & ~7
        code, kind = data[at], chr(data[at + 2])
        at += 4  # the code, and the signature of one letter with its length and its end
        if kind == "g":
            at += data[at] + 2
            continue
        at = (at + 3) & ~3
        if kind == "u":
            fields[code] = number(at)
            at += 4
        else:
            length = number(at)
            fields[code] = data[at + 4:at + 4 + length].decode()
            at += 4 + length + 1
    return Message(data[1], fields.get(MEMBER, ""), fields.get(SENDER, ""),
                   fields.get(DESTINATION, ""), len(data), data[(end + 7) & ~7:])


class Recorder:
    """Records the messages of a bus from its making on."""

    def __init__(self, world):
        self._world = world
        self._path = world.home / f"bus-{time.monotonic_ns()}.pcap"
        with open(self._path, "wb") as file:
            self._process = subprocess.Popen(
                ["dbus-monitor", "--session", "--pcap"], env=world.environment, stdout=file,
                stderr=subprocess.DEVNULL, start_new_session=True)

    def messages(self):
        """All complete messages so far."""
        data = self._path.read_bytes()
        found, at = [], 24  # after the file's own header
        while at + 16 <= len(data):
            length = struct.unpack_from("<I", data, at + 8)[0]
            if at + 16 + length > len(data):
                break
            found.append(parse(data[at + 16:at + 16 + length]))
            at += 16 + length
        return found

    def stop(self):
        self._world.stop(self._process)
        return self.messages()


def signals_from(messages, names):
    """How many signals of which name came from one of these bus names."""
    return Counter(m.member for m in messages if m.kind == SIGNAL and m.sender in names)
