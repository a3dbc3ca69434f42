#!/usr/bin/env -S python3 -B
"""Runs the program on the desktops named, or on all, and writes a table of what it does there."""

import argparse
import datetime
import json
import shutil
import signal
import subprocess
import sys
import traceback
from pathlib import Path

from hosts import gnome, window_managers
from hosts.kwin_wayland import KWinWaylandWindows
from hosts.labwc import LabwcWindows
from hosts.lxqt import Lxqt
from hosts.mate import MateIndicators, MateNotificationArea
from hosts.phoc import PhocWindows
from hosts.plasma import Plasma
from hosts.sway import SwayWindows, Waybar
from hosts.xembed import Tint2, Trayer
from hosts.xfce import Xfce
from outcome import Outcome
from packages import version_of
from program import Program
from table import table
from world import World, adopt_orphans

HOSTS = {host.name: host for host in (
    *window_managers.ALL, gnome.GnomeWindows, gnome.GnomeWaylandWindows,
    KWinWaylandWindows, SwayWindows, LabwcWindows, PhocWindows,
    Xfce, Lxqt, MateNotificationArea, MateIndicators, Plasma, gnome.GnomeTray,
    gnome.GnomeWaylandTray, Waybar, Trayer, Tint2)}


def show_together(folder, part, picture):
    """One picture of all those in a folder, of a part of the screen or of all of it."""
    pictures = sorted(folder.glob("[1-9]*.png"))
    if pictures:
        crop = ["-crop", part, "+repage"] if part else []
        subprocess.run(["montage", *crop, *map(str, pictures), "-tile", "4x", "-geometry",
                        "400x>+3+3", "-background", "#808080", str(picture)], check=True)


def checked(behaviour, check):
    try:
        outcome = check()
    except Exception as error:  # a check that breaks is a result, and the next one may work
        traceback.print_exc()
        outcome = Outcome("**no**", f"{type(error).__name__}: {error}")
    print(f"  {behaviour}: {outcome.word} {outcome.seen}", flush=True)
    return {"behaviour": behaviour, "word": outcome.word, "seen": outcome.seen}


def run(host, program_path, folder):
    """The results of one desktop; its pictures and logs go into `folder`."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    result = {"host": host.name, "kind": host.kind, "version": version_of(host.package),
              "date": datetime.date.today().isoformat(), "cells": [], "reason": ""}
    print(f"{host.name} {result['version']}", flush=True)
    with World(folder / "logs") as world:
        try:
            for behaviour, check in host().run(world, Program(world, program_path), folder):
                result["cells"].append(checked(behaviour, check))
        except Exception as error:
            traceback.print_exc()
            result["reason"] = f"{type(error).__name__}: {error}"
    return result


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    parser.add_argument("hosts", nargs="*", metavar="HOST", help=", ".join(HOSTS))
    options = parser.parse_args()
    unknown = set(options.hosts) - set(HOSTS)
    if unknown:
        parser.error(f"no such desktop: {', '.join(sorted(unknown))}")

    adopt_orphans()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    options.output.mkdir(parents=True, exist_ok=True)
    packaged = [name for name, host in HOSTS.items() if version_of(host.package)]
    missing = [name for name in options.hosts or HOSTS if name not in packaged]
    if missing:
        print(f"Not packaged for this system, or not installed: {', '.join(missing)}")
    for name in options.hosts or HOSTS:
        if name in missing:
            continue
        result = run(HOSTS[name], options.program.resolve(), options.output.resolve() / name)
        show_together(options.output / name, HOSTS[name].part, options.output / f"{name}.png")
        (options.output / f"{name}.json").write_text(json.dumps(result, indent=1) + "\n")
    results = [json.loads((options.output / f"{name}.json").read_text())
               for name in HOSTS if (options.output / f"{name}.json").exists()]
    (options.output / "table.md").write_text(table(results))
    print(f"The table is {options.output / 'table.md'}")


main()
