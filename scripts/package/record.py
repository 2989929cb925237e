#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Records through a program that is installed in another root, on a private desktop with a sound server of its own, as a
person would: record.py ROOT HOME. It is started as its desktop entry says. ROOT must see this system's /tmp, and HOME must
lie there. A home without settings presses Record and chooses a folder; one that has them takes Record from the launcher's
menu, and must not be asked again. A second take is made with a key of the desktop. Prints what is on the card and in the
files.

Where ROOT is a sandbox (it has a /.flatpak-info), the program reaches the session bus through the filter of Flatpak, as
the manifest sets it, and there is a portal and nothing else: choosing the folder, showing the file, staying awake and a
warning while the card is out of sight must go through that.
"""

import configparser
import os
import re
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
TESTBED = os.path.join(HERE, "..", "..", "testbed")
sys.path.insert(0, TESTBED)
from desktop import Desktop, Failure, wait_until  # noqa: E402
from recorder import MICROPHONE, Recorder, SoundServer, decoded_seconds  # noqa: E402

IDENTIFIER = "io.github.flipside_recorder.Flipside"
ENTRY = f"usr/share/applications/{IDENTIFIER}.desktop"
MANIFEST = os.path.join(HERE, f"../../packaging/flatpak/{IDENTIFIER}.yml")
OPENBOX = "/etc/xdg/openbox/rc.xml"


def launcher(root, folder, group, bus):
    """A program that starts what this group of the desktop entry names, over there and with that bus."""
    entry = configparser.ConfigParser(interpolation=None)
    entry.read(os.path.join(root, ENTRY))
    path = os.path.join(folder, group.replace(" ", "-"))
    with open(path, "w") as script:
        script.write(f'#!/bin/sh\nexport DBUS_SESSION_BUS_ADDRESS={bus}\nexec chroot {root} {entry[group]["Exec"]} "$@"\n')
    os.chmod(path, 0o755)
    return path


def filter_bus(desktop, path):
    """At this path is the session bus as a sandbox lets it through: the program's own names, the portals, and what the
    manifest names. The accessibility bus, which has a filter of its own there, is for who drives the program."""
    with open(MANIFEST) as manifest:
        talks = re.findall("--talk-name=(.*)", manifest.read())
    desktop.spawn(["xdg-dbus-proxy", desktop.env["DBUS_SESSION_BUS_ADDRESS"], path, "--filter", f"--own={IDENTIFIER}.*",
                   "--call=org.freedesktop.portal.*=*", "--broadcast=org.freedesktop.portal.*=@/org/freedesktop/portal/*",
                   *[f"--talk={name}" for name in ["org.a11y.Bus", *talks]]])
    wait_until(lambda: os.path.exists(path), "the filter of the bus")


def with_key(command, folder):
    """A window manager that runs the command at Super+R."""
    with open(OPENBOX) as usual:
        settings = usual.read()
    key = f'<keybind key="W-r"><action name="Execute"><command>{command}</command></action></keybind>'
    path = os.path.join(folder, "rc.xml")
    with open(path, "w") as own:
        own.write(settings.replace("<keyboard>", "<keyboard>" + key, 1))
    return "openbox", "--config-file", path


class Trial:
    """One session with the installed program."""

    def __init__(self, home, sandboxed):
        self.home = home
        self.folder = os.path.join(home, "Recordings")
        self.first = not os.path.exists(os.path.join(home, ".config/flipside/flipside.conf"))
        self.sandboxed = sandboxed

    def run(self, desktop, program):
        """Of the desktop's services there are those that the program may ask."""
        self.services = os.path.join(desktop.folder, "services.log")
        script = [os.path.join(HERE, "portal.py"), self.folder] if self.sandboxed else [os.path.join(TESTBED, "stand_ins.py")]
        desktop.spawn(["/usr/bin/python3", *script], log=self.services)
        self.wait_asked("ready .")
        self.sound = SoundServer()
        try:
            self.recorder = Recorder(desktop, self.sound, self.home, program)
            self.record_twice()
        finally:
            self.sound.end()
        # A descriptor's path is seen from outside the root.
        shown = "revealed .*" if self.sandboxed else "shown file://"
        for call in [*["chooser .*"] * (self.first and self.sandboxed), "awake .*", "asleep.*", f"{shown}{self.folder}/.*mp3"]:
            self.wait_asked(call)
        print("the desktop was asked:", *self.calls()[1:], sep="\n  ")

    def calls(self):
        with open(self.services) as log:
            return log.read().splitlines()

    def wait_asked(self, call):
        wait_until(lambda: any(re.fullmatch(call, said) for said in self.calls()), f"the desktop to be asked: {call}")

    def record_twice(self):
        recorder = self.recorder
        if self.first and not self.sandboxed:
            recorder.record()
        elif self.first:
            recorder.click("Record")
        recorder.wait_status("Recording from .*")
        print(recorder.status)
        recorder.wait_elapsed(3)
        recorder.desktop.screenshot(os.path.join(self.home, "card.png"))
        if self.sandboxed:
            self.lose_the_microphone_out_of_sight()
        recorder.press("Stop")
        self.check_take()

        recorder.desktop.key("super+r")
        recorder.wait_status("Recording from .*")
        # Until it is told of the first sound the card shows how long the last take was.
        wait_until(lambda: recorder.elapsed < 2, "the clock to begin anew")
        recorder.wait_elapsed(3)
        recorder.desktop.key("super+r")
        self.check_take()
        recorder.end()
        print(recorder.program.log().strip() or "nothing was logged")

    def lose_the_microphone_out_of_sight(self):
        self.recorder.press("Minimise")
        self.sound.tell("unload " + MICROPHONE)
        self.wait_asked("portal notice .* No sound .*")
        self.sound.tell(f"load {MICROPHONE}=tone")
        self.wait_asked("portal notice .*missing.*")

    def check_take(self):
        self.recorder.enabled_button("Play")
        seconds = decoded_seconds(self.recorder.output_file)
        print(f"{self.recorder.output_file}: {seconds:.1f} s")
        if seconds < 2.5:
            raise Failure(f"three seconds were recorded; {self.recorder.described()}")


def main():
    root, home = map(os.path.abspath, sys.argv[1:3])
    trial = Trial(home, os.path.exists(os.path.join(root, ".flatpak-info")))
    with tempfile.TemporaryDirectory() as scripts:
        filtered = os.path.join(scripts, "bus")
        bus = "unix:path=" + filtered if trial.sandboxed else "$DBUS_SESSION_BUS_ADDRESS"
        start = launcher(root, scripts, "Desktop Entry", bus)
        record = launcher(root, scripts, "Desktop Action record", bus)
        with Desktop(with_key(start + " --toggle", scripts)) as desktop:
            if trial.sandboxed:
                filter_bus(desktop, filtered)
            trial.run(desktop, start if trial.first else record)


main()
