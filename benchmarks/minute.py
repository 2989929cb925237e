#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""What a minute of recording costs in two builds, in turns on one desktop, one sound server and one microphone:

    minute.py EARLIER_BUILD LATER_BUILD [ROUNDS [SECONDS]]

In each turn one build records twice at once: the program with its window visible, and the recording without a window.
Both have the encoder's settings of a first start. Processor time is that of the whole process, user and system, from two
seconds after the start on; memory is the largest that was ever resident. No build is always the first of a round.
"""

import contextlib
import os
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "testbed"))
from desktop import Desktop, end_process, wait_until  # noqa: E402
from recorder import Recorder, SoundServer  # noqa: E402

SETTLE_SECONDS = 2
WAYS = ("with its window", "without a window")
EARLIER, LATER = 0, 1


def processor_seconds(pid):
    """Of all the threads it has had, by the clock that the kernel keeps of a process."""
    return time.clock_gettime((~pid << 3) | 2)


def peak_megabytes(pid):
    with open(f"/proc/{pid}/status") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM")) / 1024


def bytes_in(folder):
    return sum(entry.stat().st_size for entry in os.scandir(folder))


class Build:
    def __init__(self, folder, desktop, sound):
        self.program = os.path.join(folder, "app", "flipside")
        self.headless = os.path.join(folder, "benchmarks", "record_headless")
        self.desktop, self.sound = desktop, sound
        self.home = tempfile.mkdtemp(dir=desktop.folder)
        self.folder = os.path.join(self.home, "Recordings")
        # The folder is chosen in a program that is not measured: the chooser would be most of its memory.
        recorder = Recorder(desktop, sound, self.home, self.program)
        recorder.record()
        recorder.end()
        self.figures = {way: [] for way in WAYS}

    def started(self, command):
        # The accessibility bus is there to find the folder chooser; a desktop starts programs without it.
        environment = {name: value for name, value in self.desktop.env.items()
                       if name != "QT_LINUX_ACCESSIBILITY_ALWAYS_ON"}
        environment |= {**self.sound.environment, "HOME": self.home, "XDG_CONFIG_HOME": os.path.join(self.home, ".config")}
        return subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def turn(self, seconds):
        window = self.started([self.program])
        self.desktop.xdotool("search", "--sync", "--onlyvisible", "--pid", window.pid)
        wait_until(self.desktop.active_window_geometry, "the window to be active")
        time.sleep(SETTLE_SECONDS)
        before = bytes_in(self.folder)
        self.desktop.key("ctrl+r")
        take = tempfile.mkstemp(dir=self.home, suffix=".mp3")[1]
        headless = self.started([self.headless, str(seconds + 60), take])
        try:
            wait_until(lambda: bytes_in(self.folder) > before and os.path.getsize(take), "both to record")
            time.sleep(SETTLE_SECONDS)
            self.measure(seconds, window, headless)
        finally:
            for process in (window, headless):
                end_process(process)

    def measure(self, seconds, *processes):
        pids = [process.pid for process in processes]
        begin = [(time.monotonic(), processor_seconds(pid)) for pid in pids]
        time.sleep(seconds)
        for way, pid, (began, before) in zip(WAYS, pids, begin):
            spent = processor_seconds(pid) - before
            self.figures[way].append((spent / (time.monotonic() - began) * 60, peak_megabytes(pid)))

    def median(self, way, figure):
        return statistics.median(taken[figure] for taken in self.figures[way])


def table(earlier, later):
    print("| recording | CPU for a minute, earlier | later | times | the rounds | memory, earlier | later | more |")
    print("|---|---:|---:|---:|---|---:|---:|---:|")
    for way in WAYS:
        rounds = [after[0] / before[0] for before, after in zip(earlier.figures[way], later.figures[way])]
        cpu, memory = ([build.median(way, figure) for build in (earlier, later)] for figure in (0, 1))
        print(f"| Flipside {way} | {cpu[EARLIER]:.3f} s | {cpu[LATER]:.3f} s | {statistics.median(rounds):.3f} | "
              f"{min(rounds):.3f} to {max(rounds):.3f} | {memory[EARLIER]:.1f} MB | {memory[LATER]:.1f} MB | "
              f"{memory[LATER] - memory[EARLIER]:+.1f} MB |")


def main():
    folders = [os.path.abspath(folder) for folder in sys.argv[1:3]]
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 5
    seconds = float(sys.argv[4]) if len(sys.argv) > 4 else 60
    with contextlib.ExitStack() as stack:
        desktop = stack.enter_context(Desktop())
        sound = SoundServer(signal="music")
        stack.callback(sound.end)
        builds = [Build(folder, desktop, sound) for folder in folders]
        for number in range(rounds):
            for build in builds if number % 2 == 0 else reversed(builds):
                build.turn(seconds)
        table(*builds)


if __name__ == "__main__":
    main()
