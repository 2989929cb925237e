#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Prints what the screen reader Orca says while somebody records, on a private desktop, from its own log:

    scripts/spoken.py BINARY

Needs the packages orca and speech-dispatcher, which the tests do not.
"""

import argparse
import os
import re
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "testbed"))
from desktop import Desktop, wait_until  # noqa: E402
from recorder import MICROPHONE, Recorder, SoundServer  # noqa: E402


ORCA = """
import builtins, runpy, shutil, sys
plain = builtins.open
def open_by_lines(file, *arguments, **options):
    return plain(file, *arguments, **({"buffering": 1} if file == sys.argv[-1] else {}), **options)
builtins.open = open_by_lines
runpy.run_path(shutil.which("orca"), run_name="__main__")
"""
"""Its log would come in blocks."""

SILENT_VOICE = {
    "speechd.conf": 'AddModule "silent" "sd_generic" "silent.conf"\nDefaultModule silent\nDefaultLanguage en\n',
    "modules/silent.conf": 'GenericExecuteSynth "true"\nAddVoice "en" "male1" "silent"\n',
}


class Orca:
    def __init__(self, desktop):
        for name, text in SILENT_VOICE.items():
            path = os.path.join(desktop.home, ".config", "speech-dispatcher", name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w") as configuration:
                configuration.write(text)
        self.log = os.path.join(desktop.folder, "orca-debug.log")
        desktop.spawn(["/usr/bin/python3", "-c", ORCA, "--replace", "--debug-file", self.log])
        self.told = 0
        self.wait_for("Screen reader on")

    def said(self):
        if not os.path.exists(self.log):
            return []
        with open(self.log, errors="replace") as log:
            return re.findall(r"SPEECH OUTPUT: '(.*?)'", log.read())

    def wait_for(self, text):
        wait_until(lambda: any(text in line for line in self.said()[self.told:]), f'Orca to say "{text}"', 60, 0.2)

    def hear(self, what, text):
        """Prints what was said until `text` was."""
        self.wait_for(text)
        lines = self.said()
        print(f"{what}:", *(f"\n    {line.strip()}" for line in lines[self.told:]), flush=True)
        self.told = len(lines)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("binary")
    options = parser.parse_args()
    with Desktop() as desktop:
        sound = SoundServer()
        try:
            home, program = tempfile.mkdtemp(dir=desktop.folder), os.path.abspath(options.binary)
            # The folder is known when the reader comes; it would spell what is typed.
            recorder = Recorder(desktop, sound, home, program)
            recorder.record()
            recorder.end()
            orca = Orca(desktop)
            recorder = Recorder(desktop, sound, home, program)
            orca.hear("The card opens", "Record")
            recorder.press("Record")
            orca.hear("Record", f"Recording from {MICROPHONE}")
            recorder.press("Pause")
            orca.hear("Pause", f"Paused, recording from {MICROPHONE}")
            recorder.press("Record")
            orca.hear("Record again", f"Recording from {MICROPHONE}")
            sound.tell("unload " + MICROPHONE)
            orca.hear("The microphone is unplugged", f"No sound is arriving from {MICROPHONE}")
            sound.tell(f"load {MICROPHONE}=tone")
            orca.hear("It is back", f"{MICROPHONE} was away")
            recorder.press("Stop")
            orca.hear("Stop", "Stopped")
            silence = os.path.join(desktop.folder, "silence")
            with open(silence, "wb") as frames:
                frames.write(bytes(48000 * 4))
            sound.tell(f"load Silent={silence}")
            sound.tell("unload " + MICROPHONE)
            orca.hear("Another microphone takes its place", "Silent")
            recorder.press("Record")
            orca.hear("Record, and nothing is heard", "Only silence from Silent")
            recorder.end()
        finally:
            sound.end()


if __name__ == "__main__":
    main()
