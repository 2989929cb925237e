# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A disk that is silent, slow, full, or fails."""

import contextlib
import os
import re
import subprocess
import tempfile
import time

from shim import ShimmedDisk
from tally import Tally, case

LENGTHS = (3, 10, 60, None)
"""Seconds that a disk is silent; None is for ever."""
PATIENCE = 15
"""Seconds that are for ever in a case."""
END = 3.6
"""Seconds that the end of the program may take: three for the disk, the rest for the program itself."""


def shell(*command):
    subprocess.run(command, check=True)


def lengths(quick):
    """As many as there is time for, and what they are called."""
    chosen = LENGTHS[:2] if quick else LENGTHS
    return chosen, ", ".join(f"{seconds}" if seconds else "for ever" for seconds in chosen).replace("0,", "0 s,")


def recording(bench):
    """A take of which some is on the disk already."""
    run = bench.start(disk=ShimmedDisk())
    run.record()
    time.sleep(2.5)
    return run


def finish_in_time(counted, run):
    ended = run.finish()
    counted.check(ended is not None and ended < END, f"the end took {ended or 20:.1f} s")


def stalled(bench, quick, command=None):
    """Every call to the disk hangs; then a command, and all goes on."""
    chosen, called = lengths(quick)
    counted = Tally(f"the disk stalls {called} while recording" + (f", then {command}" if command else ""))

    def one(seconds):
        run = recording(bench)
        before = run.sound.position()
        run.disk.stall()
        time.sleep(0.5)
        if command:
            run.until(command)
        time.sleep((seconds or PATIENCE) - 0.5)
        if seconds:
            run.disk.heal()
            time.sleep(2)
            if not command:
                run.stop()
                time.sleep(1)
        finish_in_time(counted, run)
        counted.take(run, wanted=None if seconds else [(run.wanted[0][0], before)])
        counted.expect_words(run, "disk")
    bench.together([lambda s=seconds: one(s) for seconds in chosen])
    return counted


@case("stall", minutes=1.5, quick=True)
def stall(bench, quick):
    yield stalled(bench, quick)


@case("stall-pause", minutes=1.5)
def stall_pause(bench, quick):
    yield stalled(bench, quick, "Pause")


@case("stall-stop", minutes=1.5, quick=True)
def stall_stop(bench, quick):
    yield stalled(bench, quick, "Stop")


@case("stall-quit", minutes=0.7, quick=True)
def stall_quit(bench, quick):
    """SIGTERM while the disk is silent: three seconds for the disk, and then a word about what is left."""
    passing = Tally("the disk stalls 2 s, SIGTERM at its beginning")
    lasting = Tally("the disk stalls for ever, then SIGTERM")

    def one(counted, seconds):
        run = recording(bench)
        before = run.sound.position()
        run.disk.stall()
        if not seconds:
            time.sleep(3)
        run.until(None)
        run.asked_to_end = time.monotonic()
        run.program.process.terminate()
        if seconds:
            time.sleep(seconds)
            run.disk.heal()
        finish_in_time(counted, run)
        counted.take(run, wanted=None if seconds else [(run.wanted[0][0], before)])
        if not seconds:
            counted.check("written" in run.log(), "what was left was not logged")
    bench.together([lambda: one(passing, 2), lambda: one(lasting, None)])
    yield passing
    yield lasting


@case("stall-start", minutes=1.5, quick=True)
def stall_start(bench, quick):
    """Record on a silent disk, and a second attempt when the disk is back."""
    chosen, called = lengths(quick)
    counted = Tally(f"the disk stalls {called} at Record")

    def one(seconds):
        run = bench.start(disk=ShimmedDisk())
        run.disk.stall()
        if run.record(deadline=2.5):
            counted.broken("recorded into a file that could not be opened")
        counted.check(run.words(), "nobody was told why no recording began")
        time.sleep((seconds or PATIENCE) - 2)
        if not seconds:
            finish_in_time(counted, run)
            return counted.hear(run, tried=True)
        run.disk.heal()
        time.sleep(1)
        if not counted.check(not run.panel.enabled("Stop"), "a recording that was given up began all the same"):
            run.say("Stop")
        counted.check(run.record(5), "no recording after the disk was back")
        time.sleep(2)
        run.stop()
        run.finish()
        return counted.take(run, path=next(reversed(run.files()), None), wanted=run.wanted[-1:])
    bench.together([lambda s=seconds: one(s) for seconds in chosen])
    yield counted


