# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A disk that is silent, slow, full, or fails."""

import contextlib
import os
import subprocess
import tempfile
import time

from bench import Run, Silent
from shim import ShimmedDisk
from tally import AT_ONCE, WAITING, Tally, case

CBR = {"encoderTarget": 0, "isCBR": 1}  # 40 kB a second
END = 3.6
"""Seconds that the end of the program may take: three for the disk, the rest for the program itself."""


def start(bench, disk, **options):
    run = Run.__new__(Run)
    home = tempfile.mkdtemp(dir=bench.desktop.folder)
    disk.use(home)
    run.disk = disk
    run.__init__(bench, bench.sound(), home=home, environment=disk.environment, **options)
    return run


def shimmed(bench, **options):
    return start(bench, ShimmedDisk(), **options)


def recording(bench, **options):
    run = shimmed(bench, **options)
    run.record()
    time.sleep(2.5)
    return run


def each_length(bench, quick, one):
    """The stalls of a case side by side; the longest is for ever, as far as a case can tell."""
    bench.together([lambda s=seconds: one(s) for seconds in ((3, 10) if quick else (3, 10, 60, None))])


def say_trouble(counted, run, length):
    if length is None or length >= 3:
        counted.expect_words(run, "disk")


@case("stall", minutes=1.5, quick=True)
def stall(bench, quick):
    """Every call to the disk hangs in the middle of a take."""
    counted = Tally("the disk stalls 3, 10, 60 s, for ever while recording")

    def one(seconds):
        run = recording(bench)
        before = run.sound.position()
        run.disk.stall()
        time.sleep(seconds or 20)
        if seconds:
            run.disk.heal()
            time.sleep(2)
            run.stop()
            time.sleep(1)
        ended = run.finish()
        counted.check(ended is not None and ended < END, f"the end took {ended or 20:.1f} s")
        # For ever: what the disk had taken before.
        counted.take(run, wanted=None if seconds else [(run.wanted[0][0], before)])
        say_trouble(counted, run, seconds)
    each_length(bench, quick, one)
    yield counted


def stalled_command(bench, quick, name):
    counted = Tally(f"the disk stalls 3, 10, 60 s, for ever, then {name}")

    def one(seconds):
        run = recording(bench)
        before = run.sound.position()
        run.disk.stall()
        time.sleep(0.5)
        run.until(name)
        time.sleep((seconds or 15) - 0.5)
        if seconds:
            run.disk.heal()
            time.sleep(2)
        ended = run.finish()
        counted.check(ended is not None and ended < END, f"the end took {ended or 20:.1f} s")
        counted.take(run, wanted=None if seconds else [(run.wanted[0][0], before)])
        say_trouble(counted, run, seconds)
    each_length(bench, quick, one)
    return counted


@case("stall-pause", minutes=1.5)
def stall_pause(bench, quick):
    yield stalled_command(bench, quick, "Pause")


@case("stall-stop", minutes=1.5, quick=True)
def stall_stop(bench, quick):
    yield stalled_command(bench, quick, "Stop")


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
        ended = run.finish()
        counted.check(ended is not None and ended < END, f"the end took {ended or 20:.1f} s")
        counted.take(run, wanted=None if seconds else [(run.wanted[0][0], before)])
        if not seconds:
            counted.check("unwritten" in run.log() or "not written" in run.log(), "what was left was not logged")
    bench.together([lambda: one(passing, 2), lambda: one(lasting, None)])
    yield passing
    yield lasting


@case("stall-start", minutes=1.5)
def stall_start(bench, quick):
    """Record on a silent disk: a file or a refusal, and a second attempt when the disk is back."""
    counted = Tally("the disk stalls 3, 10, 60 s at Record", silent=WAITING)

    def one(seconds):
        run = shimmed(bench)
        run.disk.stall()
        begun = run.record(deadline=min(seconds, 5))
        if not begun:
            counted.check(run.words(), "nobody was told why no recording began")
        time.sleep(seconds)
        run.disk.heal()
        time.sleep(1)
        if not begun:
            if not counted.check(not run.panel.enabled("Stop"), "a recording that was given up began all the same"):
                run.say("Stop")
            counted.check(run.record(5), "no recording after the disk was back")
        time.sleep(2)
        if run.since is not None:
            run.stop()
        time.sleep(0.5)
        run.finish()
        counted.take(run, path=next(reversed(run.files()), None))
    each_length(bench, True, one)
    yield counted


@case("stall-launch", minutes=0.6, quick=True)
def stall_launch(bench, quick):
    """The working folder's disk is silent at launch, and there later."""
    counted = Tally("the disk stalls 3, 10 s from the launch on, then Record")

    def one(seconds):
        disk = ShimmedDisk()
        home = tempfile.mkdtemp(dir=bench.desktop.folder)
        disk.use(home)
        disk.stall()
        began = time.monotonic()
        run = Run(bench, bench.sound(), home=home, environment=disk.environment)
        counted.check(time.monotonic() - began < 6, "the window came late")
        time.sleep(max(0, seconds - (time.monotonic() - began)))
        disk.heal()
        time.sleep(1.5)
        counted.check(run.record(5), "the folder was not found again")
        time.sleep(2)
        if run.since is not None:
            run.stop()
        time.sleep(0.5)
        run.finish()
        counted.take(run)
    each_length(bench, True, one)
    yield counted


