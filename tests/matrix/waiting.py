"""Waiting for what foreign programs do."""

import time


def wait_until(condition, seconds=10.0, every=0.05):
    """What `condition` returns once it is true, or its last, false value when the time is over."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value or time.monotonic() > end:
            return value
        time.sleep(every)


def steady(read, seconds=1.0, within=15.0):
    """What `read` returns once it has not changed for `seconds`, or last when `within` is over."""
    end = time.monotonic() + within
    value, since = read(), time.monotonic()
    while time.monotonic() - since < seconds and time.monotonic() < end:
        time.sleep(0.1)
        now = read()
        if now != value:
            value, since = now, time.monotonic()
    return value
