# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Playback of files that change, and of a server that stands still."""

import os
import time

from bench import wait_until
from tally import Tally, case


@case("playback", minutes=0.8, quick=True)
def playback(bench, quick):
    counted = Tally("a file shrinks, vanishes, grows, becomes garbage, a folder, while it is played or before")

    def shrink(path):
        os.truncate(path, os.path.getsize(path) // 3)

    def grow(path):
        with open(path, "ab") as file:
            file.write(os.urandom(200000))

    def garbage(path):
        with open(path, "r+b") as file:
            file.write(os.urandom(os.path.getsize(path)))

    def empty(path):
        os.truncate(path, 0)

    def folder(path):
        os.unlink(path)
        os.mkdir(path)

    def one(act, before):
        run = bench.start()
        run.record_for(5)
        if before:
            act(run.files()[0])
        run.say("Play")
        time.sleep(1)
        if not before:
            act(run.files()[0])
        end = time.monotonic() + 14
        while not run.panel.enabled("Record") and time.monotonic() < end:
            time.sleep(0.2)
        counted.check(run.panel.enabled("Record"), f"the playback never ended ({act.__name__})")
        if before and act in (os.unlink, folder, empty, garbage):
            counted.expect_words(run, "Cannot play")
        run.finish()
        counted.hear(run, tried=True)
    for before in (False, True):
        bench.together([lambda a=a, b=before: one(a, b) for a in (shrink, os.unlink, grow, garbage, empty, folder)])
    yield counted


@case("playback-frozen", minutes=0.4, quick=True)
def playback_frozen(bench, quick):
    """In the middle of a playback the server stands still: it ends like a failed one. Then the program: it goes on."""
    counted = Tally("the sound server stands still for 9 s while a file is played")
    run = bench.start()
    run.record_for(5)
    run.say("Play")
    time.sleep(1)
    run.sound.tell("freeze")
    time.sleep(9)
    counted.check(run.panel.enabled("Record"), '"Playing" stands for ever')
    run.sound.tell("thaw")
    run.finish()
    counted.take(run)
    counted.check(run.words(), "nobody was told")
    yield counted

    counted = Tally("the process stands still for 7 s while it plays a file")
    run = bench.start()
    run.record_for(5)
    run.say("Play")
    time.sleep(1)
    with run.stopped():
        time.sleep(7)
    counted.check(not run.panel.enabled("Record"), "the playback did not go on")
    wait_until(lambda: run.panel.enabled("Record"), "the end of the playback", 10)
    counted.check(not run.words(), "something was told")
    run.finish()
    counted.take(run)
    yield counted
