#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The program's card turns over to its preferences and back, watched on the screen of a whole desktop.

    flip_on_desktop.py BINARY DESKTOP
"""

import os
import re
import subprocess
import sys
import tempfile
import threading
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "testbed"))
from desktop import Desktop, Failure, end_process, wait_until  # noqa: E402
from recorder import StandIns  # noqa: E402

DESKTOPS = {
    "openbox": {},
    "openbox-2x": {"scale": 2, "size": (2560, 1800)},
    "without-compositor": {"compositor": None},
    "without-animations": {},
    "xfwm4": {"window_manager": ("xfwm4", "--compositor=on"), "compositor": None},
}
CARD = (460, 392)
# In points from the card's corner: places beside the axis of the turn, without a control on both cards, which only a
# narrow card leaves; and above the card, where only the half reaches that is nearer to the eye.
BESIDE, ABOVE = [(160, 33), (190, 33), (270, 33), (300, 33)], [(100, -6), (360, -6)]
NARROW = 0.46
"""Part of a flip for which the card may be away from a place beside the axis. Half a flip is longer, and windows
are exchanged further apart than that."""
ENOUGH = 2
"""Places beside the axis of which something must have been seen."""
JUDGED_WITHIN = 50
"""Seconds in which there must have been a flip each way of which enough was seen."""
FADE = 0.25
"""Seconds that the screen is watched on after the end, while the flipping window fades."""


def is_card(colour):
    return all(abs(a - b) <= 8 for a, b in zip(colour, (0x32, 0x38, 0x3E)))


def is_black(colour):
    """Darker than the desktop under the shadow, and than the card."""
    return max(colour) < 0x18


class Watch:
    """Looks at a part of the screen a hundred times a second, from now until its end, as a user sees it. The part is
    (x, y, width, height) in pixels, the places are in it."""

    def __init__(self, desktop, part, places):
        x, y, width, height = part
        self.log = tempfile.mkstemp(dir=desktop.folder)[1]
        self.process = desktop.spawn(
            ["ffmpeg", "-probesize", "32", "-f", "x11grab", "-draw_mouse", "0", "-framerate", "100", "-video_size",
             f"{width}x{height}", "-i", f"{desktop.env['DISPLAY']}+{x},{y}", "-fps_mode", "passthrough", "-vf", "showinfo",
             "-pix_fmt", "rgb24", "-f", "rawvideo", "-"], log=self.log, stdout=subprocess.PIPE)
        self.size = 3 * width * height
        self.starts = [3 * (width * down + across) for across, down in places]
        self.looks = []
        self.thread = threading.Thread(target=self._look)
        self.thread.start()
        wait_until(lambda: self.looks, "the first look at the screen")

    def _look(self):
        while len(picture := self.process.stdout.read(self.size)) == self.size:
            self.looks.append([tuple(picture[start:start + 3]) for start in self.starts])

    def end(self):
        """[(milliseconds, [(red, green, blue) of each place])]"""
        end_process(self.process)
        self.thread.join()
        with open(self.log, errors="replace") as log:
            times = [round(1000 * float(time)) for time in re.findall(r"pts_time:([\d.]+)", log.read())]
        return list(zip(times, self.looks))


class Looks:
    """What was seen at the places: {place: [(milliseconds, (red, green, blue))]}."""

    def __init__(self, looks):
        if len(looks) < 25:
            raise Failure(f"only {len(looks)} looks at the screen are too few to see a flicker")
        self.count, self.begin, self.end = len(looks), looks[0][0], looks[-1][0]
        self.seen = {place: [(time, colours[i]) for time, colours in looks] for i, place in enumerate(BESIDE + ABOVE)}

    def times(self, place, condition):
        return [time for time, colour in self.seen[place] if condition(colour)]

    def judge(self, forward, duration, longest):
        """Whether enough was seen; fails when that is wrong. The milliseconds are those that the program gave for the flip
        and for its longest frame. What was not seen at all is no fault yet: a compositor that gets no processor shows
        nothing of it, and the program cannot know."""
        black = {place: self.times(place, is_black) for place in BESIDE + ABOVE}
        if any(black.values()):
            raise Failure(f"a window without content was seen between {self.begin} and {self.end} ms: {black}")
        judged = [place for place in BESIDE if self.judge_place(place, duration, longest)]
        return self.judge_direction(forward) and len(judged) >= ENOUGH

    def judge_place(self, place, duration, longest):
        away = self.times(place, lambda colour: not is_card(colour))
        if not away:
            return False
        if away[-1] - away[0] > NARROW * duration + longest or away[0] == self.begin or away[-1] == self.end:
            seen = [look for look in self.seen[place] if not is_card(look[1])]
            raise Failure(f"the card was away from {place} between {self.begin} and {self.end} ms: {seen}")
        return True

    def judge_direction(self, forward):
        left, right = (self.times(place, is_card) for place in ABOVE)
        first, second = (left, right) if forward else (right, left)
        if not (first and second):
            return False
        if first[-1] > second[0]:
            raise Failure(f"the card reached above itself at {left} on the left, at {right} on the right")
        return True


class Flip:
    def __init__(self, binary, desktop):
        self.desktop = desktop
        self.program = desktop.start([binary], {"QT_LOGGING_RULES": "flipside.ui.debug=true",
                                                "PULSE_SERVER": "unix:/nonexistent"})
        self.program.wait_for("button", "Preferences")
        # Where the window manager has put it, and nobody else.
        self.place = wait_until(self.card, "the card to be active")
        # Until a compositor that has just come has its first picture ready, all that is transparent is black.
        wait_until(lambda: "black" not in self.corner(), "the compositor's first picture")

    def card(self):
        """The frame of the active window's card, without the margins for its shadow; None while there is none."""
        geometry = self.desktop.active_window_geometry()
        if not geometry:
            return None
        window = self.desktop.xdotool("getactivewindow")
        margins = re.findall(r"\d+", self.desktop.ask("xprop", "-id", window, "-notype", "_GTK_FRAME_EXTENTS"))
        left, right, top, bottom = map(int, margins or "0000")
        x, y, width, height = geometry
        return x + left, y + top, width - left - right, height - top - bottom

    def windows(self):
        return len(self.desktop.xdotool("search", "--onlyvisible", "--pid", self.program.pid).split())

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
        if self.card() != self.place or self.place[2:] != tuple(self.desktop.scale * length for length in CARD):
            raise Failure(f"the card is at {self.card()} instead of {self.place}")

    def turn(self, button, title, forward):
        ended, scale = len(self.flips()), self.desktop.scale
        part = [self.place[0], self.place[1] - 10 * scale, self.place[2], 50 * scale]
        watch = Watch(self.desktop, part, [(x * scale, (y + 10) * scale) for x, y in BESIDE + ABOVE])
        self.press(button, title)
        wait_until(lambda: len(self.flips()) > ended, "the end of the flip")
        time.sleep(FADE)
        looks = Looks(watch.end())
        print(f"  {looks.count} looks, {self.flips()[-1]}")
        seconds, longest = re.fullmatch(r".* in ([\d.]+) s,.* took ([\d.]+) ms", self.flips()[-1]).groups()
        self.check_place()
        return looks.judge(forward, 1000 * float(seconds), float(longest))

    def turn_until_judged(self):
        """There and back, and again as long as a busy machine has not shown enough."""
        begin, judged = time.monotonic(), [False, False]
        while not all(judged):
            if time.monotonic() - begin > JUDGED_WITHIN:
                raise Failure("the flip could not be judged: this machine showed too little of it")
            judged[0] |= self.turn("Preferences", "Preferences", forward=True)
            judged[1] |= self.turn("Done", "Flipside", forward=False)

    def margins(self):
        return self.desktop.active_window_geometry()[2] - self.card()[2]

    def corner(self):
        x, y = self.place[:2]
        return self.desktop.ask("import", "-silent", "-window", "root", "-crop", f"1x1+{x}+{y}", "txt:-")[-20:]

    def follow_compositor(self):
        """Round and with a shadow while there is a compositor, and always at its place. A slow flip whose compositor dies
        is over at once: the flipping window would be a black one."""
        square = self.corner()
        compositor = self.desktop.spawn(("picom", "--backend", "xrender", "--config", "/dev/null"))
        wait_until(lambda: self.margins() == 72 and self.corner() != square, "the card's corners to be round")
        self.check_place()
        self.desktop.xdotool("keydown", "Shift_L")
        self.press("Preferences", "Preferences")
        self.desktop.xdotool("keyup", "Shift_L")
        wait_until(lambda: "Flip turns" in self.program.log(), "the card to turn")
        end_process(compositor)
        wait_until(lambda: self.windows() == 1, "the flipping window to be gone", deadline=1)
        wait_until(lambda: self.margins() == 0 and self.corner() == square, "the card's corners to be square")
        self.check_place()


def main():
    binary, name = sys.argv[1:3]
    with Desktop(**DESKTOPS[name]) as desktop:
        if name == "without-animations":
            StandIns(desktop, "--no-animations")
        flip = Flip(binary, desktop)
        if name.startswith("without"):
            for button, title in (("Preferences", "Preferences"), ("Done", "Flipside")):
                flip.press(button, title)
                flip.check_place()
            if flip.flips():
                raise Failure(f"there was a flip: {flip.flips()}")
            if name == "without-compositor":
                flip.follow_compositor()
        else:
            flip.turn_until_judged()
        flip.program.end()


main()
