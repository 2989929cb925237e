# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Folders that go, move and have names that nobody expects, and two programs in one of them."""

import os
import tempfile
import time

from cases_20_disk import shell
from tally import Tally, case


def rename(_, inner):
    os.rename(inner, inner + " 2")


def remove(_, inner):
    shell("rm", "-r", inner)


def replace(_, inner):
    remove(_, inner)
    with open(inner, "w"):
        pass


def unmount(place, inner):
    """And the folder's name is there all the same, on the disk below."""
    shell("umount", "-l", place)
    os.makedirs(inner, exist_ok=True)


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
    refused = Tally("the folder is removed, replaced by a file, read-only, on a disk that is not mounted before Record")
    renamed = Tally("the folder is renamed before Record")
    for row, act in ((renamed, rename), (refused, remove), (refused, replace), (refused, write_protect),
                     (refused, unmount)):
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
        else:
            # The toolkit keeps names as text: one that is not text cannot be chosen, and another folder is asked for.
            asked = run.panel.find("text", "Directory:", 1)
            counted.check(asked or run.words(), "neither recorded, nor told, nor asked")
            bench.desktop.key("Escape")
        counted.outcome(run)
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
