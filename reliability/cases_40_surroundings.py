# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Settings files that are not settings, and desktops and machines that lack something."""

import os
import subprocess
import tempfile
import time

from bench import PROGRAM, Run
from tally import Tally, case


def write(path, data):
    with open(path, "wb") as file:
        file.write(data)


def huge(path):
    with open(path, "wb") as file:
        file.write(b"[General]\n")
        file.truncate(100 << 20)


def loop(path):
    os.symlink(path, path)


def damaged_archive(path):
    write(path, b'[General]\nHBConfigDataKey="@ByteArray(bplist00\\xd4\\xff\\xff)"\nHBWorkingPathKey="@ByteArray(no token)"\n')


def unreadable(path):
    write(path, b"[General]\nshowInFinderWhenFinishRecording=false\n")
    os.chmod(path, 0)


AS_A_USER = ["setpriv", "--bounding-set", "-dac_override,-dac_read_search", "--inh-caps", "-dac_override,-dac_read_search"]
"""Nobody who runs this may read what its mode forbids, root included."""
SETTINGS = {
    "garbage": lambda path: write(path, os.urandom(4096)),
    "empty": lambda path: write(path, b""),
    "zeros": lambda path: write(path, bytes(4096)),
    "100 MB": huge,
    "unreadable": unreadable,
    "a folder": os.mkdir,
    "a FIFO": os.mkfifo,
    "a symlink loop": loop,
    "a device": lambda path: os.symlink("/dev/zero", path),
    "a damaged archive": damaged_archive,
    "a type of its own": lambda path: write(path, b"[General]\nHBWorkingPathKey=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\x1)\n"),
}


@case("settings", minutes=0.6, quick=True)
def settings(bench, quick):
    """The window comes, the back of the card opens, the folder is asked for."""
    counted = Tally("the settings file is " + ", ".join(SETTINGS))

    def one(make):
        home = tempfile.mkdtemp(dir=bench.desktop.folder)
        path = os.path.join(home, ".config", "flipside", "flipside.conf")
        os.makedirs(os.path.dirname(path))
        make(path)
        run = Run(bench, bench.sound(), home=home, folder="", command=[*AS_A_USER, PROGRAM])
        began = time.monotonic()
        run.say("Preferences")
        counted.check(run.panel.find("button", "Done", 8), "no preferences")
        counted.check(time.monotonic() - began < 5, "the preferences came late")
        run.say("Done")
        ended = run.finish()
        counted.check(ended is not None and ended < 3, f"the end took {ended or 20:.1f} s")
        counted.hear(run, tried=True)
    for make in SETTINGS.values():
        one(make)
    yield counted


@case("lacking", minutes=0.6, quick=True)
def lacking(bench, quick):
    """A take on a desktop without fonts, run-time folder, home to write to."""
    counted = Tally("no fonts, no XDG_RUNTIME_DIR, a read-only home, no HOME")

    def one(environment, *before):
        with bench.disk("20m") as place, bench.disk("1m") as home:
            bench.start(home=home, folder=place).finish()  # there are settings now
            if before:
                subprocess.run([*before, home], check=True)
            run = bench.start(home=home, folder=place, environment=environment)
            run.record_for(2)
            counted.outcome(run)

    nothing = tempfile.mkdtemp(dir=bench.desktop.folder)
    write(os.path.join(nothing, "fonts.conf"), b"<fontconfig><dir>/nowhere</dir></fontconfig>")
    one({"FONTCONFIG_FILE": os.path.join(nothing, "fonts.conf")})
    one({"XDG_RUNTIME_DIR": None})
    one({}, "mount", "-o", "remount,ro")
    one({"HOME": None})
    yield counted


def limited(bench, *limits):
    return Run(bench, bench.sound(), command=["prlimit", *limits, PROGRAM])


