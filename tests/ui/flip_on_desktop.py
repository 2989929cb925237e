#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A flip there and back on a whole desktop, watched on the screen.

    flip_on_desktop.py DEMO SAMPLER WINDOW_MANAGER [--pictures FOLDER]
"""

import ctypes
import os
import subprocess
import sys
import time

TESTBED = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "testbed")
sys.path.insert(0, TESTBED)
from desktop import Desktop, Failure, end_process, wait_until  # noqa: E402

DESKTOPS = {
    "openbox": {},
    "openbox-2x": {"scale": 2, "size": (2560, 1800)},
    "without-compositor": {"compositor": None},
    "without-animations": {},
    "xfwm4": {"window_manager": ("xfwm4", "--compositor=on"), "compositor": None},
}
CARD = (460, 392)
EDGE_ON_MILLISECONDS = 100
"""A few frames, in which the card is so narrow that its middle may be seen beside it."""
NARROW_MILLISECONDS = 320
"""For which the card may be away from a place beside the axis. Half a flip is longer than that."""
EXCHANGE_MILLISECONDS = 300
"""How far from both ends of what is watched that is at least. Nearer to them the windows are exchanged."""
# In points from the card's corner: on both cards a place without a control, on the axis of the turn; two corners,
# which are transparent; and places beside the axis, which only a narrow card leaves.
PLACES = ((230, 42), (1, 1), (458, 390), (160, 42), (190, 42), (270, 42), (300, 42))
BESIDE_AXIS = slice(3, None)
CARD_COLOUR = (0x32, 0x38, 0x3E)
WATCH_DEADLINE = 20
AFTERMATH = 0.25
"""Seconds that the screen is watched on after the end, while the flipping window fades."""


def pointer_is_visible(display):
    class CursorImage(ctypes.Structure):
        _fields_ = [("x", ctypes.c_short), ("y", ctypes.c_short), ("width", ctypes.c_ushort),
                    ("height", ctypes.c_ushort), ("xhot", ctypes.c_ushort), ("yhot", ctypes.c_ushort),
                    ("serial", ctypes.c_ulong), ("pixels", ctypes.POINTER(ctypes.c_ulong))]

    x11, fixes = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXfixes.so.3")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    fixes.XFixesGetCursorImage.restype = ctypes.POINTER(CursorImage)
    connection = ctypes.c_void_p(x11.XOpenDisplay(display.encode()))
    image = fixes.XFixesGetCursorImage(connection).contents
    visible = any(image.pixels[i] & 0xFF000000 for i in range(image.width * image.height))
    x11.XCloseDisplay(connection)
    return visible


def is_card(colour):
    return all(abs(a - b) <= 8 for a, b in zip(colour, CARD_COLOUR))


def is_black(colour):
    """Darker than the desktop under the shadow, and than the card."""
    return max(colour) < 0x18


class Watch:
    """Watches the card's place on the screen from now until its samples are asked for."""

    def __init__(self, desktop, sampler, corner, pictures=None):
        x, y = corner
        places = " ".join(f"{x + across * desktop.scale},{y + down * desktop.scale}" for across, down in PLACES)
        command = [sampler, str(WATCH_DEADLINE), places]
        if pictures:
            command += [*map(str, (x - 100, y - 90, CARD[0] + 200, CARD[1] + 190)), pictures, "12"]
        self.process = subprocess.Popen(command, env=desktop.env, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        assert self.process.stdout.readline() == "ready\n"

    def samples(self):
        """[(milliseconds, [(red, green, blue) for each place])]"""
        output = self.process.communicate(timeout=60)[0]
        rows = [tuple(map(int, line.split())) for line in output.splitlines()]
        return [(row[0], [row[i:i + 3] for i in range(1, len(row), 3)]) for row in rows]


def check_nothing_shows_through(samples):
    if len(samples) < 25:
        raise Failure(f"only {len(samples)} looks at the screen are too few to see a flicker")
    black = [(time, colours) for time, colours in samples if any(map(is_black, colours))]
    if black:
        raise Failure(f"a window without content was seen: {black}")
    other = [(time, colours[0]) for time, colours in samples if not is_card(colours[0])]
    print(f"  {len(samples)} looks, {len(other)} of them beside an edge-on card: {other}")
    times, end = [time for time, _ in other], samples[-1][0]
    is_edge_on = not other or (times[-1] - times[0] <= EDGE_ON_MILLISECONDS and times[0] >= EXCHANGE_MILLISECONDS
                               and times[-1] <= end - EXCHANGE_MILLISECONDS)
    if not is_edge_on:
        raise Failure("something other than a card was seen")


def check_beside_axis(samples):
    """A window that goes before the other one is there is seen long before or after the card is narrow."""
    narrow = []
    for index in range(BESIDE_AXIS.start, len(PLACES)):
        there = [is_card(colours[index]) for _, colours in samples]
        times = [time for (time, _), card in zip(samples, there) if not card]
        if not (there[0] and there[-1] and times and times[-1] - times[0] <= NARROW_MILLISECONDS):
            raise Failure(f"the card was away from {PLACES[index]} at {times}")
        narrow.append(times[-1] - times[0])
    print(f"  away from places beside the axis for {narrow} ms")


def check_end(desktop, program, title, corner):
    geometry = desktop.active_window_geometry()
    expected = (*corner, *(length * desktop.scale for length in CARD))
    if geometry != expected:
        raise Failure(f"the active window is at {geometry}, expected {expected}")
    window = desktop.xdotool("getactivewindow")
    if desktop.xdotool("getwindowname", window) != title:
        raise Failure(f"{title} is not the active window")
    opacity = subprocess.run(["xprop", "-id", window, "_NET_WM_WINDOW_OPACITY"], env=desktop.env, capture_output=True,
                             text=True).stdout
    if "=" in opacity and int(opacity.split("=")[1]) != 0xFFFFFFFF:
        raise Failure(f"the final window is not opaque: {opacity}")
    if not pointer_is_visible(desktop.env["DISPLAY"]):
        raise Failure("the pointer stayed hidden")


def flips(program):
    """What the program wrote about each flip, among the toolkit's own messages."""
    return [line.split() for line in program.log().splitlines() if line.startswith(("forward ", "backward "))]


def flip(desktop, program, sampler, press, title, pictures=None):
    wait_until(lambda: desktop.active_window_geometry() is not None, "an active window")
    corner = desktop.active_window_geometry()[:2]
    ended = len(flips(program))
    watch = Watch(desktop, sampler, corner, pictures)
    press()
    wait_until(lambda: not pointer_is_visible(desktop.env["DISPLAY"]), "the pointer to hide")
    wait_until(lambda: len(flips(program)) > ended, "the end of the flip")
    wait_until(lambda: desktop.xdotool("getactivewindow", "getwindowname") == title, f"{title} to be active")
    time.sleep(AFTERMATH)
    samples = watch.samples()
    direction, frames, dropped, seconds, longest = flips(program)[-1]
    print(f"  {direction}: {frames} frames in {seconds} s, {dropped} dropped, the longest took {longest} ms to draw")
    check_nothing_shows_through(samples)
    check_beside_axis(samples)
    check_end(desktop, program, title, corner)


def exchange(desktop, program, press, title):
    """Where no flip is possible or wanted the other card is there at once, in the same place."""
    corner = desktop.active_window_geometry()[:2]
    press()
    wait_until(lambda: desktop.xdotool("getactivewindow", "getwindowname") == title, f"{title} to be active")
    check_end(desktop, program, title, corner)
    if flips(program):
        raise Failure(f"there was a flip: {flips(program)}")


def ask_for_no_animations(desktop):
    service = os.path.join(TESTBED, "settings_portal.py")
    process = desktop.spawn(["/usr/bin/python3", service], stdout=subprocess.PIPE)
    if process.stdout.readline() != b"ready\n":
        raise Failure("the settings service did not start")


def main():
    demo, sampler, name = sys.argv[1:4]
    pictures = sys.argv[5] if len(sys.argv) > 5 else None
    with Desktop(**DESKTOPS[name]) as desktop:
        if name == "without-animations":
            ask_for_no_animations(desktop)
        program = desktop.start([demo])
        button = program.wait_for("button", "Preferences")
        wait_until(desktop.active_window_geometry, "the card to be active")
        print(name)
        if name.startswith("without"):
            exchange(desktop, program, lambda: button.click(desktop), "Preferences")
            done = program.wait_for("button", "Done")
            exchange(desktop, program, lambda: done.click(desktop), "Flipside")
        else:
            flip(desktop, program, sampler, lambda: button.click(desktop), "Preferences", pictures)
            done = program.wait_for("button", "Done")
            flip(desktop, program, sampler, lambda: done.click(desktop), "Flipside")
        end_process(program.process)


main()
