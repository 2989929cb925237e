# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The computer sleeps, and somebody sets the clock."""

import contextlib
import datetime
import os
import struct
import tempfile
import time
import zoneinfo

from bench import PROGRAM, TOOLS
from tally import WAITING, Tally, case

NIGHT = 30.0
"""Seconds that the clocks say the computer slept."""
LIBRARY = os.path.join(TOOLS, "libclock_jump.so")


class Clocks:
    """What one program is told of the time: both in seconds ahead of what it is."""

    def __init__(self):
        self.path = os.path.join(tempfile.mkdtemp(), "clocks")
        with open(self.path, "wb") as file:
            file.write(bytes(16))
        self.environment = {"LD_PRELOAD": LIBRARY, "CLOCK_JUMP": self.path}

    def set(self, wall, boot):
        with open(self.path, "r+b") as file:
            file.write(struct.pack("qq", int(wall * 1e9), int(boot * 1e9)))


def shown(run):
    """The elapsed time, in seconds."""
    hours, minutes, seconds = run.panel.text("Elapsed time").split(":")
    return int(hours) * 3600 + int(minutes) * 60 + float(seconds)


@case("sleep", minutes=0.6, quick=True)
def sleep(bench, quick):
    """Program and server stand still; the steady clock says for two seconds, the others for half a minute."""
    counted = Tally(f"the computer sleeps for {NIGHT:g} s while recording: then nothing, Pause, Stop", silent=WAITING)
    clocks = [Clocks() for _ in range(3)]
    runs = [bench.start(environment=one.environment) for one in clocks]
    for run in runs:
        run.record()
    time.sleep(3)
    sound = runs[0].sound
    begin = sound.position()
    with contextlib.ExitStack() as asleep:
        for run in runs:
            asleep.enter_context(run.stopped())
        sound.tell("freeze")
        time.sleep(2)
        for one in clocks:
            one.set(NIGHT, NIGHT)
        sound.tell("thaw")
    sound.away.append((begin - 0.2, sound.position() + 1))
    runs[1].pause()
    runs[2].stop()
    time.sleep(2)
    runs[0].stop()
    time.sleep(0.5)
    for run in runs:
        length = shown(run)
        begin, end = run.wanted[0]
        counted.check(abs(length - NIGHT - (end - begin)) < 1.5, f"{length:.1f} s are shown of {end - begin:.1f} s awake")
        run.finish()
        found = counted.take(run, silent_about_loss=True)
        counted.check(found and abs(found.length - length) < 0.35, "the file has another length than was shown")
        counted.expect_words(run, "asleep")
    yield counted


def named_after(path):
    """The local time in the name of a take."""
    name = os.path.basename(os.fsdecode(path))
    return datetime.datetime.strptime(name, "%Y-%m-%d %Hh%Mm%Ss.mp3")


@case("clock", minutes=0.5, quick=True)
def clock(bench, quick):
    """The wall clock is set while recording, and the computer comes to another time zone between two takes."""
    counted = Tally("the clock is set an hour ahead, a day back; another time zone before the next take")

    def one(jump):
        clocks = Clocks()
        zone = os.path.join(tempfile.mkdtemp(dir=bench.desktop.folder), "localtime")
        move(zone, "UTC")
        run = bench.start(environment={**clocks.environment, "TZ": None}, command=[
            "unshare", "--mount", "sh", "-c", 'mount --bind "$0" /etc/localtime && exec "$1"', zone, PROGRAM])
        run.record()
        time.sleep(2)
        before = shown(run)
        clocks.set(jump, 0)
        time.sleep(2)
        counted.check(1 < shown(run) - before < 4, f"{before:.1f} s became {shown(run):.1f} s")
        run.stop()
        time.sleep(0.5)
        first = run.files()
        move(zone, "Asia/Kolkata")
        told = datetime.datetime.fromtimestamp(time.time() + jump, zoneinfo.ZoneInfo("Asia/Kolkata"))
        run.record()
        time.sleep(1.5)
        run.stop()
        time.sleep(0.5)
        run.finish()
        later = [path for path in run.files() if path not in first]
        if counted.check(len(first) == 1 and len(later) == 1, f"{len(first)} and {len(later)} files"):
            late = abs((named_after(later[0]) - told.replace(tzinfo=None)).total_seconds())
            counted.check(late < 5, f"the second take is named {late:.0f} s beside its time")
            counted.take(run, path=first[0], wanted=run.wanted[:1])
            counted.take(run, path=later[0], wanted=run.wanted[1:])
        counted.check(not run.words(), "a clock that was set is told as trouble")
    bench.together([lambda j=jump: one(j) for jump in (3600, -86400)])
    yield counted


def move(zone, place):
    """In place: it is mounted."""
    with open(os.path.join("/usr/share/zoneinfo", place), "rb") as there, open(zone, "wb") as here:
        here.write(there.read())
