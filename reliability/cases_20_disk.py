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
from tally import WAITING, Tally, case

LENGTHS = (3, 10, 60, None)
"""Seconds that a disk is silent; None is for ever."""
END = 3.6
"""Seconds that the end of the program may take: three for the disk, the rest for the program itself."""


def shell(*command):
    subprocess.run(command, check=True)


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
    counted = Tally("the disk stalls 3, 10, 60 s, for ever while recording" + (f", then {command}" if command else ""))

    def one(seconds):
        run = recording(bench)
        before = run.sound.position()
        run.disk.stall()
        time.sleep(0.5)
        if command:
            run.until(command)
        time.sleep((seconds or 15) - 0.5)
        if seconds:
            run.disk.heal()
            time.sleep(2)
            if not command:
                run.stop()
                time.sleep(1)
        finish_in_time(counted, run)
        counted.take(run, wanted=None if seconds else [(run.wanted[0][0], before)])
        counted.expect_words(run, "disk")
    bench.together([lambda s=seconds: one(s) for seconds in (LENGTHS[:2] if quick else LENGTHS)])
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
    counted = Tally("the disk stalls 3, 10 s at Record", silent=WAITING)

    def one(seconds):
        run = bench.start(disk=ShimmedDisk())
        run.disk.stall()
        if run.record(deadline=2.5):
            counted.broken("recorded into a file that could not be opened")
        counted.check(run.words(), "nobody was told why no recording began")
        time.sleep(seconds - 2)
        run.disk.heal()
        time.sleep(1)
        if not counted.check(not run.panel.enabled("Stop"), "a recording that was given up began all the same"):
            run.say("Stop")
        counted.check(run.record(5), "no recording after the disk was back")
        time.sleep(2)
        run.stop()
        run.finish()
        counted.take(run, path=next(reversed(run.files()), None), wanted=run.wanted[-1:])
    bench.together([lambda s=seconds: one(s) for seconds in LENGTHS[:2]])
    yield counted


@case("stall-launch", minutes=0.6, quick=True)
def stall_launch(bench, quick):
    """The working folder's disk is silent at launch, and there later."""
    counted = Tally("the disk stalls 3, 10 s from the launch on, then Record", silent=WAITING)

    def one(seconds):
        began = time.monotonic()
        run = bench.start(disk=ShimmedDisk("all stall"))
        counted.check(time.monotonic() - began < 6, "the window came late")
        time.sleep(max(0, seconds - (time.monotonic() - began)))
        run.disk.heal()
        time.sleep(1.5)
        if counted.check(run.record(5), "the folder was not found again"):
            time.sleep(2)
            run.stop()
        run.finish()
        counted.take(run)
    bench.together([lambda s=seconds: one(s) for seconds in LENGTHS[:2]])
    yield counted


@case("stall-play", minutes=0.6, quick=True)
def stall_play(bench, quick):
    counted = Tally("the disk stalls 3, 10 s at Play, at Stop of it, on opening the preferences")

    def one(seconds, command):
        run = recording(bench)
        run.stop()
        time.sleep(0.5)
        if command == "Stop":
            run.say("Play")
            time.sleep(0.5)
        run.disk.stall()
        run.say(command)
        time.sleep(seconds)
        run.disk.heal()
        time.sleep(1)
        if command == "Play":
            counted.check(run.panel.enabled("Stop") or run.words() or "Playing" in str(run.told), "neither played nor told")
        run.finish()
        counted.take(run)
    bench.together([lambda s=s, t=t: one(s, t) for s in LENGTHS[:2] for t in ("Play", "Stop", "Preferences")])
    yield counted


@case("slow", minutes=0.8, quick=True)
def slow(bench, quick):
    counted = Tally("a disk of 20, 50, 200 ms a write")

    def one(milliseconds):
        run = bench.start(disk=ShimmedDisk())
        run.disk.delay(milliseconds)
        run.record()
        time.sleep(15)
        run.stop()
        time.sleep(2)
        run.finish()
        counted.take(run)
    bench.together([lambda ms=ms: one(ms) for ms in (20, 50, 200)])
    yield counted


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
    bench.together([lambda n=n: one(n) for n in ("ENOSPC", "EDQUOT", "EIO", "ESTALE", "EROFS")])
    yield counted


def most_waiting(run):
    """The largest number of seconds that was said to wait for the disk."""
    found = re.findall(r"([\d.]+) s wait in memory", " ".join(run.told))
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


def rename(_, inner):
    os.rename(inner, inner + " 2")


def remove(_, inner):
    shell("rm", "-r", inner)


def replace(_, inner):
    remove(_, inner)
    with open(inner, "w"):
        pass


