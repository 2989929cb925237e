#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Records through a program that is installed in another root, on a private desktop with a sound server of its own, as a
person would: record.py ROOT HOME. It is started as its desktop entry says. ROOT must see this system's /tmp, and HOME must
lie there. A home without settings chooses a folder for its recordings; one that has them is not asked for it again. Prints
what is on the card and in the file.

Where ROOT is a sandbox (it has a /.flatpak-info), the session bus has a portal and nothing else, and choosing the folder,
showing the file and staying awake must go through that.
"""

import os
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "testbed"))
from desktop import Desktop, Failure  # noqa: E402
from recorder import Recorder, SoundServer, StandIns, decoded_seconds  # noqa: E402

ENTRY = "usr/share/applications/io.github.flipside_recorder.Flipside.desktop"


def launcher(root, folder):
    """A program that starts what the desktop entry names, over there."""
    with open(os.path.join(root, ENTRY)) as entry:
        command = next(line for line in entry if line.startswith("Exec=")).strip().removeprefix("Exec=")
    path = os.path.join(folder, "launch")
    with open(path, "w") as script:
        script.write(f'#!/bin/sh\nexec chroot {root} {command} "$@"\n')
    os.chmod(path, 0o755)
    return path


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


def use(recorder, asked_by_card):
    if asked_by_card:
        recorder.record()
    else:
        recorder.click("Record")
        recorder.wait_status("Recording from .*")
    print(recorder.status)
    recorder.wait_elapsed(3)
    recorder.desktop.screenshot(os.path.join(recorder.home, "card.png"))
    recorder.press("Stop")
    recorder.wait_status("Ready")
    seconds = decoded_seconds(recorder.output_file)
    print(f"{recorder.output_file}: {seconds:.1f} s")
    if seconds < 2.5:
        raise Failure(f"three seconds were recorded; {recorder.described()}")
    recorder.end()
    print(recorder.program.log().strip() or "nothing was logged")


def main():
    root, home = map(os.path.abspath, sys.argv[1:3])
    first = not os.path.exists(os.path.join(home, ".config/flipside/flipside.conf"))
    sandboxed = os.path.exists(os.path.join(root, ".flatpak-info"))
    with Desktop() as desktop:
        portal = start_portal(desktop, os.path.join(home, "Recordings")) if sandboxed else StandIns(desktop)
        sound = SoundServer()
        try:
            recorder = Recorder(desktop, sound, home, launcher(root, desktop.folder))
            use(recorder, first and not sandboxed)
        finally:
            sound.end()
        if sandboxed:
            calls = calls_of(desktop, portal)
            print("asked of the portal:", *calls, sep="\n  ")
            needed = [*(["chooser"] if first else []), "awake 4", "asleep", "directory " + recorder.folder]
            for call in needed:
                if not any(said.startswith(call) for said in calls):
                    raise Failure(f"the portal was not asked: {call}")


main()
