#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""From the start of a process that has a command for the card to its end, when the command has been carried out:

    commands.py BUILD_FOLDER [TRIES]

The card stands on a private desktop, with a private sound server. "--version" asks no card: it is what the process
itself takes.
"""

import os
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "testbed"))
from recorder import Recorder, SoundServer, StandIns  # noqa: E402
from desktop import Desktop  # noqa: E402

TRIES = 20
COMMANDS = (("--version", "--version"), ("--status", "--status"), ("--toggle", "--toggle, starts"),
            ("--pause", "--pause"), ("--record", "--record, goes on"), ("--toggle", "--toggle, stops"))


def milliseconds(program, command, environment):
    began = time.monotonic()
    subprocess.run([program, command], env=environment, stdout=subprocess.DEVNULL, timeout=10, check=True)
    return (time.monotonic() - began) * 1000


def main():
    program = os.path.join(sys.argv[1], "app", "flipside")
    tries = int(sys.argv[2]) if len(sys.argv) > 2 else TRIES
    times = {name: [] for _, name in COMMANDS}
    with Desktop() as desktop:
        sound = SoundServer()
        StandIns(desktop)  # or each take would be shown by starting a program
        try:
            with tempfile.TemporaryDirectory(dir=desktop.folder) as home:
                recorder = Recorder(desktop, sound, home, program)
                recorder.record()
                recorder.press("Stop")
                recorder.wait_status("Ready")
                # A desktop starts programs without the accessibility that the tests need.
                environment = {name: value for name, value in desktop.env.items()
                               if name != "QT_LINUX_ACCESSIBILITY_ALWAYS_ON"}
                for _ in range(tries):
                    for command, name in COMMANDS:
                        times[name].append(milliseconds(program, command, environment))
                recorder.end()
        finally:
            sound.end()
    print(f"| command, {tries} tries | median | worst |\n|---|---:|---:|")
    for name, values in times.items():
        print(f"| {name} | {statistics.median(values):.1f} ms | {max(values):.1f} ms |")


if __name__ == "__main__":
    main()
