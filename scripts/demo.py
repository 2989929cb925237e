#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""One whole session on a virtual desktop with a virtual microphone that plays music, driven as a person would.

    demo.py BINARY FOLDER

Saves pictures of every step and the recording in FOLDER, checks the recording with mpg123, and says what it did. Ends
with 1 when anything was not as it should be.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
sys.path.insert(0, os.path.join(ROOT, "testbed"))
from recorder import SAMPLES_PER_SECOND, Desktop, Failure, Recorder, SoundServer, StandIns, decoded, wait_until  # noqa: E402

SCALE = 2
SCREEN = (1440, 1200)
MARGIN = 40 * SCALE
FONTS = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <include ignore_missing="yes">/etc/fonts/fonts.conf</include>
  <match target="pattern"><edit name="family" mode="prepend" binding="strong"><string>Inter</string></edit></match>
</fontconfig>
"""


def say(text):
    print(text, flush=True)


class Demo:
    def __init__(self, binary, folder):
        self.binary = os.path.abspath(binary)
        self.folder = os.path.abspath(folder)
        self.pictures = 0

    def run(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        os.makedirs(self.folder)
        say("A session on a virtual desktop, with a virtual microphone.")
        with Desktop(size=SCREEN, scale=SCALE) as self.desktop:
            sound = SoundServer(signal="music")
            try:
                self.furnish()
                self.start(sound)
                self.session()
            finally:
                sound.end()

    def furnish(self):
        """The font that a desktop would have."""
        fonts = os.path.join(self.desktop.folder, "fonts.conf")
        with open(fonts, "w") as file:
            file.write(FONTS)
        self.environment = {"FONTCONFIG_FILE": fonts}

    def command(self, *command):
        answer = subprocess.run(command, env=self.desktop.env, capture_output=True, text=True)
        if answer.returncode:
            raise Failure(f"{command}: {answer.stderr}")
        return answer.stdout

    def start(self, sound):
        self.stand_ins = StandIns(self.desktop)
        home = tempfile.mkdtemp(dir=self.desktop.folder)
        self.recorder = Recorder(self.desktop, sound, home, self.binary, self.environment)
        self.recorder.folder = self.folder
        wait_until(self.desktop.active_window_geometry, "the card to be the active window")

    def picture(self, name):
        """The active window with some of the ground around it."""
        self.pictures += 1
        path = os.path.join(self.folder, f"{self.pictures}-{name}.png")
        x, y, width, height = self.desktop.active_window_geometry()
        self.desktop.screenshot(path)
        area = f"{width + 2 * MARGIN}x{height + 2 * MARGIN}+{x - MARGIN}+{y - MARGIN}"
        self.command("convert", path, "-crop", area, "+repage", path)
        return path

    def session(self):
        recorder = self.recorder
        say(f'The card is there: "{recorder.status}", input device {recorder.button("Input device").description}.')
        self.picture("ready")
        self.record()
        self.play()
        self.preferences()
        recorder.click("Close")
        if recorder.program.wait_for_exit() != 0:
            raise Failure(f"the program ended with {recorder.program.process.returncode}")
        say("Close: the program ended normally.")

    def record(self):
        recorder = self.recorder
        recorder.click("Record")
        recorder.wait_for("text", "Directory:")
        self.picture("choose-folder")
        recorder.choose_folder(self.folder)
        recorder.wait_status("Recording from .*")
        say(f'Record: the first time it asks for a folder. Chosen: {self.folder}. "{recorder.status}".')
        recorder.wait_elapsed(5)
        self.picture("recording")
        recorder.click("Pause")
        recorder.wait_status("Paused, .*")
        paused_at = recorder.elapsed
        say(f"Pause after {paused_at} s.")
        self.picture("paused")
        recorder.click("Record")
        recorder.wait_elapsed(paused_at + 3)
        recorder.click("Stop")
        recorder.wait_status("Ready")
        for call in ("awake .*", "asleep .*", "awake .*"):
            self.stand_ins.expect(call)
        # The two calls of a stop go to two services.
        asked = {self.stand_ins.expect("(asleep|shown) .*").split()[0] for _ in range(2)}
        if asked != {"asleep", "shown"}:
            raise Failure(f"a stop asked the desktop for {asked}")
        say(f"Record again, and Stop after {recorder.elapsed} s. The file manager was asked to show the file.")
        self.picture("stopped")
        self.check(recorder.output_file, recorder.elapsed)

    def check(self, path, shown):
        sound = decoded(path)
        seconds = len(sound) / SAMPLES_PER_SECOND
        report = subprocess.run(["mpg123", "-t", path], capture_output=True, text=True).stderr
        layer = re.search(r"^MPEG \d.* L \S+", report, re.MULTILINE)[0]
        say(f"mpg123 decodes {os.path.basename(path)} without a complaint: {layer}, {seconds:.2f} s.")
        if abs(seconds - shown) > 0.15:
            raise Failure(f"{shown} s were shown and {seconds} s are in the file")
        peak = max(map(abs, sound)) / 32768
        if peak < 0.1:
            raise Failure(f"the recording is silent: its peak is {peak}")

    def play(self):
        recorder = self.recorder
        recorder.click("Play")
        recorder.wait_status("Playing .*")
        self.picture("playing")
        recorder.wait_status("Ready")
        say("Play: it played to the end.")

    def preferences(self):
        recorder = self.recorder
        recorder.turn_over("Preferences", "Done")
        self.picture("preferences")
        recorder.turn_over("Done", "Preferences")
        say(f"Preferences: the card turned over, and back. Pictures and the recording are in {self.folder}.")


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("binary")
    parser.add_argument("folder")
    given = parser.parse_args()
    try:
        Demo(given.binary, given.folder).run()
    except Failure as failure:
        sys.exit(f"The session failed: {failure}")
