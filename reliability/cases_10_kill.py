# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The program is killed, or stands still."""

import contextlib
import os
import random
import signal
import subprocess
import tempfile
import time

from bench import CBR, VBR, wait_until
from judgement import held_back
from tally import Tally, case

SETTINGS = (
    VBR,
    {**VBR, "encodeQuality": 0},
    {**VBR, "encodeQuality": 9.999, "vbrMode": 1, "encoderEngineQuality": 2},
    CBR,
    {**CBR, "isCBR": 0},
    {**CBR, "encoderEngineQuality": 0},
)


@case("kill", minutes=2.5, quick=True)
def kill(bench, quick):
    """kill -9 at random moments, over six settings of the encoder."""
    counted = Tally("kill -9 while recording, six encoder settings, beside what the encoder holds back")
    chance = random.Random(1)
    held = [held_back(settings) for settings in SETTINGS]

    def one(number, seconds):
        run = bench.start(**SETTINGS[number])
        run.record()
        time.sleep(seconds)
        run.signal(signal.SIGKILL)
        run.finish()
        counted.take(run, silent_about_loss=True, held=held[number])

    for rounds in range(2 if quick else 9):
        numbers = range(len(SETTINGS) if rounds < 8 else 2)
        bench.together([lambda n=n, t=1 + 4 * chance.random(): one(n, t) for n in numbers])
    yield counted


@case("end", minutes=0.5, quick=True)
def end(bench, quick):
    """The polite ways to end a program in the middle of a take."""
    counted = Tally("SIGTERM, SIGTERM twice, SIGHUP, Ctrl+C, the close button")

    def one(how):
        run = bench.start()
        run.record()
        time.sleep(3)
        if how == "close":
            run.until("Close")
        else:
            run.signal(how[0])
            for number in how[1:]:
                run.program.process.send_signal(number)
        with contextlib.suppress(subprocess.TimeoutExpired):
            run.program.process.wait(10)
        ended = run.program.process.poll()
        counted.check(ended in (0, -signal.SIGTERM), f"{how}: ended with {ended}")
        run.finish()
        counted.take(run)
    bench.together([lambda h=h: one(h) for h in ((signal.SIGTERM,), (signal.SIGTERM, signal.SIGTERM), (signal.SIGHUP,),
                                                 (signal.SIGINT,), "close")])
    yield counted


@case("session", minutes=0.5, quick=True)
def session(bench, quick):
    """A real session manager ends the session, as when the user logs out."""
    counted = Tally("the session manager ends the session while recording, while paused, at rest")
    home = tempfile.mkdtemp(dir=bench.desktop.folder)
    address = os.path.join(home, "address")
    with open(os.path.join(home, ".xsmstartup"), "w") as startup:
        startup.write(f'echo "$SESSION_MANAGER" >{address}\n')
    places = {"HOME": home, "SM_SAVE_DIR": home, "ICEAUTHORITY": os.path.join(home, "authority")}
    manager = bench.desktop.spawn(["xsm"], places)
    wait_until(lambda: os.path.exists(address) and open(address).read().strip(), "the session manager")
    with open(address) as file:
        environment = {"SESSION_MANAGER": file.read().strip(), "ICEAUTHORITY": places["ICEAUTHORITY"]}
    runs = [bench.start(environment=environment) for _ in range(3)]
    for run in runs[:2]:
        run.record()
    time.sleep(3)
    runs[1].pause()
    for run in runs:
        run.until(None)
        run.asked_to_end = time.monotonic()
    manager.terminate()
    for run in runs:
        with contextlib.suppress(subprocess.TimeoutExpired):
            run.program.process.wait(10)
        counted.check(run.program.process.poll() == 0, f"ended with {run.program.process.poll()}")
        counted.outcome(run)
    yield counted


def freezes(bench, server, lengths, counted):
    def one(length, then):
        run = bench.start(server)
        run.record()
        time.sleep(3)
        with run.stopped():
            time.sleep(length)
        if then:
            run.until(then)
        time.sleep(1.5)
        # Beyond what the server holds for us, all of the freeze may be lost, but not without a word.
        counted.outcome(run, may_lose=None if length <= 20 else length + 1)
        if length > 25:
            counted.check(any("missing" in text for text in run.told), "the hole was not told")
    # What has been missed is encoded by all at once.
    for length in lengths:
        bench.together([lambda s=length, t=t: one(s, t) for t in ("Stop", "Pause", None)])
    return counted


@case("freeze", minutes=1.6, quick=True)
def freeze(bench, quick):
    """The process stands still and goes on; then Stop, Pause or nothing."""
    yield freezes(bench, "pulseaudio", (5, 10, 19), Tally("freeze of 5, 10, 19 s, then Stop, Pause, nothing (PulseAudio)"))


@case("freeze-pipewire", minutes=1.6, quick=True)
def freeze_pipewire(bench, quick):
    yield freezes(bench, "pipewire", (5, 10, 19), Tally("freeze of 5, 10, 19 s, then Stop, Pause, nothing (PipeWire)"))


@case("freeze-long", minutes=2.4)
def freeze_long(bench, quick):
    yield freezes(bench, "pulseaudio", (30, 60), Tally("freeze of 30, 60 s, then the same (PulseAudio)"))


@case("freeze-long-pipewire", minutes=2.4)
def freeze_long_pipewire(bench, quick):
    yield freezes(bench, "pipewire", (30, 60), Tally("freeze of 30, 60 s, then the same (PipeWire)"))