def remount(place, _):
    shell("umount", "-l", place)
    shell("mount", "-t", "tmpfs", "tmpfs", place)


def write_protect(place, _):
    shell("mount", "-o", "remount,ro", place)


@case("folder", minutes=0.8, quick=True)
def folder(bench, quick):
    """What can happen to a folder while it is recorded into."""
    renamed = Tally("the folder is renamed while recording")
    gone = Tally("the folder is removed, replaced by a file, mounted anew while recording", lost=float("inf"))

    def one(row, act):
        with bench.disk("20m") as place:
            inner = os.path.join(place, "Takes")
            run = bench.start(folder=inner)
            run.record()
            time.sleep(2)
            act(place, inner)
            time.sleep(4)
            run.stop()
            time.sleep(0.5)
            run.finish()
            if row is renamed:
                run.folder = os.fsencode(inner + " 2")
                row.take(run)
            else:
                row.hear(run, tried=True)
                row.expect_words(run, "gone", "folder", "file")
    bench.together([lambda r=r, a=a: one(r, a) for r, a in ((renamed, rename), (gone, remove), (gone, replace),
                                                            (gone, remount))])
    yield renamed
    yield gone


@case("folder-idle", minutes=0.6, quick=True)
def folder_idle(bench, quick):
    """The same between two takes: a refusal with a reason, a question, or the folder under its new name."""
    refused = Tally("the folder is removed, replaced by a file, read-only before Record", silent=WAITING)
    renamed = Tally("the folder is renamed before Record", silent=WAITING)
    for row, act in ((renamed, rename), (refused, remove), (refused, replace), (refused, write_protect)):
        with bench.disk("20m") as place:
            inner = os.path.join(place, "Takes")
            run = bench.start(folder=inner)
            act(place, inner)
            if run.record(3):
                time.sleep(1.5)
                run.stop()
                run.folder = os.fsencode(inner + " 2")
            else:
                row.check(run.words() or run.panel.find("text", "Directory:", 3), "no reason, no question")
                bench.desktop.key("Escape")
            run.finish()
            row.check(bool(run.wanted) == (row is renamed), "recorded into another folder" if run.wanted else
                      "the folder was not found under its new name")
            if run.wanted and row is renamed:
                row.take(run)
            else:
                row.hear(run, tried=True)
    yield renamed
    yield refused


def deep_folders(home, name):
    """A folder whose path is too long for a single call, so it is made part by part."""
    made = os.open(home, os.O_RDONLY)
    for part in name.split(b"/"):
        os.mkdir(part, dir_fd=made)
        inner = os.open(part, os.O_RDONLY, dir_fd=made)
        os.close(made)
        made = inner
    os.close(made)
    return os.path.join(os.fsencode(home), name)


@case("names", minutes=0.4, quick=True)
def names(bench, quick):
    counted = Tally("folders named with a newline, no UTF-8, 255 bytes, right-to-left, a path of nearly 4,096 bytes")
    deep = b"/".join([b"d" * 200] * ((4070 - len(bench.desktop.folder)) // 201))
    for name in (b"two\nlines", b"no \xff\xfe UTF-8", b"n" * 255, "tschüß \u202eabc".encode(), deep):
        home = tempfile.mkdtemp(dir=bench.desktop.folder)
        run = bench.start(home=home, folder=deep_folders(home, name))
        if run.record(5):
            time.sleep(2)
            run.stop()
            run.finish()
            counted.take(run)
        else:
            # The toolkit keeps names as text: one that is not text cannot be chosen, and another folder is asked for.
            asked = run.panel.find("text", "Directory:", 1)
            counted.check(asked or run.words(), "neither recorded, nor told, nor asked")
            bench.desktop.key("Escape")
            run.finish()
            counted.hear(run, tried=True)
    yield counted


@case("two", minutes=0.5, quick=True)
def two(bench, quick):
    """Two programs that begin a take in the same second in the same folder."""
    counted = Tally("two programs record into one folder from the same second on")
    for _ in range(3):
        place = tempfile.mkdtemp(dir=bench.desktop.folder)
        runs = bench.together([lambda: bench.start(folder=place) for _ in range(2)])
        begun = bench.together([lambda r=r: bool(r.record(4)) for r in runs])
        time.sleep(2)
        recorded = [run for run, did in zip(runs, begun) if did]
        bench.together([run.stop for run in recorded])
        for run, did in zip(runs, begun):
            counted.check(did or run.words(), "a take was refused without a word")
            run.finish()
        files = runs[0].files()
        counted.check(len(files) == len(recorded), f"{len(recorded)} takes are in {len(files)} files")
        for path, run in zip(files, recorded):
            counted.take(run, path=path)
    yield counted