@case("stall-launch", minutes=0.6, quick=True)
def stall_launch(bench, quick):
    """The working folder's disk is silent at launch, and there later."""
    chosen, called = lengths(quick)
    counted = Tally(f"the disk stalls {called} from the launch on, then Record")

    def one(seconds):
        began = time.monotonic()
        run = bench.start(disk=ShimmedDisk("all stall"))
        counted.check(time.monotonic() - began < 6, "the window came late")
        if not seconds:
            counted.check(not run.record(2.5) and run.words(), "recorded into a folder that nobody could see")
            finish_in_time(counted, run)
            return counted.hear(run, tried=True)
        time.sleep(max(0, seconds - (time.monotonic() - began)))
        run.disk.heal()
        time.sleep(1.5)
        if counted.check(run.record(5), "the folder was not found again"):
            time.sleep(2)
            run.stop()
        return counted.outcome(run)
    bench.together([lambda s=seconds: one(s) for seconds in chosen])
    yield counted


def asked_of(bench, counted, chosen, commands):
    """A disk that falls silent after a take, and then commands that need it: (what is pressed before, the commands)."""
    def one(seconds, before, *commands):
        run = recording(bench)
        run.stop()
        time.sleep(0.5)
        if before:
            run.say(before)
            time.sleep(0.5)
        run.disk.stall()
        for command in commands:
            run.say(command)
            time.sleep(1)
        time.sleep((seconds or PATIENCE) - len(commands))
        if seconds:
            run.disk.heal()
            time.sleep(1)
        if "Play" in commands:
            counted.check(run.panel.enabled("Stop") or run.words() or "Playing" in str(run.told), "neither played nor told")
        finish_in_time(counted, run)
        run.disk.heal()
        counted.take(run)
    for some in (chosen[:2], chosen[2:]):
        bench.together([lambda s=s, c=command: one(s, *c) for s in some for command in commands])
    return counted


@case("stall-play", minutes=1.8, quick=True)
def stall_play(bench, quick):
    chosen, called = lengths(quick)
    yield asked_of(bench, Tally(f"the disk stalls {called} at Play, at Stop of it"), chosen,
                   ((None, "Play"), ("Play", "Stop")))


@case("stall-folder", minutes=2, quick=True)
def stall_folder(bench, quick):
    """Whatever looks at the folder without recording into it."""
    chosen, called = lengths(quick)
    counted = Tally(f"the disk stalls {called} on opening the preferences, at the two buttons that show the folder")
    yield asked_of(bench, counted, chosen, ((None, "Preferences"), (None, "Show in Folder"), ("Preferences", "Show folder")))
    chooser = Tally(f"the disk stalls {called} at Choose, and at Cancel of it")
    yield asked_of(bench, chooser, chosen, (("Preferences", "Choose folder"), ("Preferences", "Choose folder", "Cancel")))


@case("stall-settings", minutes=0.3, quick=True)
def stall_settings(bench, quick):
    """The settings are on a silent disk, the takes are not."""
    counted = Tally("the disk of the settings stalls for ever: a setting is changed, then Record; it is kept when the disk is back")
    home = tempfile.mkdtemp(dir=bench.desktop.folder)
    run = bench.start(home=home, disk=ShimmedDisk(), environment={"SLOW_DISK_FOLDER": os.path.join(home, ".config")})
    run.say("Preferences")
    run.panel.usable("Show each recording in the file manager", "check box")
    run.disk.stall()
    run.panel.press("Show each recording in the file manager", "check box")
    run.say("Done")
    run.record_for(3)
    run.disk.heal()
    time.sleep(0.5)
    finish_in_time(counted, run)
    counted.take(run)
    with open(run.settings_file) as file:
        counted.check("showInFinderWhenFinishRecording=true" in file.read(), "the setting was not kept")
    yield counted


@case("slow", minutes=0.8, quick=True)
def slow(bench, quick):
    counted = Tally("a disk of 20, 50, 200 ms a write")

    def one(milliseconds):
        run = bench.start(disk=ShimmedDisk())
        run.disk.delay(milliseconds)
        run.record_for(15)
        time.sleep(1.5)
        counted.outcome(run)
    bench.together([lambda ms=ms: one(ms) for ms in (20, 50, 200)])
    yield counted


ERRORS = ("ENOSPC", "EDQUOT", "EIO", "ESTALE", "EROFS")


