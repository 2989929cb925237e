# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Sound servers that go away, stand still and never answer, and devices that come and go."""

import contextlib
import os
import re
import socket
import subprocess
import tempfile
import threading
import time

from bench import MICROPHONE, Failure, Run, wait_until
from tally import Tally, case


def restarts(bench, server, times):
    counted = Tally(f"the sound server is killed and started again {times} times ({server})")
    run = bench.start(server)
    run.record()
    for _ in range(times):
        time.sleep(1.5)
        run.sound.missing("kill", "start", 0.7)
    return interrupted(counted, run, times)


def interrupted(counted, run, times):
    """The end of a take that was without its microphone so often."""
    time.sleep(3)
    run.stop()
    counted.outcome(run, silent_about_loss=True)
    counted.tries = times
    counted.expect_words(run, "No sound is arriving", "missing")
    return counted


@case("server-restart", minutes=1.5, quick=True)
def server_restart(bench, quick):
    yield restarts(bench, "pulseaudio", 5 if quick else 20)


@case("server-restart-pipewire", minutes=2)
def server_restart_pipewire(bench, quick):
    yield restarts(bench, "pipewire", 20)


def without_sound(bench, counted, server, gone, back):
    """For eight seconds; what the microphone gave meanwhile is heard by nobody."""
    runs = [bench.start(server) for _ in range(4)]
    for run in runs[:3]:
        run.record()
    time.sleep(2)
    sound = runs[0].sound
    begin = sound.position()
    sound.tell(gone)
    time.sleep(2.5)
    runs[1].until("Pause")
    runs[2].until("Stop")
    runs[3].say("Record")
    time.sleep(5.5)
    sound.tell(back)
    sound.away.append((begin - 0.2, sound.position() + 1))
    # What has gathered before the server, half a second, it takes only a little faster than it comes: a program that
    # is started now is as late.
    time.sleep(4)
    with contextlib.suppress(Failure):  # of which the words come behind all that the server still hands over
        wait_until(lambda: any("missing" in text for text in runs[0].told), "what is missing", 6)
    runs[0].stop()
    for run in runs[:3]:
        counted.outcome(run, silent_about_loss=True)
    runs[3].finish()
    counted.hear(runs[3], tried=True)
    counted.check(runs[3].words(), "a start without sound was not explained")
    counted.expect_words(runs[0], "missing")
    return counted


@case("server-frozen", minutes=0.8, quick=True)
def server_frozen(bench, quick):
    for server in ("pulseaudio",) if quick else ("pulseaudio", "pipewire"):
        counted = Tally(f"the sound server stands still for 8 s: nothing, Pause, Stop, Record meanwhile ({server})")
        yield without_sound(bench, counted, server, "freeze", "thaw")


@case("suspended", minutes=0.8, quick=True)
def suspended(bench, quick):
    """As when another user has the screen, and with it the devices; PipeWire suspends none that is heard."""
    suspend = "pactl suspend-source @DEFAULT_SOURCE@ "
    counted = Tally("the microphone is suspended for 8 s: nothing, Pause, Stop, Record meanwhile")
    yield without_sound(bench, counted, "pulseaudio", suspend + "1", suspend + "0")


class MuteServer:
    """Accepts whoever comes, and never answers."""

    def __init__(self, folder):
        path = os.path.join(folder, "mute")
        self.listener = socket.socket(socket.AF_UNIX)
        self.listener.bind(path)
        self.listener.listen(20)
        self.guests = []
        self.environment = {"PULSE_SERVER": "unix:" + path}
        self.away = []
        threading.Thread(target=self._welcome, daemon=True).start()

    def _welcome(self):
        with contextlib.suppress(OSError):
            while True:
                self.guests.append(self.listener.accept())

    def position(self):
        return time.monotonic()


@case("server-none", minutes=0.6, quick=True)
def server_none(bench, quick):
    """No server at launch, one that never answers, and one that comes later."""
    mute = Tally("a sound server that accepts and never answers, at launch and at Record")
    run = Run(bench, MuteServer(tempfile.mkdtemp(dir=bench.desktop.folder)))
    mute.check(not run.record(3), "recorded without a server")
    mute.check(run.words() or run.alerts, "nobody was told")
    ended = run.finish()
    mute.check(ended is not None and ended < 2, f"the end took {ended or 20:.1f} s")
    mute.hear(run, tried=True)
    yield mute

    later = Tally("no sound server at launch, one 5 s later")
    sound = bench.sound()
    sound.tell("kill")
    run = bench.start()
    later.check(not run.record(3), "recorded without a server")
    later.check(run.words() or run.alerts, "nobody was told")
    time.sleep(2)
    sound.tell("start")
    wait_until(lambda: MICROPHONE in str(run.panel.property(run.panel.find("button", "Input device"), "Description")),
               "the microphone to be offered", 15)
    time.sleep(0.5)
    run.record_for(2)
    run.finish()
    later.take(run, path=run.files()[-1])
    yield later


@case("device", minutes=2, quick=True)
def device(bench, quick):
    times = 8 if quick else 50
    counted = Tally(f"the microphone is unplugged and back {times} times")
    run = bench.start()
    run.record()
    for number in range(times):
        time.sleep(0.8)
        # Long enough to be noticed at least now and then.
        run.sound.missing("unplug " + MICROPHONE, "load " + MICROPHONE, 2.5 if number % 10 == 0 else 0.3)
    yield interrupted(counted, run, times)


@case("devices", minutes=0.8, quick=True)
def devices(bench, quick):
    """Forty microphones with names that nobody expects."""
    counted = Tally("40 devices; names with markup, emoji, right-to-left, 10,000 characters")
    run = bench.start()
    run.record()
    strange = ("<b>bold</b> &amp; <img src=x>", "🎤🎙️ 録音", "\u202eميكروفون عربي", "%s%n%1$s", "m" * 10000, " ")
    for number in range(40):
        name = strange[number % len(strange)]
        subprocess.run(["pactl", "load-module", "module-null-source", f"source_name=strange{number}",
                        f'description="{name}"'], env={**os.environ, **run.sound.environment}, stdout=subprocess.DEVNULL,
                       check=True)
    time.sleep(1)
    run.stop()
    chosen = set()
    for number in range(4, 44, 6):  # each of them several times, by name
        run.panel.press("Input device")
        time.sleep(0.5)
        bench.desktop.xdotool("key", *["Down"] * number, "Return")
        time.sleep(0.3)
        name = run.panel.property(run.panel.find("button", "Input device"), "Description")
        chosen.add(re.sub(r" \(\d+\)$", "", name))
    counted.check(len(chosen) >= len(strange), f"only these could be chosen: {[name[:40] for name in chosen]}")
    counted.outcome(run)
    counted.tries = 40
    yield counted
