# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The cases of the suite, and what is counted of each: one row of the table."""

import os
import re

from judgement import HELD_BACK, judge

CASES = {}
AT_ONCE = 0.2
"""Seconds that the window may be silent; 0.9 after a button that starts or stops, which may wait for the server or the disk."""
WAITING = 0.9
NUMBER = re.compile(r"\d+(\.\d+)?( min \d+)?")
TOLD_FROM = 0.1
"""Seconds of lost sound from which on the user is told."""
BESIDE = " / "
"""Between the column and the row of a comparison, in the name of a fault."""


class Case:
    def __init__(self, function, name, minutes, quick, alone):
        self.function, self.name, self.minutes, self.quick, self.alone = function, name, minutes, quick, alone


def case(name, minutes=1.0, quick=False, alone=False):
    """A function of a bench and whether the run is the quick one, which yields its tallies. `minutes` is about how long it
    takes; one that needs both processors is run alone."""
    def register(function):
        CASES[name] = Case(function, name, minutes, quick, alone)
        return function
    return register


class Tally:
    """One row: a fault, how often it was tried, the worst that it did, and whether the promise was held."""

    def __init__(self, fault, lost=TOLD_FROM, silent=AT_ONCE):
        self.fault, self.may_lose, self.may_be_silent = fault, lost, silent
        self.tries, self.lost, self.silence = 0, None, None
        self.told, self.problems = {}, []

    def broken(self, problem):
        if problem not in self.problems:
            self.problems.append(problem)

    def check(self, holds, problem):
        if not holds:
            self.broken(problem)
        return holds

    def hear(self, run, tried=False):
        """Judges what the window and the status line of a run did; `tried` where no file is judged."""
        self.tries += tried
        run.watch.finish()
        waiting, other = run.silence()
        self.silence = max(self.silence or 0.0, waiting, other)
        self.check(waiting <= max(WAITING, self.may_be_silent), f"the window was silent for {waiting * 1000:.0f} ms after a button")
        self.check(other <= self.may_be_silent, f"the window was silent for {other * 1000:.0f} ms")
        for word in run.words():
            # Of a text that counts seconds, only the last one.
            self.told[NUMBER.sub("", word)] = word
        log = run.log()
        self.check("Sanitizer" not in log and "runtime error" not in log, "the sanitizer complains")

    def take(self, run, path=None, wanted=None, may_lose=None, silent_about_loss=False, held=HELD_BACK):
        """A recording of that run, which is over: its one file and all that was wanted unless told otherwise."""
        self.tries += 1
        self.hear(run)
        if not self.check(wanted or run.wanted, "nothing was recorded"):
            return None
        limit = self.may_lose if may_lose is None else may_lose
        files = [path] if path else run.files()
        if not self.check(len(files) == 1, f"{len(files)} files"):
            return None
        found = judge(files[0], wanted or run.wanted, run.sound.away, held)
        self.lost = max(self.lost or 0.0, found.lost)
        if os.environ.get("FLIPSIDE_FAULTS_SHOW"):
            print("   ", self.fault, found, run.wanted, run.told, run.silence(), flush=True)
        self.check(found.lost <= limit, f"{found.lost:.1f} s of sound are lost")
        self.check(found.foreign <= 0.05, f"{found.foreign:.1f} s are in the file twice")
        if found.lost > TOLD_FROM and not silent_about_loss:
            self.check(run.words(), f"nobody was told of {found.lost:.1f} s")
        return found

    def outcome(self, run, **how):
        """Ends the program and judges its take, or what it said where there is none."""
        run.finish()
        if run.wanted:
            return self.take(run, **how)
        self.hear(run, tried=True)
        return None

    def expect_words(self, run, *words):
        """One of them was said."""
        self.check(any(word in text for text in run.told + run.alerts for word in words),
                   f"never said: {' or '.join(words)}")

    def row(self):
        return {"fault": self.fault, "tries": self.tries, "lost": self.lost, "silence": self.silence, "told": list(self.told.values()),
                "problems": self.problems}
