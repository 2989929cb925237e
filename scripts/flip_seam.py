#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Compares the card at rest with the first and the last frame of its flip, pixel by pixel, as the screen shows them to a
user of the real program; and keeps a contact sheet of each flip:

    flip_seam.py BINARY FOLDER [DESKTOP[@SCALE]...]

Ends with 1 when a pixel differs by more than 16 levels. Each flip is a slow one, as with the Shift key held.
"""

import argparse
import array
import os
import re
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "testbed"))
from desktop import Desktop, Failure, end_process, wait_until  # noqa: E402

PICOM = ("picom", "--backend", "xrender", "--config", "/dev/null")
DESKTOPS = {
    "picom": {},
    "picom-shadows": {"compositor": (*PICOM, "--shadow")},
    "picom-fades": {"compositor": (*PICOM, "--fading")},
    "picom-shadows-fades": {"compositor": (*PICOM, "--shadow", "--fading")},
    "xfwm4": {"window_manager": ("xfwm4", "--compositor=on"), "compositor": None},
    "kwin_x11": {"window_manager": ("kwin_x11",), "compositor": None},
}
SCALES = (1, 1.25, 1.5, 2)
LEVELS = 16
AROUND = (48, 90)
"""Points beside and above the card that a flip reaches, shadow included."""
FRAMES_PER_SECOND = 25
LATE = 0.045
"""Seconds from what the program draws to what the screen shows, at most."""
AFTER = 0.9
"""Seconds that the screen is watched on after the end, while compositors may fade the flipping window out."""
PICTURES = 12


class Recording:
    """Every frame of a part of the screen: [(seconds since the epoch, red-green-blue bytes)]."""

    def __init__(self, desktop, part):
        x, y, self.width, self.height = part
        self.log = os.path.join(desktop.folder, f"grab-{time.monotonic_ns()}.log")
        self.path = self.log + ".rgb"
        self.process = desktop.spawn(
            ["ffmpeg", "-probesize", "32", "-f", "x11grab", "-draw_mouse", "0", "-framerate", str(FRAMES_PER_SECOND),
             "-video_size", f"{self.width}x{self.height}", "-i", f"{desktop.env['DISPLAY']}+{x},{y}", "-copyts",
             "-fps_mode", "passthrough", "-vf", "showinfo", "-pix_fmt", "rgb24", "-f", "rawvideo", self.path], log=self.log)
        wait_until(lambda: os.path.exists(self.path) and os.path.getsize(self.path), "the first look at the screen")

    def end(self):
        end_process(self.process)
        with open(self.log, errors="replace") as log:
            times = [int(time) / 1e6 for time in re.findall(r"pts: *(\d+)", log.read())]
        size = 3 * self.width * self.height
        with open(self.path, "rb") as file:
            self.frames = [(time, file.read(size)) for time in times]
        os.remove(self.path)
        return self.frames

    def save(self, picture, path):
        subprocess.run(["convert", "-size", f"{self.width}x{self.height}", "-depth", "8", "rgb:-", path], input=picture,
                       check=True)


def largest_difference(a, b):
    """(levels, how many channels differ by more than allowed)"""
    if a == b:
        return 0, 0
    differences = array.array("B", bytes(abs(x - y) for x, y in zip(a, b) if x != y))
    return max(differences), sum(value > LEVELS for value in differences)


class Seam:
    def __init__(self, binary, folder, name, scale):
        self.binary, self.folder, self.name, self.scale = os.path.abspath(binary), folder, name, scale
        self.worst = 0

    def run(self):
        self.desktop = Desktop(**DESKTOPS[self.name], scale=self.scale,
                               size=(int(900 * self.scale), int(760 * self.scale)))
        with self.desktop:
            self.program = self.desktop.start([self.binary], {
                "QT_LOGGING_RULES": "flipside.ui.debug=true", "PULSE_SERVER": "unix:/nonexistent",
                "QT_MESSAGE_PATTERN": "%{time yyyy-MM-ddThh:mm:ss.zzz} %{message}"})
            self.program.wait_for("button", "Preferences")
            wait_until(self.desktop.active_window_geometry, "the card to be active")
            if self.name == "kwin_x11":
                # It begins in the corner of the screen, where KWin answers to the pointer.
                self.desktop.xdotool("getactivewindow", "windowmove", int(150 * self.scale), int(110 * self.scale))
            self.wait_until_at_rest()
            for button, back in (("Preferences", "Done"), ("Done", "Preferences")):
                self.flip(button, back)
            self.program.end()
        return self.worst

    def wait_until_at_rest(self):
        looks = []
        path = os.path.join(self.desktop.folder, "look.ppm")

        def look():
            self.desktop.screenshot(path)
            with open(path, "rb") as file:
                looks.append(file.read())
            time.sleep(0.3)
            return len(looks) > 3 and looks[-1] == looks[-2] == looks[-3]
        wait_until(look, "the desktop to be at rest")

    def part(self):
        window = self.desktop.xdotool("getactivewindow")
        margins = re.findall(r"\d+", self.desktop.ask("xprop", "-id", window, "-notype", "_GTK_FRAME_EXTENTS"))
        left, right, top, bottom = map(int, margins or "0000")
        x, y, width, height = self.desktop.active_window_geometry()
        across, up = (int(length * self.scale) for length in AROUND)
        x, y = x + left - across, y + top - up
        width, height = width - left - right + 2 * across, height - top - bottom + 2 * up
        right, bottom = (int(length * self.scale) for length in (900, 760))
        x, y = max(x, 0), max(y, 0)
        return x, y, min(width, right - x), min(height, bottom - y)

    def moments(self, count):
        """[{what: seconds since the epoch}] of each flip so far."""
        def look():
            found = re.findall(r"(\S+) Flip (begins|turns|rests|ends)\b", self.program.log())
            return len(found) >= 4 * count and found
        found = wait_until(look, "the end of the flip")[-4:]
        return {what: time.mktime(time.strptime(moment[:19], "%Y-%m-%dT%H:%M:%S")) + float(moment[19:])
                for moment, what in found}

    def flip(self, button, back):
        control = self.program.wait_for("button", button)
        box = control.node.queryComponent().getExtents(0)  # on the desktop, in points
        x, y = int(self.scale * (box.x + box.width / 2)), int(self.scale * (box.y + box.height / 2))
        part = self.part()
        self.desktop.xdotool("keydown", "Shift_L")
        # A click on the card's strip takes the ring away that the key has brought up around a control.
        across, up = (int(self.scale * length) for length in AROUND)
        self.desktop.xdotool("mousemove", part[0] + part[2] // 2, part[1] + up + 8, "click", 1)
        recording = Recording(self.desktop, part)
        self.desktop.xdotool("mousemove", x, y)
        time.sleep(0.3)
        pressed = time.time()
        self.desktop.xdotool("click", 1)
        moments = self.moments(1 if button == "Preferences" else 2)
        time.sleep(AFTER)
        frames = recording.end()
        self.desktop.xdotool("keyup", "Shift_L")
        self.program.wait_for("button", back)
        before = [picture for moment, picture in frames if moment < pressed][-1]
        after = frames[-1][1]
        title = f"{self.name}@{self.scale}-{'forward' if button == 'Preferences' else 'back'}"
        for what, rest, start, stop in (
                ("coming up", before, moments["begins"] - 0.04, moments["begins"]),
                ("first frame", before, moments["begins"], moments["turns"]),
                ("last frame", after, moments["rests"] + LATE, moments["ends"]),
                ("going", after, moments["ends"], moments["ends"] + AFTER)):
            seen = [(moment, picture) for moment, picture in frames if start <= moment < stop]
            if not seen and what != "coming up":
                raise Failure(f"{title}: the {what} was not seen")
            if what == "last frame":
                seen = seen[-1:]  # a busy machine still shows the frames before it
            worst = max((largest_difference(rest, picture) for _, picture in seen), default=(0, 0))
            print(f"  {title:32} {what:12} {len(seen):3} looks, {worst[0]:3} levels, {worst[1]} beyond {LEVELS}", flush=True)
            self.worst = max(self.worst, worst[0])
            if worst[0] > LEVELS:
                recording.save(rest, os.path.join(self.folder, f"{title}-{what}-rest.png".replace(" ", "-")))
                recording.save(max(seen, key=lambda look: largest_difference(rest, look[1]))[1],
                               os.path.join(self.folder, f"{title}-{what}-flip.png".replace(" ", "-")))
        self.sheet(recording, [picture for moment, picture in frames
                               if moments["begins"] <= moment <= moments["ends"] + 2 / FRAMES_PER_SECOND], title)

    def sheet(self, recording, pictures, title):
        chosen = [pictures[index * (len(pictures) - 1) // (PICTURES - 1)] for index in range(PICTURES)]
        paths = []
        for index, picture in enumerate(chosen):
            paths.append(os.path.join(self.desktop.folder, f"{index:02}.png"))
            recording.save(picture, paths[-1])
        subprocess.run(["montage", *paths, "-tile", "4x", "-geometry", "+4+4", "-resize", "420x",
                        os.path.join(self.folder, f"{title}.png")], check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("binary")
    parser.add_argument("folder")
    parser.add_argument("desktops", nargs="*")
    options = parser.parse_args()
    binary, folder, wanted = options.binary, options.folder, options.desktops
    os.makedirs(folder, exist_ok=True)
    names = [name if "@" in name else f"{name}@{scale}" for name in wanted or DESKTOPS for scale in SCALES]
    names = list(dict.fromkeys(names))
    if len(names) > 1:
        # The accessibility library connects once a process.
        codes = [subprocess.run(["/usr/bin/python3", __file__, binary, folder, name]).returncode for name in names]
        sys.exit(any(codes))
    name, scale = names[0].split("@")
    sys.exit(Seam(binary, folder, name, float(scale)).run() > LEVELS)


if __name__ == "__main__":
    main()
