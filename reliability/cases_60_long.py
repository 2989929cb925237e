# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Much of the same: takes, hours, events, damaged input."""

import contextlib
import os
import random
import subprocess
import time

from bench import PROGRAM, TOOLS, VBR, Failure, Silent
from tally import Tally, case

SOAK_MINUTES = float(os.environ.get("FLIPSIDE_SOAK_MINUTES", 10))
MEMORY_OF_A_TAKE = 0.37
"""Megabytes: the encoder of each take stays until the process ends, on purpose."""


def resident(run):
    with open(f"/proc/{run.program.pid}/statm") as statm:
        return int(statm.read().split()[1]) * os.sysconf("SC_PAGE_SIZE") / 1e6


def descriptors(run):
    return len(os.listdir(f"/proc/{run.program.pid}/fd"))


@case("takes", minutes=8)
def takes(bench, quick):
    number = 100 if quick else 1000
    counted = Tally(f"{number} takes in one run")
    run = bench.start()
    for _ in range(20):
        run.record()
        run.stop()
    memory, files = resident(run), descriptors(run)
    for _ in range(number - 20):
        run.record()
        run.stop()
        run.wanted.clear()
    grown = (resident(run) - memory) / (number - 20)
    opened = (descriptors(run) - files) / (number - 20)
    counted.check(grown <= MEMORY_OF_A_TAKE * 1.1, f"{grown:.2f} MB a take")
    counted.check(opened <= 1.01, f"{opened:.2f} descriptors a take")
    run.finish()
    counted.tries = number
    counted.hear(run)
    yield counted


@case("soak", minutes=SOAK_MINUTES + 0.5)
def soak(bench, quick):
    counted = Tally(f"a take of {SOAK_MINUTES:g} minutes: flat memory, exact length")
    run = bench.start(**VBR)
    run.record()
    time.sleep(45)
    memory = resident(run)
    time.sleep(max(0, SOAK_MINUTES * 60 - 45))
    grown = resident(run) - memory
    run.stop()
    run.finish()
    counted.check(grown < 1, f"{grown:.1f} MB more")
    found = counted.take(run, may_lose=0.15, silent_about_loss=True)
    begin, end = run.wanted[0]
    counted.check(found and abs(found.length - (end - begin)) < 0.35, "another length than was recorded")
    yield counted


@case("damaged-input", minutes=4, alone=True)
def damaged_input(bench, quick):
    """Under the sanitizers when they are built."""
    reader = os.path.join(TOOLS.replace("release", "asan"), "damaged_input")
    reader = reader if os.path.exists(reader) else os.path.join(TOOLS, "damaged_input")
    for kind, number in (("archives", 1000000), ("tokens", 100000), ("mp3", 10000)):
        counted = Tally(f"{number:,} damaged {kind}")
        answer = subprocess.run(["nice", reader, kind, str(number)], capture_output=True, text=True, check=False)
        counted.tries = number
        counted.check(answer.returncode == 0, (answer.stdout + answer.stderr)[-200:] or f"ended with {answer.returncode}")
        yield counted


@case("monkey", minutes=5, alone=True)
def monkey(bench, quick):
    """Random keys and clicks under the address sanitizer."""
    events = 2000 if quick else 20000
    counted = Tally(f"{events:,} random keys and clicks under the address sanitizer", silent=5)
    sanitized = PROGRAM.replace("release", "asan")
    if not counted.check(sanitized != PROGRAM and os.path.exists(sanitized), "there is no build with the sanitizer"):
        yield counted
        return
    chance = random.Random(7)
    run = bench.start(command=[sanitized], environment={"ASAN_OPTIONS": "detect_leaks=0"})
    keys = ("ctrl+r", "ctrl+p", "ctrl+period", "ctrl+space", "ctrl+comma", "Escape", "Tab", "shift+Tab", "space", "Return",
            "Up", "Down", "Left", "Right", "alt+f", "Home", "End", "F1", "ctrl+shift+r")
    while counted.tries < events and run.program.running():
        place = bench.desktop.active_window_geometry()
        if not place:  # the minimise button was hit
            with contextlib.suppress(Failure):
                bench.desktop.xdotool("search", "--class", "^flipside$", "windowactivate", "%@")
            place = bench.desktop.active_window_geometry() or (0, 0, 400, 300)
        commands = []
        for _ in range(100):
            if chance.random() < 0.5:
                commands.append(f"key --delay 1 {chance.choice(keys)}")
            else:
                x, y = chance.randrange(place[2] or 1), chance.randrange(place[3] or 1)
                commands.append(f"mousemove {place[0] + x} {place[1] + y} click --delay 1 1")
        bench.desktop.xdotool(*" ".join(commands).split())
        counted.tries += 100
        if run.program.process.poll() == 0:  # the close button was hit
            run.finish()
            counted.hear(run)
            run.launch()
    counted.check(run.program.running(), f"the program ended with {run.program.process.returncode}")
    try:
        run.panel.appear()
        counted.check(run.panel.text("Status", 20) is not None or run.panel.find("button", "Done", 5), "no answer at the end")
    except Silent:
        counted.broken("no answer at the end")
    run.finish()
    counted.hear(run)
    yield counted
