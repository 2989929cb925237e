#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The program's card turns over to its preferences and back, watched on the screen of a whole desktop.

    flip_on_desktop.py BINARY SAMPLER DESKTOP
"""

import os
import re
import subprocess
import sys
import time

TESTBED = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "testbed")
sys.path.insert(0, TESTBED)
from desktop import Desktop, Failure, wait_until  # noqa: E402

DESKTOPS = {
    "openbox": {},
    "openbox-2x": {"scale": 2, "size": (2560, 1800)},
    "without-compositor": {"compositor": None},
    "without-animations": {},
    "xfwm4": {"window_manager": ("xfwm4", "--compositor=on"), "compositor": None},
}
CARD = (460, 392)
CORNER = (400, 260)
# In points from the card's corner: places beside the axis of the turn, without a control on both cards, which only a
# narrow card leaves; and above the card, where only the half reaches that is nearer to the eye.
BESIDE, ABOVE = [(160, 33), (190, 33), (270, 33), (300, 33)], [(100, -6), (360, -6)]
NARROW = 320
"""Milliseconds for which the card may be away from a place beside the axis. Half a flip is longer, and windows
are exchanged further apart than that."""
FADE = 0.25
"""Seconds that the screen is watched on after the end, while the flipping window fades."""


def is_card(colour):
    return all(abs(a - b) <= 8 for a, b in zip(colour, (0x32, 0x38, 0x3E)))


def is_black(colour):
    """Darker than the desktop under the shadow, and than the card."""
    return max(colour) < 0x18


class Looks:
    """What was seen at the places: {place: [(milliseconds, (red, green, blue))]}."""

    def __init__(self, output):
        rows = [list(map(int, line.split())) for line in output.splitlines()]
        if len(rows) < 25:
            raise Failure(f"only {len(rows)} looks at the screen are too few to see a flicker")
        self.count, self.end = len(rows), rows[-1][0]
        self.seen = {place: [(row[0], row[i:i + 3]) for row in rows] for i, place in zip(range(1, 99, 3), BESIDE + ABOVE)}

    def times(self, place, condition):
        return [time for time, colour in self.seen[place] if condition(colour)]

    def check(self, forward):
        if any(self.times(place, is_black) for place in BESIDE + ABOVE):
            raise Failure("a window without content was seen")
        for place in BESIDE:
            away = self.times(place, lambda colour: not is_card(colour))
            if not away or away[-1] - away[0] > NARROW or away[0] == 0 or away[-1] == self.end:
                raise Failure(f"the card was away from {place} at {away}")
        left, right = (self.times(place, is_card) for place in ABOVE)
        first, second = (left, right) if forward else (right, left)
        if not first or not second or first[-1] > second[0]:
            raise Failure(f"the card reached above itself at {left} on the left, at {right} on the right")


class Flip:
    def __init__(self, binary, sampler, desktop):
        self.desktop, self.sampler = desktop, sampler
        self.program = desktop.start([binary], {"QT_LOGGING_RULES": "flipside.ui.debug=true",
                                                "PULSE_SERVER": "unix:/nonexistent"})
        self.program.wait_for("button", "Preferences")
        wait_until(desktop.active_window_geometry, "the card to be active")
        self.corner = tuple(desktop.scale * length for length in CORNER)
        desktop.xdotool("getactivewindow", "windowmove", *self.corner)
        wait_until(lambda: desktop.active_window_geometry()[:2] == self.corner, "the card to be moved")

    def flips(self):
        return re.findall(r"Flip: (.*)", self.program.log())

    def active_title(self):
        try:
            return self.desktop.xdotool("getactivewindow", "getwindowname")
        except Failure:  # while the windows are exchanged
            return ""

    def press(self, button, title):
        self.program.wait_for("button", button).click(self.desktop)
        wait_until(lambda: self.active_title().startswith(title), f"{title} to be active")

    def check_place(self):
        geometry = self.desktop.active_window_geometry()
        if geometry != (*self.corner, *(length * self.desktop.scale for length in CARD)):
            raise Failure(f"the active window is at {geometry}")

    def turn(self, button, title, forward):
        ended, scale = len(self.flips()), self.desktop.scale
        places = [f"{self.corner[0] + x * scale},{self.corner[1] + y * scale}" for x, y in BESIDE + ABOVE]
        watch = subprocess.Popen([self.sampler, "20", " ".join(places)], env=self.desktop.env, stdin=subprocess.PIPE,
                                 stdout=subprocess.PIPE, text=True)
        assert watch.stdout.readline() == "ready\n"
        self.press(button, title)
        wait_until(lambda: len(self.flips()) > ended, "the end of the flip")
        time.sleep(FADE)
        looks = Looks(watch.communicate(timeout=60)[0])
        print(f"  {looks.count} looks, {self.flips()[-1]}")
        looks.check(forward)
        self.check_place()


def main():
    binary, sampler, name = sys.argv[1:4]
    with Desktop(**DESKTOPS[name]) as desktop:
        if name == "without-animations":
            service = desktop.spawn(["/usr/bin/python3", os.path.join(TESTBED, "settings_portal.py")],
                                    stdout=subprocess.PIPE)
            assert service.stdout.readline() == b"ready\n", "the settings service did not start"
        flip = Flip(binary, sampler, desktop)
        if name.startswith("without"):
            for button, title in (("Preferences", "Preferences"), ("Done", "Flipside")):
                flip.press(button, title)
                flip.check_place()
            if flip.flips():
                raise Failure(f"there was a flip: {flip.flips()}")
        else:
            flip.turn("Preferences", "Preferences", forward=True)
            flip.turn("Done", "Flipside", forward=False)
        flip.program.end()


main()
