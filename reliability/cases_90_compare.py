# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The same faults with other recorders, each with the options that its manual gives for recording to a file."""

import contextlib
import os
import signal
import subprocess
import tempfile
import time

from bench import Run
from cases_20_disk import fill
from judgement import judge
from tally import BESIDE, Tally, case

PAREC = ["parec", "--rate=48000", "--channels=2", "--format=s16le"]
RECORDERS = {
    "Flipside": None,
    "ffmpeg": [["ffmpeg", "-nostdin", "-loglevel", "error", "-f", "pulse", "-i", "default", "-b:a", "320k", "FILE.mp3"]],
    "parec, lame": [PAREC, ["lame", "--quiet", "-r", "-s", "48", "--cbr", "-b", "320", "-", "FILE.mp3"]],
    "parecord": [["parecord", "--rate=48000", "--channels=2", "--format=s16le", "--file-format=wav", "FILE.wav"]],
    "sox rec": [["sox", "-q", "-t", "pulseaudio", "default", "-b", "16", "-r", "48000", "-c", "2", "FILE.wav"]],
}


class Other:
    """One of them, which the cases treat like a run of the program."""

    def __init__(self, sound, folder, commands):
        self.sound, self.processes, feed = sound, [], None
        base = os.path.join(folder, "take")
        self.path = base + (".wav" if "FILE.wav" in commands[-1] else ".mp3")
        self.errors = tempfile.TemporaryFile("w+")
        for command in commands:
            last = command is commands[-1]
            process = subprocess.Popen([word.replace("FILE", base) for word in command],
                                       env={**os.environ, **sound.environment}, stdin=feed or subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL if last else subprocess.PIPE, stderr=self.errors)
            if feed:
                feed.close()
            feed = process.stdout
            self.processes.append(process)

    def record(self):
        time.sleep(2)  # none of them says when it has begun
        self.begin = self.sound.position()

    def send(self, number):
        for process in self.processes:
            process.send_signal(number)

    def kill(self):
        self.end = self.sound.position()
        self.send(signal.SIGKILL)
        self.wait()

    def stand_still(self, seconds):
        self.send(signal.SIGSTOP)
        time.sleep(seconds)
        self.send(signal.SIGCONT)

    def stop(self):
        self.end = self.sound.position()
        with contextlib.suppress(ProcessLookupError):
            self.processes[0].send_signal(signal.SIGINT)
        self.wait()

    def wait(self):
        for process in self.processes:
            try:
                process.wait(8)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()

    def judged(self):
        path = self.path
        if path.endswith(".wav"):
            path = os.path.join(os.path.dirname(path), "samples.mp3")
            # Its header may be a promise that was not kept: only the samples count.
            subprocess.run(["sh", "-c", 'tail -c +45 "$0" | lame --quiet -r -s 48 --cbr -b 320 - "$1"', self.path, path],
                           stderr=subprocess.DEVNULL, check=False)
        return judge(path, [(self.begin, self.end)], self.sound.away) if os.path.exists(path) else None

    def said(self):
        self.errors.seek(0)
        lines = [line.strip() for line in self.errors if line.strip() and "libsndfile" not in line]
        return [line.replace(os.path.dirname(self.path) + "/", "") for line in lines[-1:]]


class Ours:
    def __init__(self, bench, folder):
        self.run = Run(bench, bench.sound(), folder=folder)
        self.sound = self.run.sound
        self.record = self.run.record

    def kill(self):
        self.run.signal(signal.SIGKILL)

    def stand_still(self, seconds):
        with self.run.stopped():
            time.sleep(seconds)

    def stop(self):
        self.run.stop()
        time.sleep(0.5)

    def judged(self):
        self.run.finish()
        return judge(self.run.files()[0], self.run.wanted, self.sound.away)

    def said(self):
        return self.run.words()


def killed(recorder, _):
    time.sleep(8)
    recorder.kill()


def frozen(recorder, _):
    time.sleep(2)
    recorder.stand_still(15)
    recorder.stop()


def full(recorder, place):
    fill(place, 200000)
    time.sleep(10)
    os.unlink(os.path.join(place, "filler"))
    time.sleep(4)
    recorder.stop()


def restarted(recorder, _):
    time.sleep(3)
    recorder.sound.missing("kill", "start", 1)
    time.sleep(5)
    recorder.stop()


FAULTS = {"`kill -9` after 8 s": killed, "frozen for 15 s, then stopped": frozen,
          "disk full for 5 s of 14": full, "server restarted after 3 s of 9": restarted}


@case("compare", minutes=5)
def compare(bench, quick):
    for name, commands in RECORDERS.items():
        if name == "sox rec" and "pulseaudio" not in subprocess.run(["sox", "--help"], stdout=subprocess.PIPE, text=True,
                                                                    check=False).stdout:
            continue  # its driver is a package of its own
        for fault, act in FAULTS.items():
            counted = Tally(f"{name}{BESIDE}{fault}", lost=float("inf"), silent=float("inf"))
            with bench.disk("12m") as place:
                recorder = Other(bench.sound(), place, commands) if commands else Ours(bench, place)
                recorder.record()
                act(recorder, place)
                found = recorder.judged()
                counted.tries = 1
                counted.lost = found.lost if found else recorder.end - recorder.begin
                counted.told = dict(enumerate(recorder.said()))
            yield counted