@case("errors", minutes=0.8, quick=True)
def errors(bench, quick):
    """Errors that pass: what could not be written is written later."""
    counted = Tally("writing fails for 6 s: no space, quota, I/O error, stale handle, read-only")

    def one(name):
        run = recording(bench)
        run.disk.fail("write", name)
        time.sleep(6)
        run.disk.heal()
        time.sleep(4)
        run.stop()
        time.sleep(1)
        run.finish()
        counted.take(run)
        counted.check(run.words(), f"{name} was not told")
        counted.check(most_waiting(run) < 12, f"{most_waiting(run)} s are said to wait after 6 s")
    bench.together([lambda n=n: one(n) for n in ERRORS])
    yield counted


@case("errors-start", minutes=0.4, quick=True)
def errors_start(bench, quick):
    """The same when a file is to be made: each has its own words."""
    counted = Tally("no file can be made at Record: no space, quota, I/O error, stale handle, read-only, no permission")
    words = set()

    def one(name):
        run = bench.start(disk=ShimmedDisk())
        run.disk.fail("open", name)
        counted.check(not run.record(2), f"recorded although there is no file ({name})")
        counted.expect_words(run, "Cannot record")
        words.update(text for text in run.told if text.startswith("Cannot record"))
        run.disk.heal()
        run.record_for(2)
        run.finish()
        counted.take(run, path=run.files()[-1], wanted=run.wanted[-1:])
    names = (*ERRORS, "EACCES")
    bench.together([lambda n=n: one(n) for n in names])
    counted.check(len(words) == len(names), f"{len(names)} reasons have {len(words)} names")
    yield counted


def most_waiting(run):
    """The largest number of seconds that was said to wait for the disk."""
    found = re.findall(r"([\d.]+) s are safe in memory", " ".join(run.told))
    return max(map(float, found), default=0)


def fill(place, leave):
    """Leaves so many bytes on the disk."""
    disk = os.statvfs(place)
    with open(os.path.join(place, "filler"), "wb") as file:
        file.write(bytes(max(0, disk.f_bavail * disk.f_frsize - leave)))


@case("full", minutes=0.8, quick=True)
def full(bench, quick):
    """A real disk without space, which gets some while recording, after Stop, or never."""
    counted = Tally("the disk is full for 8 s: space again while recording, after Stop")
    never = Tally("the disk stays full")

    def one(row, moment):
        with bench.disk("2m") as place:
            run = bench.start(folder=place)
            fill(place, 120000)  # three seconds
            run.record()
            time.sleep(4)
            in_time = run.sound.position()
            time.sleep(7)
            if moment == "while recording":
                os.unlink(os.path.join(place, "filler"))
                time.sleep(4)
            run.stop()
            time.sleep(1)
            if moment == "after Stop":
                row.check(run.panel.text("Status") != "Ready", '"Ready" stands over a take that waits for the disk')
                os.unlink(os.path.join(place, "filler"))
                time.sleep(4)
            if moment == "never":
                row.check(run.panel.text("Status") != "Ready", '"Ready" stands over a take that lacks something')
            finish_in_time(row, run)
            row.take(run, wanted=[(run.wanted[0][0], in_time - 2)] if moment == "never" else None)
            row.expect_words(run, "full")
    bench.together([lambda: one(counted, "while recording"), lambda: one(counted, "after Stop"),
                    lambda: one(never, "never")])
    yield counted
    yield never


@contextlib.contextmanager
def loop_disk(bench):
    """A disk that the kernel itself can freeze."""
    folder = tempfile.mkdtemp(dir=bench.desktop.folder)
    image, place = os.path.join(folder, "image"), os.path.join(folder, "disk")
    os.mkdir(place)
    with open(image, "wb") as file:
        file.truncate(64 << 20)
    shell("mkfs.ext4", "-q", image)
    shell("mount", "-o", "loop", image, place)
    try:
        yield place
    finally:
        subprocess.run(["fsfreeze", "-u", place], stderr=subprocess.DEVNULL, check=False)
        shell("umount", "-l", place)


@case("frozen-disk", minutes=0.7, quick=True)
def frozen_disk(bench, quick):
    """The kernel stops a file system, as for a snapshot: no shim in between."""
    counted = Tally("the kernel freezes the file system for 8 s: nothing, Pause, Stop meanwhile")

    def one(command):
        with loop_disk(bench) as place:
            run = bench.start(folder=place)
            run.record()
            time.sleep(3)
            shell("fsfreeze", "-f", place)
            thaw = subprocess.Popen(["sh", "-c", 'sleep 8; fsfreeze -u "$0"', place])
            time.sleep(2)
            if command:
                run.until(command)
            thaw.wait()
            time.sleep(2)
            run.finish()
            counted.take(run)
            counted.expect_words(run, "disk")
    bench.together([lambda c=c: one(c) for c in (None, "Pause", "Stop")])
    yield counted
