#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Takes pictures of the main card, to be looked at, with the real program, on a light and on a dark ground:

    screenshots.py BINARY FOLDER RECORDINGS

RECORDINGS is the working folder that the pictures show; what is recorded there is removed again.
"""

import os
import shutil
import subprocess
import sys

from demo import Demo, Desktop, SoundServer

GROUNDS = {"light": ("#E9ECEF", "#CED4DA"), "dark": ("#1D2023", "#121416")}


class Pictures(Demo):
    def __init__(self, binary, folder, recordings, ground, scale):
        super().__init__(binary, folder)
        self.recordings, self.ground, self.scale = recordings, ground, scale

    def take(self):
        with Desktop(size=(720 * self.scale, 600 * self.scale), scale=self.scale,
                     background=GROUNDS[self.ground]) as self.desktop:
            sound = SoundServer(signal="music")
            try:
                self.furnish()
                self.start(sound)
                self.recorder.click("Record")
                self.recorder.choose_folder(self.recordings)
                self.recorder.wait_elapsed(3)
                os.replace(self.picture("recording"),
                           os.path.join(self.folder, f"main-{self.ground}-{self.scale}x.png"))
            finally:
                sound.end()


def main():
    binary, folder, recordings = sys.argv[1:4]
    if len(sys.argv) > 4:
        Pictures(binary, folder, recordings, sys.argv[4], int(sys.argv[5])).take()
        return
    os.makedirs(recordings)
    try:
        # The accessibility library connects once a process.
        for ground in GROUNDS:
            for scale in ("1", "2"):
                subprocess.run([sys.executable, __file__, binary, folder, recordings, ground, scale], check=True)
    finally:
        shutil.rmtree(recordings)


if __name__ == "__main__":
    main()
