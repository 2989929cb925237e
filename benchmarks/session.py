#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A whole recording in real time, beside other programs on the same microphone at the same time:

    session.py BUILD_FOLDER [SECONDS]

A private sound server plays music-like sound into a virtual microphone. Every recorder writes a constant 320 kbit/s
at 48000 Hz in joint stereo with the encoder's quality 5. Printed are processor seconds and the largest resident
memory of each recorder's processes, as the kernel accounts for them.
"""

import json
import os
import signal
import subprocess
import sys
import tempfile
import threading
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "testbed"))
from recorder import MICROPHONE, SoundServer  # noqa: E402

RATE = 48000
DEADLINE = 30  # seconds that any step may take


class Recorder:
    """One or two processes in a pipe. The first is asked to end, the second ends with it."""

    def __init__(self, name, commands, environment, stop):
        self.name, self.stop = name, stop
        self.processes, feed = [], None
        for command in commands:
            last = command is commands[-1]
            process = subprocess.Popen(command, stdin=feed or subprocess.DEVNULL, env=environment,
                                       stdout=subprocess.DEVNULL if last and len(commands) > 1 else subprocess.PIPE)
            if feed:
                feed.close()
            feed = process.stdout
            self.processes.append(process)

    def finish(self):
        if self.stop:
            self.processes[0].send_signal(self.stop)
        watchdog = threading.Timer(DEADLINE, self.kill)
        watchdog.start()
        self.output = self.processes[0].stdout.read() if len(self.processes) == 1 else b""
        usages = [os.wait4(process.pid, 0)[2] for process in self.processes]
        watchdog.cancel()
        self.cpu = sum(usage.ru_utime + usage.ru_stime for usage in usages)

    def kill(self):
        for process in self.processes:
            os.kill(process.pid, signal.SIGKILL)

    def note_peak(self):
        """Kilobytes. While it runs: what wait4() tells would include the memory of this script, which forked it."""
        self.peak = 0
        for process in self.processes:
            with open(f"/proc/{process.pid}/status") as status:
                self.peak += next(int(line.split()[1]) for line in status if line.startswith("VmHWM"))


def mp3_seconds(path):
    return os.path.getsize(path) * 8 / 320000


def main():
    build, seconds = sys.argv[1], float(sys.argv[2]) if len(sys.argv) > 2 else 60
    with tempfile.TemporaryDirectory() as folder:
        server = SoundServer(signal="music")
        source = MICROPHONE.replace(" ", "_")
        try:
            environment = {**os.environ, **server.environment, "LC_ALL": "C.UTF-8"}
            parec = ["parec", "--raw", f"--rate={RATE}", "--channels=2", "--format=s16le", f"--device={source}"]
            lame = ["lame", "--quiet", "-r", "-s", "48", "--bitwidth", "16", "--signed", "--little-endian", "-m", "j",
                    "-q", "5", "--cbr", "-b", "320", "-t", "-", f"{folder}/lame.mp3"]
            ffmpeg = ["ffmpeg", "-nostdin", "-loglevel", "error", "-f", "pulse", "-sample_rate", str(RATE), "-i",
                      source, "-c:a", "libmp3lame", "-b:a", "320k", "-compression_level", "5", "-write_xing",
                      "0", "-id3v2_version", "0", f"{folder}/ffmpeg.mp3"]
            ours = [f"{build}/benchmarks/record_headless", str(seconds), f"{folder}/flipside.mp3", "--cbr"]
            recorders = [Recorder("Flipside, without a window", [ours], environment, None),
                         Recorder("parec, lame", [parec, lame], environment, signal.SIGINT),
                         Recorder("ffmpeg", [ffmpeg], environment, signal.SIGINT)]
            time.sleep(seconds - 0.5)
            for recorder in recorders:
                recorder.note_peak()
            time.sleep(0.5)
            for recorder in recorders:
                recorder.finish()
        finally:
            server.end()
        print("| recorder | sound recorded | CPU | CPU for 60 s | largest resident memory |")
        print("|---|---|---|---|---|")
        for recorder, name in zip(recorders, ("flipside", "lame", "ffmpeg")):
            recorded = mp3_seconds(f"{folder}/{name}.mp3")
            print(f"| {recorder.name} | {recorded:.1f} s | {recorder.cpu:.2f} s | "
                  f"{recorder.cpu / recorded * 60:.2f} s | {recorder.peak / 1024:.1f} MB |")
        report = json.loads(recorders[0].output)
        print(f"\nFirst captured sound {report['first_sound_ms']:.0f} ms after the start.")


if __name__ == "__main__":
    main()
