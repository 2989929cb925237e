#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Records through a program that is installed in another root, on a private desktop with a sound server of its own, as a
person would: record.py ROOT HOME. It is started as its desktop entry says. ROOT must see this system's /tmp, and HOME must
lie there. A home without settings chooses a folder for its recordings; one that has them is not asked for it again. Prints
what is on the card and in the file.
"""

import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "testbed"))
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


def main():
    root, home = map(os.path.abspath, sys.argv[1:3])
    first = not os.path.exists(os.path.join(home, ".config/flipside/flipside.conf"))
    with Desktop() as desktop:
        StandIns(desktop)
        sound = SoundServer()
        try:
            recorder = Recorder(desktop, sound, home, launcher(root, desktop.folder))
            if first:
                recorder.record()
            else:
                recorder.click("Record")
                recorder.wait_status("Recording from .*")
            print(recorder.status)
            recorder.wait_elapsed(3)
            desktop.screenshot(os.path.join(home, "card.png"))
            recorder.press("Stop")
            recorder.wait_status("Ready")
            seconds = decoded_seconds(recorder.output_file)
            print(f"{recorder.output_file}: {seconds:.1f} s")
            if seconds < 2.5:
                raise Failure(f"three seconds were recorded; {recorder.described()}")
            recorder.end()
            print(recorder.program.log().strip() or "nothing was logged")
        finally:
            sound.end()


main()
