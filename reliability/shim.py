# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A disk that hangs, dawdles and fails on command, for one program and one folder."""

import os
import tempfile

from bench import BUILD


class ShimmedDisk:
    library = os.path.join(BUILD, "testbed", "libfault_shim.so")

    def use(self, home):
        """The folder of the takes is on this disk."""
        descriptor, self.control = tempfile.mkstemp(dir=home)
        os.close(descriptor)
        self.environment = {"LD_PRELOAD": self.library, "FLIPSIDE_FAULT_CONTROL": self.control,
                            "FLIPSIDE_FAULT_FOLDER": os.path.join(home, "Recordings")}

    def say(self, line):
        with open(self.control + ".new", "w") as file:
            file.write(line + "\n")
        os.rename(self.control + ".new", self.control)

    def stall(self):
        self.say("stall all")

    def delay(self, milliseconds):
        self.say(f"delay write {milliseconds}")

    def fail(self, call, error):
        self.say(f"error {call} {error}")

    def heal(self):
        self.say("")
