#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Records through a program that is installed in another root, on a private desktop with a sound server of its own, as a
person would: record.py ROOT HOME. It is started as its desktop entry says. ROOT must see this system's /tmp, and HOME must
lie there. A home without settings presses Record and chooses a folder; one that has them takes Record from the launcher's
menu, and must not be asked again. A second take is made with a key of the desktop. Prints what is on the card and in the
files.

Where ROOT is a sandbox (it has a /.flatpak-info), the session bus has a portal and nothing else, and choosing the folder,
showing the file and staying awake must go through that.
"""

import configparser
import os
import re
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "testbed"))
from desktop import Desktop, Failure, wait_until  # noqa: E402
from recorder import Recorder, SoundServer, StandIns, decoded_seconds  # noqa: E402

ENTRY = "usr/share/applications/io.github.flipside_recorder.Flipside.desktop"
OPENBOX = "/etc/xdg/openbox/rc.xml"


def launcher(root, folder, group):
    """A program that starts what this group of the desktop entry names, over there."""
    entry = configparser.ConfigParser(interpolation=None)
    entry.read(os.path.join(root, ENTRY))
    path = os.path.join(folder, group.replace(" ", "-"))
    with open(path, "w") as script:
        script.write(f'#!/bin/sh\nexec chroot {root} {entry[group]["Exec"]} "$@"\n')
    os.chmod(path, 0o755)
    return path


def with_key(command, folder):
    """A window manager that runs the command at Super+R."""
    with open(OPENBOX) as usual:
        settings = usual.read()
    key = f'<keybind key="W-r"><action name="Execute"><command>{command}</command></action></keybind>'
    path = os.path.join(folder, "rc.xml")
    with open(path, "w") as own:
        own.write(settings.replace("<keyboard>", "<keyboard>" + key, 1))
    return "openbox", "--config-file", path


def start_portal(desktop, folder):
    portal = desktop.spawn([os.path.join(HERE, "portal.py"), folder], stdout=subprocess.PIPE, text=True)
    if portal.stdout.readline().strip() != "ready":
        raise Failure("the portal did not start: " + desktop.log("portal.py"))
    return portal


def calls_of(desktop, portal):
    """What the portal was asked for until now."""
    desktop.processes.remove(portal)
    portal.terminate()
    return [line.strip() for line in portal.communicate(timeout=5)[0].splitlines()]


def check_take(recorder):
    recorder.wait_status("Ready")
    seconds = decoded_seconds(recorder.output_file)
    print(f"{recorder.output_file}: {seconds:.1f} s")
    if seconds < 2.5:
        raise Failure(f"three seconds were recorded; {recorder.described()}")


def use(recorder, first, sandboxed):
    if first and not sandboxed:
        recorder.record()
    elif first:
        recorder.click("Record")
    recorder.wait_status("Recording from .*")
    print(recorder.status)
    recorder.wait_elapsed(3)
    recorder.desktop.screenshot(os.path.join(recorder.home, "card.png"))
    recorder.press("Stop")
    check_take(recorder)

    recorder.desktop.key("super+r")
    recorder.wait_status("Recording from .*")
    # Until it is told of the first sound the card shows how long the last take was.
    wait_until(lambda: recorder.elapsed < 2, "the clock to begin anew")
    recorder.wait_elapsed(3)
    recorder.desktop.key("super+r")
    check_take(recorder)
    recorder.end()
    print(recorder.program.log().strip() or "nothing was logged")


def main():
    root, home = map(os.path.abspath, sys.argv[1:3])
    first = not os.path.exists(os.path.join(home, ".config/flipside/flipside.conf"))
    sandboxed = os.path.exists(os.path.join(root, ".flatpak-info"))
    with tempfile.TemporaryDirectory() as folder:
        start = launcher(root, folder, "Desktop Entry")
        record = launcher(root, folder, "Desktop Action record")
        with Desktop(with_key(start + " --toggle", folder)) as desktop:
            portal = start_portal(desktop, os.path.join(home, "Recordings")) if sandboxed else StandIns(desktop)
            sound = SoundServer()
            try:
                use(Recorder(desktop, sound, home, start if first else record), first, sandboxed)
            finally:
                sound.end()
            if sandboxed:
                judge(calls_of(desktop, portal), home, first)


def judge(calls, home, first):
    print("asked of the portal:", *calls, sep="\n  ")
    # A descriptor's path is seen from outside the root.
    shown = "directory .*" + os.path.join(home, "Recordings")
    for call in [*(["chooser"] if first else []), "awake 4", "asleep", shown]:
        if not any(re.match(call, said) for said in calls):
            raise Failure(f"the portal was not asked: {call}")


main()
