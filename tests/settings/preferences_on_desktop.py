#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The preferences of the real program on a whole desktop: a folder is chosen through the chooser and is there again
after a restart; the encoder's settings are not.

    preferences_on_desktop.py FLIPSIDE [--pictures FOLDER]
"""

import os
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "testbed"))
from desktop import Desktop, Failure, wait_until  # noqa: E402

PLACEHOLDER = "Please select a location to save the recording"


def has_turned(desktop, title):
    """The card is active, and opaque again: it has been turned over."""
    try:
        window = desktop.xdotool("getactivewindow")
        if not desktop.xdotool("getwindowname", window).startswith(title):
            return False
    except Failure:
        return False
    opacity = subprocess.run(["xprop", "-id", window, "_NET_WM_WINDOW_OPACITY"], env=desktop.env, capture_output=True,
                             text=True).stdout
    return "=" not in opacity or int(opacity.split("=")[1]) == 0xFFFFFFFF


def open_preferences(desktop, command):
    program = desktop.start([command])
    program.wait_for("button", "Preferences").press()
    wait_until(lambda: has_turned(desktop, "Preferences"), "the preferences card")
    return program


def text_is(program, key, expected):
    wait_until(lambda: program.wait_for("label", key).text == expected, f"{key} to read {expected!r}")


def choose_folder(desktop, program, folder, accept):
    program.wait_for("button", "Choose folder").press()
    wait_until(lambda: any(field.focused for field in program.find_all("text")), "the chooser's name field")
    desktop.type(folder)
    wait_until(lambda: any(field.node.queryText().getText(0, -1) == folder for field in program.find_all("text")),
               "the name to be typed")
    if accept:
        program.wait_for("button", "Choose").press()
    else:
        # The first one closes the list of completions.
        desktop.key("Escape")
        desktop.key("Escape")
    wait_until(lambda: not program.find_all("dialog") and not program.find_all("file chooser"), "the chooser to close")


def set_values(program):
    program.wait_for("slider", "Quality").value = 2.5
    text_is(program, "Quality value", "2.5")
    program.wait_for("radio button", "Bitrate target").press()
    wait_until(lambda: program.wait_for("slider", "Bitrate").enabled, "the bitrate to be enabled")
    program.wait_for("slider", "Bitrate").value = 100
    text_is(program, "Bitrate value", "100kbps")


def leave(desktop, program):
    desktop.key("Escape")
    wait_until(lambda: has_turned(desktop, "Flipside"), "the main card")
    program.end()


def run(desktop, command, pictures):
    folder = os.path.join(desktop.home, "Recordings 100% ok")
    os.mkdir(folder)
    program = open_preferences(desktop, command)
    text_is(program, "Working folder", PLACEHOLDER)
    for name in ("Engine quality", "VBR mode", "Show folder", "Done"):
        program.wait_for("button", name)
    choose_folder(desktop, program, folder, accept=False)
    text_is(program, "Working folder", PLACEHOLDER)
    choose_folder(desktop, program, folder, accept=True)
    text_is(program, "Working folder", folder)
    set_values(program)
    if pictures:
        desktop.screenshot(os.path.join(pictures, "preferences-on-desktop.png"))
    leave(desktop, program)

    program = open_preferences(desktop, command)
    text_is(program, "Working folder", folder)
    text_is(program, "Quality value", "5.0")
    leave(desktop, program)


def main():
    pictures = sys.argv[sys.argv.index("--pictures") + 1] if "--pictures" in sys.argv else None
    with Desktop() as desktop:
        run(desktop, sys.argv[1], pictures)


if __name__ == "__main__":
    main()
