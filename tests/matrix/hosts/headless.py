"""Compositors of wlroots without a screen of the machine."""

import os

from waiting import wait_until

NOBODY = 65534


def start_headless(world, command, desktop, sockets=("wayland-?",)):
    """The paths of these sockets, once the compositor has made them."""
    folder = world.home / "compositor"
    folder.mkdir(mode=0o700)
    if os.geteuid() == 0:
        # They do not run as root.
        os.chown(folder, NOBODY, NOBODY)
        world.home.chmod(0o755)
        command = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups", *command]
    world.environment.update(XDG_CURRENT_DESKTOP=desktop, XDG_SESSION_TYPE="wayland")
    world.start(*command, log="compositor", XDG_RUNTIME_DIR=str(folder), WLR_BACKENDS="headless",
                WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1")

    def found():
        return [next(folder.glob(pattern), None) for pattern in sockets]
    if not wait_until(lambda: all(found()), 20):
        raise RuntimeError("the compositor does not start")
    paths = list(map(str, found()))
    world.environment["WAYLAND_DISPLAY"] = paths[0]
    return paths


def write_teller(world, *names):
    """A program for a compositor to start, which writes the values of these variables to the file
    told of the compositor's folder for sockets."""
    teller = world.home / "tell"
    lines = "\n".join(f'echo "${name}"' for name in names)
    world.write(teller, f"""#!/bin/sh
cd "$XDG_RUNTIME_DIR"
{{ {lines}
}} >told.new
mv told.new told
exec sleep infinity
""")
    teller.chmod(0o755)
    return teller
