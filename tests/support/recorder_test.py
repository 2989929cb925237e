# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""What tests of the real program have in common. A module of them calls main(); its classes derive from RecorderTest. Run
one by hand with

    recording.py BINARY [unittest arguments]
"""

import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "testbed"))
from desktop import Desktop, Failure, end_process, wait_until  # noqa: E402, F401
from recorder import MICROPHONE, Recorder, SoundServer, StandIns, decoded_seconds  # noqa: E402, F401

OR_MISSED = r"|\d+\.\d s are missing: the sound server stood still"
"""Behind what the status line is to say of a take: a busy machine may really have missed a moment, which is said from then
on in the place of all that is well."""


class RecorderTest(unittest.TestCase):
    # Given by main(); one desktop for all tests of a process, since the accessibility library connects once.
    binary = None
    desktop = None
    stand_ins = None
    pipewire = False  # instead of PulseAudio

    def setUp(self):
        self.sound = SoundServer(self.pipewire)
        self.addCleanup(self.sound.end)
        self.home = tempfile.mkdtemp(dir=self.desktop.folder)
        self.stand_ins.drain()

    def start(self, **environment):
        recorder = Recorder(self.desktop, self.sound, self.home, self.binary, environment)
        self.addCleanup(self.finish, recorder)
        return recorder

    def finish(self, recorder):
        recorder.end()
        log = recorder.program.log()
        self.assertNotIn("Sanitizer", log)
        self.assertNotIn("runtime error", log)

    def recordings(self):
        folder = os.path.join(self.home, "Recordings")
        return [os.path.join(folder, name) for name in sorted(os.listdir(folder))]

    def one_recording(self):
        files = self.recordings()
        self.assertEqual(len(files), 1, files)
        return files[0]


def main():
    RecorderTest.binary = os.path.abspath(sys.argv.pop(1))
    with Desktop() as RecorderTest.desktop:
        RecorderTest.stand_ins = StandIns(RecorderTest.desktop)
        # The accessibility library warns about itself.
        unittest.main(argv=sys.argv + os.environ.get("FLIPSIDE_TESTS", "").split(), verbosity=2,
                      warnings="ignore", failfast="FLIPSIDE_FAIL_FAST" in os.environ)
