# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A disk that hangs, dawdles and fails on command, for one program and one folder."""

import os
import tempfile

from bench import BUILD, Failure


LIBRARY = os.path.join(BUILD, "testbed", "libslow_disk.so")


class ShimmedDisk:
    def use(self, home):
        """The folder of the takes is on this disk."""
        if not os.path.exists(LIBRARY):
            raise Failure(f"there is no {LIBRARY}")
        descriptor, self.control = tempfile.mkstemp(dir=home)
        os.close(descriptor)
        self.environment = {"LD_PRELOAD": LIBRARY,
                            "SLOW_DISK_CONTROL": self.control, "SLOW_DISK_FOLDER": os.path.join(home, "Recordings")}

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
