# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The computer sleeps, and somebody sets the clock."""

import contextlib
import datetime
import os
import signal
import struct
import subprocess
import tempfile
import time
import zoneinfo

from bench import PROGRAM, TOOLS, VBR, wait_until
from tally import Tally, case

NAP, NIGHT = 30.0, 7200.0
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


def sleepers(bench, number, seconds, **settings):
    """Programs that have slept so long in the middle of a take."""
    clocks = [Clocks() for _ in range(number)]
    runs = [bench.start(environment=one.environment, **settings) for one in clocks]
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
            one.set(seconds, seconds)
        sound.tell("thaw")
    sound.away.append((begin - 0.2, sound.position() + 1))
    return runs


@case("sleep", minutes=0.6, quick=True)
def sleep(bench, quick):
    """Program and server stand still; the steady clock says for two seconds, the others for half a minute."""
    counted = Tally(f"the computer sleeps for {NAP:g} s while recording: then nothing, Pause, Stop")
    runs = sleepers(bench, 3, NAP)
    runs[1].pause()
    runs[2].stop()
    time.sleep(2)
    runs[0].stop()
    time.sleep(0.5)
    for run in runs:
        length = shown(run)
        begin, end = run.wanted[0]
        counted.check(abs(length - NAP - (end - begin)) < 1.5, f"{length:.1f} s are shown of {end - begin:.1f} s awake")
        run.finish()
        found = counted.take(run, silent_about_loss=True)
        counted.check(found and abs(found.length - length) < 0.35, "the file has another length than was shown")
        counted.expect_words(run, "asleep")
    yield counted


@case("sleep-hours", minutes=2.5, alone=True)
def sleep_hours(bench, quick):
    """The silence that stands for two hours takes the encoder its time, and what was said since waits behind it. Three
    programs that encode it leave nothing of two processors to the cases beside them."""
    counted = Tally("the computer sleeps for two hours while recording: then Stop, Record after Stop, SIGTERM, 3 s later",
                    lost=0.15)
    stopped, again, ended = sleepers(bench, 3, NIGHT, **VBR)
    time.sleep(3)
    ended.signal(signal.SIGTERM)
    stopped.stop()
    again.stop()
    counted.check(again.record(3), "no other take could be begun")
    time.sleep(3)
    again.stop()
    with contextlib.suppress(subprocess.TimeoutExpired):
        ended.program.process.wait(6)
    counted.check(not ended.program.running(), "the end took more than six seconds")
    for run in (stopped, again):
        wait_until(lambda r=run: not grows(r), "the silence of two hours to be written", 240)
    for run, path, wanted in ((stopped, 0, stopped.wanted), (again, 0, again.wanted[:1]), (again, 1, again.wanted[1:])):
        run.finish()
        found = counted.take(run, path=run.files()[path], wanted=wanted, silent_about_loss=True)
        asleep = 0 if wanted == again.wanted[1:] else NIGHT
        length = asleep + sum(end - begin for begin, end in wanted)
        counted.check(found and abs(found.length - length) < 2, f"{found.length:.0f} s are in a file of {length:.0f} s")
        counted.expect_words(run, "asleep")
    ended.finish()
    counted.take(ended)
    counted.check("left out" in ended.log(), "the log does not say how much silence the end left out")
    yield counted


def grows(run):
    """In two seconds; a disk keeps step, the encoder may not."""
    before = [os.path.getsize(path) for path in run.files()]
    time.sleep(2)
    return [os.path.getsize(path) for path in run.files()] != before


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
