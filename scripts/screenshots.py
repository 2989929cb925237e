#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Takes the pictures of both cards that the README shows, with the real program, on a light and on a dark ground:

    screenshots.py BINARY FOLDER RECORDINGS

RECORDINGS is the working folder that the pictures show; what is recorded there is removed again.
"""

import argparse
import os
import shutil
import subprocess
import sys

from demo import SCALE, SCREEN, Demo, Desktop, SoundServer
from desk import GROUNDS

ENDINGS = {"light": "", "dark": "-dark"}


class Pictures(Demo):
    def __init__(self, binary, folder, recordings, ground):
        super().__init__(binary, folder)
        self.recordings, self.ground = recordings, ground

    def take(self, name):
        os.replace(self.picture(name), os.path.join(self.folder, f"{name}{ENDINGS[self.ground]}.png"))

    def run(self):
        with Desktop(size=SCREEN, scale=SCALE, background=GROUNDS[self.ground]) as self.desktop:
            sound = SoundServer(signal="music")
            try:
                self.furnish()
                self.start(sound)
                self.recorder.click("Record")
                self.recorder.choose_folder(self.recordings)
                self.recorder.wait_elapsed(5)
                self.take("recording")
                self.recorder.click("Stop")
                self.recorder.turn_over("Preferences", "Done")
                self.take("preferences")
            finally:
                sound.end()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("binary")
    parser.add_argument("folder")
    parser.add_argument("recordings")
    parser.add_argument("ground", nargs="?", choices=GROUNDS, help=argparse.SUPPRESS)
    options = parser.parse_args()
    binary, folder, recordings = options.binary, options.folder, options.recordings
    if options.ground:
        Pictures(binary, folder, recordings, options.ground).run()
        return
    os.makedirs(recordings)
    try:
        # The accessibility library connects once a process.
        for ground in GROUNDS:
            subprocess.run([sys.executable, __file__, binary, folder, recordings, ground], check=True)
    finally:
        shutil.rmtree(recordings)


if __name__ == "__main__":
    main()