@case("few-descriptors", minutes=1, quick=True)
def few_descriptors(bench, quick):
    """Takes until no descriptor is left: a refusal with a reason, and the program goes on."""
    counted = Tally("32, 48 descriptors: takes until one is refused")

    def one(number):
        run = limited(bench, f"--nofile={number}:{number}")
        for _ in range(30):
            if not run.record(3):
                break
            time.sleep(1.1)
            run.stop()
            time.sleep(0.2)
        counted.check(len(run.wanted) < 30 and run.program.running(), "no start was refused")
        counted.expect_words(run, "Cannot record: too many files are open")
        ended = run.finish()
        counted.check(ended is not None and ended < 3.6, f"the end took {ended or 20:.1f} s")
        counted.hear(run)
        counted.check(len(run.files()) == len(run.wanted), f"{len(run.wanted)} takes are in {len(run.files())} files")
        for path, wanted in zip(run.files(), run.wanted):
            counted.take(run, path=path, wanted=[wanted])
        return len(run.wanted)
    begun = bench.together([lambda n=n: one(n) for n in (32, 48)])
    counted.check(begun[1], f"{begun} takes were begun")
    yield counted


class TaskLimit:
    """A control group in which no further thread can be made."""

    folder = "/sys/fs/cgroup/pids" if os.path.exists("/sys/fs/cgroup/pids") else "/sys/fs/cgroup"

    def __init__(self, pid):
        self.place = os.path.join(self.folder, f"flipside-faults-{pid}")
        os.mkdir(self.place)
        write(os.path.join(self.place, "cgroup.procs"), str(pid).encode())

    def forbid(self):
        with open(os.path.join(self.place, "pids.current")) as file:
            write(os.path.join(self.place, "pids.max"), file.read().strip().encode())

    def end(self):
        os.rmdir(self.place)


@case("no-threads", minutes=0.5, quick=True)
def no_threads(bench, quick):
    """No further thread can be made: while recording, before Record, before Play."""
    counted = Tally("pthread_create fails while recording, before Record, before Play")

    def one(moment):
        run = bench.start()
        limit = TaskLimit(run.program.pid)
        if moment != "Record":
            run.record()
            time.sleep(1.5)
        if moment == "Play":
            run.stop()
        limit.forbid()
        if moment == "Record":
            counted.check(run.record(4) or run.words(), "neither recorded nor told")
        elif moment == "Play":
            run.say("Play")
        time.sleep(3)
        if run.since is not None:
            run.stop()
        time.sleep(0.5)
        counted.check(run.program.running(), f"the program ended with {run.program.process.returncode} ({moment})")
        counted.outcome(run)
        limit.end()
    for moment in ("recording", "Record", "Play"):
        one(moment)
    yield counted


@case("file-limit", minutes=0.4, quick=True)
def file_limit(bench, quick):
    """What a shell's ulimit does, and with other numbers a file system: the system says so with a signal, too."""
    counted = Tally("no file may be larger than 150,000 bytes while recording, for 6 s")
    run = bench.start()
    run.record()
    for size in ("150000", "unlimited"):
        subprocess.run(["prlimit", f"--fsize={size}:unlimited", "--pid", str(run.program.pid)], check=True)
        time.sleep(6)
    counted.check(run.program.running(), f"the program ended with {run.program.process.returncode}")
    run.until("Stop" if run.program.running() else None)
    time.sleep(0.5)
    counted.outcome(run)
    counted.check(run.words(), "nobody was told")
    yield counted


@case("little-memory", minutes=0.4, quick=True)
def little_memory(bench, quick):
    """What the program may map is all but used up in the middle of a take."""
    counted = Tally("4 MB of memory left while recording")
    run = bench.start()
    run.record()
    time.sleep(1.5)
    with open(f"/proc/{run.program.pid}/statm") as statm:
        mapped = int(statm.read().split()[0]) * os.sysconf("SC_PAGE_SIZE")
    subprocess.run(["prlimit", f"--as={mapped + (4 << 20)}", "--pid", str(run.program.pid)], check=True)
    time.sleep(4)
    counted.check(run.program.running(), f"the program ended with {run.program.process.returncode}")
    run.until("Stop" if run.program.running() else None)
    counted.outcome(run)
    yield counted
