#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Measures the contrast of what the real program shows, on pictures of both cards, and prints each pair:

    contrast.py BINARY [--high-contrast] [--font "DejaVu Sans"] [--size 10] [--pictures FOLDER]

Text needs 4.5 to 1, edges and marks of controls 3 to 1; 7 and 4.5 where the desktop asks for a high contrast. Ends with
1 when a pair has less. Controls that are disabled are left out.
"""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from collections import Counter

from desk import Desk, Failure, extents, wait_until

SCALE = 3  # so that a stroke is wide enough to reach its colour
SCREEN = (460 * SCALE + 420, 392 * SCALE + 420)
NEEDED = {False: {"text": 4.5, "control": 3.0}, True: {"text": 7.0, "control": 4.5}}


def luminance(colour):
    shares = [value / 255 for value in colour]
    red, green, blue = (s / 12.92 if s <= 0.04045 else ((s + 0.055) / 1.055) ** 2.4 for s in shares)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


class Picture:
    """The screen, asked for in points."""

    def __init__(self, path):
        size = subprocess.run(["identify", "-format", "%w %h", path], capture_output=True, text=True, check=True).stdout
        self.width, self.height = map(int, size.split())
        self.bytes = subprocess.run(["convert", path, "-depth", "8", "rgb:-"], capture_output=True, check=True).stdout

    def colours(self, x, y, width, height):
        """How often each colour stands in a rectangle."""
        count = Counter()
        for row in range(round(y * SCALE), round((y + height) * SCALE)):
            for column in range(round(x * SCALE), round((x + width) * SCALE)):
                at = 3 * (row * self.width + column)
                count[tuple(self.bytes[at:at + 3])] += 1
        return count

    def ground(self, *rectangle):
        return self.colours(*rectangle).most_common(1)[0][0]

    def against(self, ground, *rectangle):
        """The colour in the rectangle that stands out most from the ground; a single pixel may be an accident."""
        often = [colour for colour, count in self.colours(*rectangle).items() if count > 1]
        return max(often, key=lambda colour: contrast(colour, ground))


class Measuring:
    def __init__(self, desk, high, folder):
        self.desk, self.high, self.folder = desk, high, folder
        self.failed = 0

    def look(self, name, still=False):
        """Where nothing moves, what the program has just been told is on the screen when two pictures are the same."""
        path = os.path.join(self.folder, name + ".png")

        def take():
            before = self.picture
            self.desk.desktop.screenshot(path)
            self.picture = Picture(path)
            return not still or before and before.bytes == self.picture.bytes

        self.picture = None
        wait_until(take, "a picture in which nothing moves", poll=0.3)
        print(f"\n{name}")

    def say(self, what, kind, one, other):
        ratio, needed = contrast(one, other), NEEDED[self.high][kind]
        self.failed += ratio < needed
        verdict = "" if ratio >= needed else f"   less than {needed}"
        print("  {:<44} #{:02x}{:02x}{:02x} on #{:02x}{:02x}{:02x} {:6.2f}{}".format(what, *one, *other, ratio, verdict))

    def inside(self, what, kind, rectangle):
        """Text or a mark on its own ground."""
        ground = self.picture.ground(*rectangle)
        self.say(what, kind, self.picture.against(ground, *rectangle), ground)

    def extents(self, role, key):
        return extents(self.desk.recorder.wait_for(role, key))

    def text(self, role, key):
        self.inside(f"{key}: text", "text", self.extents(role, key))

    def mark(self, key):
        """What stands before the text of a label."""
        x, y, width, height = self.extents("label", key)
        ground = self.picture.ground(x, y, width, height)
        first = next(left for left in range(x, x + width)
                     if contrast(self.picture.against(ground, left, y, 1, height), ground) > 1.5)
        self.say(f"{key}: mark", "control", self.picture.against(ground, first, y, 9, height), ground)

    def icon(self, key):
        x, y, width, height = self.extents("button", key)
        self.inside(f"{key}: icon", "control", (x + width * 0.15, y + height * 0.15, width * 0.7, height * 0.7))

    def edge(self, role, key, reach=0, what="edge", rectangle=None):
        """What lies on the way from the card into the control, at the middle of its left side."""
        x, y, _, height = rectangle or self.extents(role, key)
        middle = y + height / 2 - 1
        card = self.picture.ground(x - reach - 5, middle, 2, 2)
        self.say(f"{key}: {what}", "control", self.picture.against(card, x - reach - 0.5, middle, reach + 3, 2), card)


def main_card(measuring):
    recorder = measuring.desk.recorder
    measuring.look("ready")
    for key in ("Preferences", "Help", "Minimise", "Close", "Record"):
        measuring.icon(key)
    measuring.text("label", "Elapsed time")
    measuring.text("label", "Status")
    measuring.text("button", "Input device")
    measuring.edge("button", "Input device")
    measuring.edge("button", "Record")
    recorder.press("Record")
    recorder.wait_status("Recording from .*")
    recorder.wait_elapsed(1)
    measuring.look("recording")
    for key in ("Pause", "Stop"):
        measuring.icon(key)
        measuring.edge("button", key)
    measuring.edge("button", "Record", what="ring")
    measuring.text("label", "Elapsed time")
    measuring.text("label", "Status")
    measuring.mark("Status")
    measuring.text("label", "Output file")
    shutil.rmtree(os.path.join(measuring.desk.home, "Music"))
    recorder.wait_status("The (folder|file) is gone.*")
    measuring.look("warning")
    measuring.text("label", "Status")
    measuring.mark("Status")
    recorder.press("Stop")
    measuring.desk.desktop.xdotool("mousemove", 1, 1)
    recorder.button("Show in Folder")
    measuring.look("stopped")
    measuring.text("button", "Show in Folder")
    measuring.icon("Play")
    measuring.edge("button", "Play")


def preferences(measuring):
    recorder, desktop = measuring.desk.recorder, measuring.desk.desktop
    measuring.desk.open_preferences()
    recorder.wait_for("radio button", "Bitrate target").press()
    wait_until(lambda: recorder.wait_for("slider", "Bitrate").enabled, "the bitrate to be enabled")
    recorder.wait_for("check box", "Restrict encoder to constant bitrate").press()
    measuring.look("preferences", still=True)
    for key in ("Bitrate target", "Quality target"):
        measuring.text("radio button", key)
    x, y, width, height = measuring.extents("radio button", "Bitrate target")
    chosen = measuring.picture.ground(x + 8, y + 3, 4, 4)
    other = measuring.picture.ground(*measuring.extents("radio button", "Quality target"))
    measuring.say("the chosen segment beside the other", "control", chosen, other)
    measuring.edge("radio button", "Bitrate target", 0, "row", (x - 3, y, width, height))
    slider(measuring, "Bitrate")
    for label in ("Bitrate value", "Working folder", "Recording estimate"):
        measuring.text("label", label)
    for check in ("Restrict encoder to constant bitrate", "Show each recording in the file manager"):
        x, y, width, height = measuring.extents("check box", check)
        measuring.inside(f"{check[:24]}...: text", "text", (x + 24, y, width - 24, height))
        measuring.inside(f"{check[:24]}...: tick", "control", (x + 3, y + 2, 11, height - 4))
        measuring.edge("check box", check, what="edge of the box")
    for key in ("Engine quality", "Choose folder", "Show folder", "Done"):
        measuring.text("button", key)
        measuring.edge("button", key)
    measuring.edge("label", "Working folder")
    recorder.wait_for("check box", "Restrict encoder to constant bitrate").press()
    recorder.wait_for("check box", "Show each recording in the file manager").focus()
    desktop.key("Tab")
    wait_until(lambda: recorder.button("Done").focused, "Done to have the focus")
    measuring.look("focus", still=True)
    measuring.edge("button", "Done", 4, "focus ring")
    measuring.edge("check box", "Restrict encoder to constant bitrate", what="edge, not chosen")
    menu(measuring)


def slider(measuring, key):
    x, y, width, height = measuring.extents("slider", key)
    card = measuring.picture.ground(x, y + 1, width, 2)
    parts = {"groove": x + width - 30, "filled part": x + 8}
    for part, left in parts.items():
        measuring.say(f"{key}: {part}", "control", measuring.picture.against(card, left, y + 2, 4, height - 4), card)


def menu(measuring):
    recorder, desktop = measuring.desk.recorder, measuring.desk.desktop
    windows = recorder.windows()
    desktop.key("alt+e")
    wait_until(lambda: recorder.windows() == windows + 1, "the menu")
    desktop.key("Down")
    measuring.look("menu", still=True)
    # Its items come below the box under which it pops up.
    x, y, _, height = measuring.extents("button", "Engine quality")
    for row, what in enumerate(("the chosen item", "another item")):
        measuring.inside(f"menu, {what}: text", "text", (x + 28, y + height + 10 + 28 * row, 60, 20))
    desktop.key("Escape")


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("binary")
    parser.add_argument("--high-contrast", action="store_true")
    parser.add_argument("--font", default="DejaVu Sans")
    parser.add_argument("--size", type=float, default=10)
    parser.add_argument("--pictures")
    return parser.parse_args()


def main():
    options = arguments()
    with Desk(options.binary, SCREEN) as desk, tempfile.TemporaryDirectory() as folder:
        measuring = Measuring(desk, options.high_contrast, options.pictures or folder)
        desk.choose_folder("Music")
        for side in (main_card, preferences):
            with desk.program(options.font, options.size, SCALE, high_contrast=options.high_contrast):
                side(measuring)
    if measuring.failed:
        sys.exit(f"\n{measuring.failed} pairs have too little contrast")
    print("\nEvery pair has the contrast that it needs.")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"The measurement failed: {failure}")