@case("stall-play", minutes=0.6, quick=True)
def stall_play(bench, quick):
    """Play, Show in Folder and the preferences on a silent disk."""
    counted = Tally("the disk stalls 3, 10 s at Play, at Stop of it, on opening the preferences")

    def one(seconds, then):
        run = recording(bench)
        run.stop()
        time.sleep(0.5)
        if then == "Stop":
            run.say("Play")
            time.sleep(0.5)
        run.disk.stall()
        run.panel.press("Play" if then == "Play" else then)
        time.sleep(seconds)
        run.disk.heal()
        time.sleep(1)
        if then == "Play":
            counted.check(run.panel.enabled("Stop") or run.words(), "neither played nor told")
        run.finish()
        counted.take(run)
    bench.together([lambda s=s, t=t: one(s, t) for s in (3, 10) for t in ("Play", "Stop", "Preferences")])
    yield counted


@case("slow", minutes=0.8, quick=True)
def slow(bench, quick):
    counted = Tally("a disk of 20, 50, 200 ms a write", silent=AT_ONCE)

    def one(milliseconds):
        run = shimmed(bench)
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
    bench.together([lambda n=n: one(n) for n in ("ENOSPC", "EDQUOT", "EIO", "ESTALE", "EROFS")])
    yield counted


def fill(place, leave):
    """Leaves so many bytes on the disk."""
    free = os.statvfs(place).f_bavail * os.statvfs(place).f_frsize
    with open(os.path.join(place, "filler"), "wb") as file:
        file.write(bytes(max(0, free - leave)))


@case("full", minutes=0.8, quick=True)
def full(bench, quick):
    """A real disk without space, which gets some while recording, after Stop, or never."""
    counted = Tally("the disk is full for 8 s: space again while recording, after Stop")
    never = Tally("the disk stays full")

    def one(row, moment):
        with bench.disk("2m") as place:
            run = Run(bench, bench.sound(), folder=place, **CBR)
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
                os.unlink(os.path.join(place, "filler"))
                time.sleep(4)
            row.check(moment == "while recording" or run.panel.text("Status") != "Ready" or moment == "after Stop",
                      '"Ready" stands over a take that lacks something')
            ended = run.finish()
            row.check(ended is not None and ended < END, f"the end took {ended or 20:.1f} s")
            row.take(run, wanted=[(run.wanted[0][0], in_time - 2)] if moment == "never" else None)
            row.expect_words(run, "full")
    bench.together([lambda: one(counted, "while recording"), lambda: one(counted, "after Stop"),
                    lambda: one(never, "never")])
    yield counted
    yield never


@contextlib.contextmanager
def loop_disk(bench):
    """A disk that the kernel itself can freeze."""
    image = os.path.join(tempfile.mkdtemp(dir=bench.desktop.folder), "image")
    place = tempfile.mkdtemp(dir=bench.desktop.folder)
    with open(image, "wb") as file:
        file.truncate(64 << 20)
    subprocess.run(["mkfs.ext4", "-q", image], check=True)
    subprocess.run(["mount", "-o", "loop", image, place], check=True)
    try:
        yield place
    finally:
        subprocess.run(["fsfreeze", "-u", place], stderr=subprocess.DEVNULL, check=False)
        subprocess.run(["umount", "-l", place], check=False)


@case("frozen-disk", minutes=0.7, quick=True)
def frozen_disk(bench, quick):
    """The kernel stops a file system, as for a snapshot: no shim in between."""
    counted = Tally("the kernel freezes the file system for 8 s: nothing, Pause, Stop meanwhile")

    def one(then):
        with loop_disk(bench) as place:
            run = Run(bench, bench.sound(), folder=place)
            run.record()
            time.sleep(3)
            subprocess.run(["fsfreeze", "-f", place], check=True)
            time.sleep(2)
            thaw = subprocess.Popen(["sh", "-c", 'sleep 6; fsfreeze -u "$0"', place])
            if then:
                run.until(then)
            thaw.wait()
            time.sleep(2)
            run.finish()
            counted.take(run)
            counted.expect_words(run, "disk")
    bench.together([lambda t=t: one(t) for t in (None, "Pause", "Stop")])
    yield counted


