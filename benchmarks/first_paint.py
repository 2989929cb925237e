#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""From the start of the process to the first paint: the preferences card beside a trivial window of the toolkit, in
turns, on the display that DISPLAY names or on none.

    first_paint.py BUILD_FOLDER [ROUNDS]
"""

import os
import statistics
import subprocess
import sys
import tempfile
import time

PROGRAMS = {"trivial window": "first_paint_trivial", "preferences card": "first_paint_preferences"}


def milliseconds_to_first_paint(program, environment):
    start = time.monotonic_ns()
    done = subprocess.run([program], env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=30,
                          check=True)
    return (int(done.stdout) - start) / 1e6


def main():
    folder = os.path.join(sys.argv[1], "benchmarks")
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 30
    times = {name: [] for name in PROGRAMS}
    with tempfile.TemporaryDirectory() as home:
        environment = {**os.environ, "HOME": home, "XDG_CONFIG_HOME": home, "XDG_RUNTIME_DIR": home}
        environment.setdefault("QT_QPA_PLATFORM", "xcb" if "DISPLAY" in environment else "offscreen")
        # The first round fills the caches of the file system.
        for round_number in range(rounds + 1):
            for name, program in PROGRAMS.items():
                elapsed = milliseconds_to_first_paint(os.path.join(folder, program), environment)
                if round_number:
                    times[name].append(elapsed)
    trivial = statistics.median(times["trivial window"])
    print(f"| first paint ({environment['QT_QPA_PLATFORM']}, {rounds} rounds) | median | 90 % | of the trivial one |")
    print("|---|---:|---:|---:|")
    for name, values in times.items():
        median = statistics.median(values)
        slow = sorted(values)[int(len(values) * 0.9)]
        print(f"| {name} | {median:.1f} ms | {slow:.1f} ms | {median / trivial:.2f} |")


if __name__ == "__main__":
    main()
