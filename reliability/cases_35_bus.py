# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A session bus that stands still, one that dies, with all that the desktop offers over it, and none at all."""

import contextlib
import os
import signal
import socket
import subprocess
import tempfile
import time

from bench import wait_until
from panel import accessibility_of
from tally import Tally, case

STAND_INS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "testbed", "stand_ins.py")
END = 2.0
"""Seconds that the end of the program may take."""


class SessionBus:
    """One of a program's own, with a file manager and a session manager on it. What it offers for accessibility is the
    desktop's, which programs find on the display."""

    def __init__(self, bench):
        self.desktop = bench.desktop
        folder = tempfile.mkdtemp(dir=bench.desktop.folder)
        self.path = os.path.join(folder, "bus")
        self.places = {"XDG_RUNTIME_DIR": folder, "DISPLAY": ""}
        self.environment = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=" + self.path}
        self.start()

    def start(self):
        self.daemon = self.desktop.spawn(["dbus-daemon", "--config-file=/usr/share/dbus-1/session.conf", "--nofork",
                                          "--address=unix:path=" + self.path], self.places)
        wait_until(self.answers, "a session bus")
        accessibility_of(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        services = self.desktop.spawn(["/usr/bin/python3", STAND_INS], self.environment, stdout=subprocess.PIPE)
        services.stdout.readline()  # they are there

    def answers(self):
        with socket.socket(socket.AF_UNIX) as client:
            return client.connect_ex(self.path) == 0

    def freeze(self):
        self.daemon.send_signal(signal.SIGSTOP)

    def thaw(self):
        self.daemon.send_signal(signal.SIGCONT)

    def kill(self):
        self.daemon.kill()
        self.daemon.wait()
        with contextlib.suppress(FileNotFoundError):
            os.unlink(self.path)


def in_mid_take(bench, counted, gone, back):
    """Gone for six seconds; what is pressed meanwhile."""
    def one(command):
        bus = SessionBus(bench)
        run = bench.start(environment=bus.environment)
        if command != "Record":
            run.record()
            time.sleep(2)
        gone(bus)
        time.sleep(1)
        if command == "Record":
            counted.check(run.record(3), "no recording without the bus")
        elif command == "Show in Folder":
            run.stop()
            time.sleep(0.5)
            run.say(command)
        elif command == "end":
            ended = run.finish()
            counted.check(ended is not None and ended < END, f"the end took {ended or 20:.1f} s")
        elif command:
            run.until(command)
        time.sleep(5)
        back(bus)
        time.sleep(3)
        counted.outcome(run)
    bench.together([lambda c=c: one(c) for c in (None, "Pause", "Stop", "Record", "Show in Folder", "end")])
    return counted


@case("bus", minutes=0.9, quick=True)
def bus(bench, quick):
    still = Tally("the session bus stands still for 6 s while recording: nothing, Pause, Stop, Show in Folder, SIGTERM; at Record")
    yield in_mid_take(bench, still, SessionBus.freeze, SessionBus.thaw)
    killed = Tally("the session bus is killed while recording and back after 6 s: the same")
    yield in_mid_take(bench, killed, SessionBus.kill, SessionBus.start)


@case("no-bus", minutes=0.5, quick=True)
def no_bus(bench, quick):
    """Nothing tells then what the window shows; it is used with the keyboard."""
    counted = Tally("no session bus, one that does not answer from the launch on: Ctrl+R, Ctrl+.")
    silent = SessionBus(bench)
    silent.freeze()
    for address in ("unix:path=/nowhere", silent.environment["DBUS_SESSION_BUS_ADDRESS"]):
        run = bench.start()
        run.finish()
        run.environment = {**run.environment, "DBUS_SESSION_BUS_ADDRESS": address}
        began = time.monotonic()
        run.launch(appears=False)
        bench.desktop.xdotool("search", "--sync", "--onlyvisible", "--pid", run.program.pid)
        counted.check(time.monotonic() - began < 5, "the window came late")
        time.sleep(1)
        begin = run.sound.position()
        bench.desktop.key("ctrl+r")
        time.sleep(3)
        end = run.sound.position()
        bench.desktop.key("ctrl+period")
        time.sleep(0.5)
        ended = run.finish()
        counted.check(ended is not None and ended < END, f"the end took {ended or 20:.1f} s")
        counted.take(run, wanted=[(begin + 0.1, end)])
    silent.thaw()
    yield counted
