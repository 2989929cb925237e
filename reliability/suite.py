#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Makes things around the program fail and says what that did: ./faults [--jobs N] [--soak MINUTES] [--list] [quick | NAME...]

A name is a case or the beginning of one. Without names the whole suite runs and writes its table into
docs/RELIABILITY.md."""

import argparse
import importlib
import json
import os
import signal
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import tally  # noqa: E402
from bench import NOISE, TOOLS, Bench  # noqa: E402

DOCUMENT = os.path.join(HERE, "..", "docs", "RELIABILITY.md")
HEADER = ("| fault | tries | lost | window silent | what was said | promise |", "|---|---:|---:|---:|---|---|")
LATENESS = 4
"""Times the estimated length that a case may take before it is ended, and counts as broken."""


def load_cases():
    for name in sorted(os.listdir(HERE)):
        if name.startswith("cases_") and name.endswith(".py"):
            importlib.import_module(name[:-3])


def run_case(name, quick, answer):
    """In a process of its own: the accessibility bus, the display and the servers are its own."""
    def leave(*_):
        raise SystemExit("ended from outside")
    signal.signal(signal.SIGTERM, leave)
    if os.geteuid() == 0:
        os.nice(-10)  # what else the machine does is not to be measured
    rows = []
    try:
        with Bench() as bench:
            os.chdir(bench.desktop.home)  # a monkey finds the way to it, and records there
            for counted in tally.CASES[name].function(bench, quick):
                counted.problems += bench.troubles
                bench.troubles.clear()
                rows.append(counted.row())
    except BaseException as error:  # told as a broken promise, whatever it is
        if os.environ.get("FLIPSIDE_FAULTS_SHOW"):
            import traceback
            traceback.print_exc()
        rows.append({**tally.Tally(name).row(), "problems": [f"{type(error).__name__}: {error}"[:300]]})
    with open(answer, "w") as file:
        json.dump(rows, file)


def shown(row):
    def seconds(value, digits):
        return "" if value is None else f"{value:.{digits}f} s"
    said = "; ".join(f'"{word}"' for word in row["told"][:4]) + (" ..." if len(row["told"]) > 4 else "")
    said = " ".join(said.split()).replace("|", "/")
    said = said if len(said) < 220 else said[:217] + "..."
    silence = "" if row["silence"] is None else "< 60 ms" if row["silence"] < 0.06 else f"{row['silence'] * 1000:.0f} ms"
    held = "held" if not row["problems"] else "BROKEN: " + "; ".join(row["problems"]).replace("|", "/")
    fault = row["fault"].replace("|", "/")
    return f"| {fault} | {row['tries']} | {seconds(row['lost'], 2)} | {silence} | {said} | {held} |"


class Running:
    def __init__(self, name, quick):
        self.case = tally.CASES[name]
        self.began = time.monotonic()
        descriptor, self.answer = tempfile.mkstemp(suffix=".json")
        os.close(descriptor)
        arguments = [sys.executable, os.path.abspath(__file__), "--case", name, "--answer", self.answer]
        self.process = subprocess.Popen(arguments + (["quick"] if quick else []), stdin=subprocess.DEVNULL)

    def over(self):
        if self.process.poll() is not None:
            return True
        if time.monotonic() - self.began > 60 + LATENESS * 60 * self.case.minutes:
            self.process.terminate()
            try:
                self.process.wait(30)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
            return True
        return False

    def rows(self):
        with open(self.answer) as file:
            text = file.read()
        os.unlink(self.answer)
        lost = {**tally.Tally(self.case.name).row(), "problems": [f"the case ended with {self.process.returncode}"]}
        return json.loads(text) if text else [lost]


def run_all(names, quick, jobs):
    """The long ones first, so that the end is not one of them alone."""
    waiting = sorted(names, key=lambda name: (tally.CASES[name].alone, -tally.CASES[name].minutes))
    running, rows = [], {}
    print("\n".join(HEADER), flush=True)
    while waiting or running:
        alone = any(other.case.alone for other in running)
        while waiting and len(running) < jobs and not alone and not (tally.CASES[waiting[0]].alone and running):
            running.append(Running(waiting.pop(0), quick))
            alone = running[-1].case.alone
        for done in [other for other in running if other.over()]:
            running.remove(done)
            rows[done.case.name] = done.rows()
            print("\n".join(map(shown, rows[done.case.name])), flush=True)
        time.sleep(0.2)
    return [row for name in tally.CASES if name in rows for row in rows[name]]


def comparison(rows):
    """One recorder a line, one fault a column: the seconds that were lost."""
    names = [row["fault"].split(tally.BESIDE) for row in rows]
    recorders, faults = (list(dict.fromkeys(column)) for column in zip(*names))
    lost = {tuple(name): row for name, row in zip(names, rows)}
    lines = ["| recorder | " + " | ".join(faults) + " |", "|---|" + "---:|" * len(faults)]
    for recorder in recorders:
        cells = [lost.get((recorder, fault)) for fault in faults]
        lines.append(f"| {recorder} | " + " | ".join(f"{cell['lost']:.1f} s" if cell else "" for cell in cells) + " |")
    return lines


def write_table(rows, mark):
    begin, end = f"<!-- {mark}: written by ./faults -->", f"<!-- end of {mark} -->"
    with open(DOCUMENT) as file:
        text = file.read()
    before, _, rest = text.partition(begin)
    after = rest.partition(end)[2]
    with open(DOCUMENT, "w") as file:
        file.write("\n".join([before + begin, *rows, end]) + after)


def chosen(words):
    if not words or words == ["quick"]:
        return [name for name, one in tally.CASES.items() if name != "compare" and (one.quick or not words)]
    names = [name for name in tally.CASES if any(name.startswith(word) for word in words if word != "quick")]
    if not names:
        raise SystemExit(f"No such case; there are: {', '.join(tally.CASES)}")
    return names


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--jobs", type=int, default=3, help="how many cases run side by side")
    parser.add_argument("--soak", type=float, metavar="MINUTES", help="how long the soak lasts (10)")
    parser.add_argument("--list", action="store_true", help="only name the cases")
    parser.add_argument("--case", help=argparse.SUPPRESS)
    parser.add_argument("--answer", help=argparse.SUPPRESS)
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()
    if options.soak:
        os.environ["FLIPSIDE_SOAK_MINUTES"] = str(options.soak)  # for the processes of the cases, too
    load_cases()
    quick = "quick" in options.names
    if options.case:
        return run_case(options.case, quick, options.answer)
    if options.list:
        for name, one in tally.CASES.items():
            print(f"{name:20} {one.minutes:4.1f} min{'  quick' if one.quick else ''}")
        return None
    if not os.path.exists(NOISE):
        subprocess.run([os.path.join(TOOLS, "heard"), "--make", NOISE], check=True)
    commit = subprocess.run(["git", "describe", "--always", "--dirty"], cwd=HERE, capture_output=True, text=True, check=False)
    began = time.monotonic()
    rows = run_all(chosen(options.names), quick, options.jobs)
    broken = sum(bool(row["problems"]) for row in rows)
    minutes = (time.monotonic() - began) / 60
    summary = f"{len(rows)} rows in {minutes:.0f} minutes, {broken} promises broken. Commit {commit.stdout.strip()}."
    print(f"\n{summary}")
    if not options.names:
        write_table([time.strftime("%Y-%m-%d: ") + summary, "", *HEADER, *map(shown, rows)], "table")
    elif options.names == ["compare"]:
        write_table(comparison(rows), "comparison")
    sys.exit(1 if broken else 0)


if __name__ == "__main__":
    main()
