# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The real program on a virtual desktop whose font, scale, direction, contrast and language are chosen, one after
another."""

import contextlib
import os
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
sys.path.insert(0, os.path.join(ROOT, "testbed"))
from recorder import Desktop, Failure, Recorder, SoundServer, wait_until  # noqa: E402, F401

GROUNDS = {"light": ("#E9ECEF", "#CED4DA"), "dark": ("#1D2023", "#121416")}


def extents(control):
    """(x, y, width, height) on the desktop, in points."""
    import pyatspi
    box = control.node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return box.x, box.y, box.width, box.height


def words_of(language):
    """The program's texts in the language, by the English ones."""
    path = os.path.join(ROOT, "translations", f"flipside_{language}.ts")
    if not os.path.exists(path):
        return {}
    messages = xml.etree.ElementTree.parse(path).iter("message")
    return {message.findtext("source"): message.findtext("translation") for message in messages}


class SpeakingRecorder(Recorder):
    """Its controls are found by their English names all the same."""

    def __init__(self, language, *arguments):
        self.words = words_of(language)
        super().__init__(*arguments)

    def wait_for(self, role, key, deadline=20):
        return super().wait_for(role, self.words.get(key, key), deadline)

    def text(self, description):
        return super().text(self.words.get(description, description))


class Desk(contextlib.ExitStack):
    def __init__(self, binary, screen=(1280, 900), ground="light"):
        super().__init__()
        self.binary = os.path.abspath(binary)
        self.desktop = self.enter_context(Desktop(size=screen, background=GROUNDS[ground]))
        self.sound = SoundServer(signal="music")
        self.callback(self.sound.end)
        self.home = tempfile.mkdtemp(dir=self.desktop.folder)
        self.config = os.path.join(self.home, ".config")

    def _write(self, name, text):
        path = os.path.join(self.config, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w") as file:
            file.write(text)

    @contextlib.contextmanager
    def program(self, font="Inter", size=10.0, scale=1.0, mirrored=False, high_contrast=False, language="C"):
        """The font comes from the settings of a desktop that Qt reads by itself, without any animation."""
        self._write("kdeglobals", f"[General]\nfont={font},{size:g},-1,5,50,0,0,0,0,0\n[KDE]\nAnimationDurationFactor=0\n")
        self._write("gtk-3.0/settings.ini",
                    f"[Settings]\ngtk-theme-name={'HighContrast' if high_contrast else 'Adwaita'}\n")
        self.desktop.scale = scale
        environment = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "QT_SCALE_FACTOR": str(scale),
                       "LC_ALL": f"{language}.UTF-8"}
        binary = self._mirrored() if mirrored else self.binary
        self.recorder = SpeakingRecorder(language, self.desktop, self.sound, self.home, binary, environment)
        try:
            wait_until(self.desktop.active_window_geometry, "the card to be the active window")
            yield self.recorder
        finally:
            self.recorder.end()

    def _mirrored(self):
        path = os.path.join(self.desktop.folder, "mirrored")
        with open(path, "w") as file:
            file.write(f'#!/bin/sh\nexec "{self.binary}" -reverse\n')
        os.chmod(path, 0o700)
        return path

    def choose_folder(self, name):
        """For all programs that are started later."""
        folder = os.path.join(self.home, name)
        os.makedirs(folder, exist_ok=True)
        with self.program() as recorder:
            self.open_preferences()
            recorder.press("Choose folder")
            recorder.choose_folder(folder)
            wait_until(lambda: recorder.text("Working folder") == folder, "the folder to be taken")

    def open_preferences(self):
        self.recorder.press("Preferences")
        self.recorder.wait_for_side("Done")

    def picture(self, path, margin=0):
        """The card with so many points of the ground around it."""
        x, y, width, height = self.desktop.active_window_geometry()
        margin = int(margin * self.desktop.scale)
        area = f"{width + 2 * margin}x{height + 2 * margin}+{x - margin}+{y - margin}"
        self.desktop.screenshot(path)
        subprocess.run(["convert", path, "-crop", area, "+repage", path], check=True)
        return path
