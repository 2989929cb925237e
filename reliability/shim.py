# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A disk that hangs, dawdles and fails on command, for one program and one folder."""

import os
import tempfile

from bench import BUILD, Failure


LIBRARY = os.path.join(BUILD, "testbed", "libslow_disk.so")


class ShimmedDisk:
    """The folder of the takes in that home is on it; healthy at first."""

    def __init__(self, line=""):
        if not os.path.exists(LIBRARY):
            raise Failure(f"there is no {LIBRARY}")
        self.control = os.path.join(tempfile.mkdtemp(), "faults")
        self.say(line)

    def put_under(self, home):
        """The environment of a program whose disk this is."""
        return {"LD_PRELOAD": LIBRARY, "SLOW_DISK_CONTROL": self.control,
                "SLOW_DISK_FOLDER": os.path.join(home, "Recordings")}

    def say(self, line):
        with open(self.control + ".new", "w") as file:
            file.write(line + "\n" if line else "")
        os.rename(self.control + ".new", self.control)

    def stall(self):
        self.say("all stall")

    def delay(self, milliseconds):
        self.say(f"write delay {milliseconds}")

    def fail(self, calls, error):
        self.say(f"{calls} fail {error}")

    def heal(self):
        self.say("")