@case("folder", minutes=0.8, quick=True)
def folder(bench, quick):
    """What can happen to a folder while it is recorded into."""
    renamed = Tally("the folder is renamed while recording")
    gone = Tally("the folder is removed, replaced by a file, mounted anew while recording", lost=float("inf"))

    def take(row, act):
        with bench.disk("20m") as place:
            inner = os.path.join(place, "Takes")
            run = Run(bench, bench.sound(), folder=inner)
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
                row.tries += 1
                row.hear(run)
                row.expect_words(run, "gone", "no such", "folder", "file")

    def rename(_, inner):
        os.rename(inner, inner + " 2")

    def remove(_, inner):
        subprocess.run(["rm", "-r", inner], check=True)

    def replace(_, inner):
        os.rename(inner, inner + " 2")
        with open(inner, "w"):
            pass

    def remount(place, _):
        subprocess.run(["umount", "-l", place], check=True)
        subprocess.run(["mount", "-t", "tmpfs", "tmpfs", place], check=True)

    bench.together([lambda: take(renamed, rename), lambda: take(gone, remove), lambda: take(gone, replace),
                    lambda: take(gone, remount)])
    yield renamed
    yield gone


@case("folder-idle", minutes=0.6, quick=True)
def folder_idle(bench, quick):
    """The same between two takes: a refusal with a reason, or the folder under its new name."""
    counted = Tally("the folder is removed, read-only, replaced by a file before Record", silent=WAITING)
    renamed = Tally("the folder is renamed before Record", silent=WAITING)

    def one(row, act, back):
        with bench.disk("20m") as place:
            inner = os.path.join(place, "Takes")
            run = Run(bench, bench.sound(), folder=inner)
            act(place, inner)
            begun = run.record(3)
            if begun:
                row.check(row is renamed, "recorded into what is not the folder")
                time.sleep(1.5)
                run.stop()
                run.folder = os.fsencode(inner + " 2")
            else:
                with contextlib.suppress(Silent):
                    row.check(run.words() or run.panel.find("text", "Directory:", 3), "no reason, no question")
                bench.desktop.key("Escape")
            time.sleep(0.5)
            run.finish()
            subprocess.run(["sh", "-c", back.replace("PLACE", place)], check=True)
            if begun:
                row.take(run)
            else:
                row.check(row is counted, "the folder was not found under its new name")
                row.tries += 1
                row.hear(run)

    def replace(_, inner):
        os.rmdir(inner)
        with open(inner, "w"):
            pass
    for row, act, back in ((renamed, lambda _, inner: os.rename(inner, inner + " 2"), "true"),
                           (counted, lambda _, inner: os.rmdir(inner), "true"), (counted, replace, "true"),
                           (counted, lambda place, _: subprocess.run(["mount", "-o", "remount,ro", place], check=True),
                            "mount -o remount,rw PLACE")):
        one(row, act, back)
    yield renamed
    yield counted


@case("names", minutes=0.4, quick=True)
def names(bench, quick):
    counted = Tally("folders named with a newline, no UTF-8, 255 bytes, a path of nearly 4,096 bytes")

    def one(name):
        home = tempfile.mkdtemp(dir=bench.desktop.folder)
        where = os.path.join(os.fsencode(home), name)
        made = os.open(home, os.O_RDONLY)
        for part in name.split(b"/"):  # no single call takes a path near the limit with a file name after it
            os.mkdir(part, dir_fd=made)
            inner = os.open(part, os.O_RDONLY, dir_fd=made)
            os.close(made)
            made = inner
        os.close(made)
        run = Run(bench, bench.sound(), home=home, folder=where)
        if len(where) > 4000:
            run.record(3)
            counted.check(run.since is not None or run.words(), "neither recorded nor told")
        else:
            run.record()
        time.sleep(2)
        if run.since is not None:
            run.stop()
        run.finish()
        if run.wanted:
            counted.take(run)
        else:
            counted.hear(run)
    room = 4070 - len(bench.desktop.folder)
    deep = b"/".join([b"d" * 200] * (room // 201))
    for name in (b"two\nlines", b"no \xff\xfe UTF-8", b"n" * 255, "tschüß \u202eabc".encode(), deep):
        one(name)
    yield counted


@case("two", minutes=0.5, quick=True)
def two(bench, quick):
    """Two programs that begin a take in the same second in the same folder."""
    counted = Tally("two programs record into one folder from the same second on")
    for _ in range(3):
        place = tempfile.mkdtemp(dir=bench.desktop.folder)
        runs = bench.together([lambda: Run(bench, bench.sound(), folder=place) for _ in range(2)])
        begun = bench.together([lambda r=r: bool(r.record(4)) for r in runs])
        time.sleep(2)
        bench.together([lambda r=r: r.stop() for r, b in zip(runs, begun) if b] or [lambda: None])
        for run, did in zip(runs, begun):
            counted.check(did or run.words(), "a take was refused without a word")
            run.finish()
        files = runs[0].files()
        counted.check(len(files) == sum(begun), f"{sum(begun)} takes are in {len(files)} files")
        for path, run in zip(files, [run for run, did in zip(runs, begun) if did]):
            counted.take(run, path=path, wanted=[run.wanted[0]])
    yield counted
