#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The whole program on a private desktop with a private sound server, beside a trivial window of the toolkit and
beside recorders without a window, all in one run:

    program.py BUILD_FOLDER [SECONDS]

SECONDS is how long each recording is watched. The numbers are the kernel's own: resident memory, processor time and
voluntary context switches of the processes, read while they run.
"""

import os
import signal
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "testbed"))
from recorder import Recorder, SoundServer  # noqa: E402
from desktop import Desktop, end_process, wait_until  # noqa: E402

TICKS = os.sysconf("SC_CLK_TCK")
ROUNDS = 20
IDLE_SECONDS = 10
SETTLE_SECONDS = 2
MICROPHONE = "Microphone"


def field(pid, name):
    with open(f"/proc/{pid}/status") as status:
        return next(int(line.split()[1]) for line in status if line.startswith(name + ":"))


def megabytes(pid):
    return field(pid, "VmRSS") / 1024


def cpu_seconds(pids):
    total = 0
    for pid in pids:
        with open(f"/proc/{pid}/stat") as stat:
            values = stat.read().rpartition(")")[2].split()
        total += int(values[11]) + int(values[12])
    return total / TICKS


def wake_ups(pid):
    total = 0
    for task in os.listdir(f"/proc/{pid}/task"):
        total += field(f"{pid}/task/{task}", "voluntary_ctxt_switches")
    return total


def idle_wake_ups(pid):
    time.sleep(SETTLE_SECONDS)
    before = wake_ups(pid)
    time.sleep(IDLE_SECONDS)
    return (wake_ups(pid) - before) / IDLE_SECONDS


def cpu_of_a_minute(pids, seconds):
    before, began = cpu_seconds(pids), time.monotonic()
    time.sleep(seconds)
    return (cpu_seconds(pids) - before) / (time.monotonic() - began) * 60


def until_line(command, environment, line):
    """Milliseconds from the start of a program until it has logged the line."""
    began = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    for said in process.stderr:
        if line in said:
            elapsed = (time.monotonic() - began) * 1000
            break
    else:
        raise SystemExit(f"{command[0]} never said: {line}")
    end_process(process)
    process.stderr.close()
    return elapsed


class Measurement:
    def __init__(self, build, seconds, desktop, sound):
        self.program = os.path.join(build, "app", "flipside")
        self.trivial = os.path.join(build, "benchmarks", "first_paint_trivial")
        self.seconds, self.desktop, self.sound = seconds, desktop, sound
        # The accessibility bus is there for the tests; a desktop starts programs without it.
        self.plain = {name: value for name, value in desktop.env.items()
                      if name != "QT_LINUX_ACCESSIBILITY_ALWAYS_ON"} | sound.environment

    def first_paint(self):
        environment = {**self.plain, "QT_LOGGING_RULES": "flipside.platform.debug=true"}
        ours, trivial = [], []
        for _ in range(ROUNDS + 1):
            ours.append(until_line([self.program], environment, "First paint."))
            trivial.append(until_line([self.trivial, "--stay"], environment, "First paint."))
        ours, trivial = statistics.median(ours[1:]), statistics.median(trivial[1:])
        print(f"\n| first paint, {ROUNDS} rounds | median |\n|---|---:|")
        print(f"| trivial window | {trivial:.0f} ms |\n| Flipside | {ours:.0f} ms ({ours / trivial:.2f} times) |")

    def idle(self):
        rows = []
        for name, command in (("trivial window", [self.trivial, "--stay"]), ("Flipside", [self.program])):
            process = subprocess.Popen(command, env=self.plain, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            rate = idle_wake_ups(process.pid)
            rows.append((name, megabytes(process.pid), rate))
            end_process(process)
        print("\n| idle | resident | wake-ups a second |\n|---|---:|---:|")
        for name, memory, rate in rows:
            print(f"| {name} | {memory:.1f} MB | {rate:.1f} |")

    def start_to_sound(self, recorder):
        """Milliseconds from the key to the first captured sample, the start of the program that presses it included."""
        before = recorder.program.log().count("The first sound has arrived.")
        pressed = time.monotonic()
        self.desktop.key("ctrl+r")
        wait_until(lambda: recorder.program.log().count("The first sound has arrived.") > before, "sound", poll=0.001)
        return (time.monotonic() - pressed) * 1000

    def recording(self, home):
        # The folder is chosen in a program that is not measured: a desktop shows its own chooser, and the toolkit's, which
        # is there without one, would be a sixth of the memory.
        chooser = Recorder(self.desktop, self.sound, home, self.program)
        chooser.record()
        chooser.end()
        recorder = Recorder(self.desktop, self.sound, home, self.program,
                            {"QT_LOGGING_RULES": "flipside.audio.debug=true"})
        recorder.click("Record")
        recorder.wait_status("Recording from .*")
        times = []
        for _ in range(5):
            recorder.press("Stop")
            # Where nothing can show the take, the status line says that, and may never be seen ready.
            recorder.enabled_button("Record")
            times.append(self.start_to_sound(recorder))
        time.sleep(SETTLE_SECONDS)
        pid = recorder.program.pid
        rows = [("Flipside, window visible", cpu_of_a_minute([pid], self.seconds), megabytes(pid))]
        recorder.press("Minimise")
        time.sleep(SETTLE_SECONDS)
        rows.append(("Flipside, window minimised", cpu_of_a_minute([pid], self.seconds), megabytes(pid)))
        recorder.end()
        rows += self.others(home)
        print(f"\n| recording, {self.seconds:g} s each | CPU for a minute of sound | resident |\n|---|---:|---:|")
        for name, cpu, memory in rows:
            print(f"| {name} | {cpu:.2f} s | {memory:.1f} MB |")
        print(f"\nFrom the key for Record to the first captured sample: {statistics.median(times):.0f} ms "
              f"(median of {len(times)}, worst {max(times):.0f} ms).")

    def others(self, home):
        """Others with the configuration of a first start: variable bitrate, quality 5, standard engine."""
        parec = ["parec", "--raw", "--rate=48000", "--channels=2", "--format=s16le"]
        lame = ["lame", "--quiet", "-r", "-s", "48", "--bitwidth", "16", "--signed", "--little-endian", "-m", "j", "-q",
                "5", "--vbr-new", "-V", "5", "-t", "-", os.path.join(home, "lame.mp3")]
        ffmpeg = ["ffmpeg", "-nostdin", "-loglevel", "error", "-f", "pulse", "-i", "default", "-c:a", "libmp3lame",
                  "-q:a", "5", "-compression_level", "5", os.path.join(home, "ffmpeg.mp3")]
        feed = subprocess.Popen(parec, env=self.plain, stdout=subprocess.PIPE)
        encoder = subprocess.Popen(lame, env=self.plain, stdin=feed.stdout, stdout=subprocess.DEVNULL)
        feed.stdout.close()
        time.sleep(SETTLE_SECONDS)
        pids = [feed.pid, encoder.pid]
        yield "parec, lame", cpu_of_a_minute(pids, self.seconds), sum(map(megabytes, pids))
        end_process(feed, signal.SIGINT)
        end_process(encoder)
        process = subprocess.Popen(ffmpeg, env=self.plain, stdout=subprocess.DEVNULL)
        time.sleep(SETTLE_SECONDS)
        yield "ffmpeg", cpu_of_a_minute([process.pid], self.seconds), megabytes(process.pid)
        end_process(process, signal.SIGINT)


def main():
    build, seconds = sys.argv[1], float(sys.argv[2]) if len(sys.argv) > 2 else 20
    with Desktop() as desktop:
        sound = SoundServer(signal="music")
        try:
            measurement = Measurement(build, seconds, desktop, sound)
            measurement.first_paint()
            measurement.idle()
            with tempfile.TemporaryDirectory(dir=desktop.folder) as home:
                measurement.recording(home)
        finally:
            sound.end()


if __name__ == "__main__":
    main()
