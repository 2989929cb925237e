#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A private sound server, with microphones that hear the signals they are given.

    sound_server.py [--pipewire] [--mic NAME[=SIGNAL]]...

Prints one line of JSON once it is up, {"environment": {...}}: programs that get this environment talk to this server.
Then reads commands from standard input, answers each with a line of JSON, and at its end, or on SIGTERM or SIGINT, ends
and takes everything with it:

    load NAME[=SIGNAL] | unload NAME | unplug NAME | default NAME | kill | start | freeze | thaw | position NAME

SIGNAL is one of
    counter     each frame carries its number: low half left, high half right (the default)
    tone        440 Hz left and 880 Hz right, half of full scale
    music       plucked chords (needs sox)
    a path      the raw frames in a file (16-bit, 48000 Hz, stereo), over and over
"""

import argparse
import array
import contextlib
import fcntl
import json
import math
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

from desktop import Failure, end_process, wait_until

RATE = 48000
FRAME_BYTES = 4
BLOCK_FRAMES = RATE // 100
DEADLINE = 10  # seconds that any step may take
UNPACKED = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "build", "sound-servers", "bin")
"""Where scripts/sound-servers puts the servers that are not installed."""


def counter(first):
    """Frame n is the 32-bit number n."""
    return array.array("I", range(first, first + BLOCK_FRAMES)).tobytes()


def loop(frames):
    """The same frames over and over."""
    length = len(frames) // FRAME_BYTES
    frames += frames[:BLOCK_FRAMES * FRAME_BYTES]

    def block(first):
        start = first % length * FRAME_BYTES
        return frames[start:start + BLOCK_FRAMES * FRAME_BYTES]
    return block


def tone():
    samples = array.array("h")
    for n in range(RATE):  # whole periods of both
        for hertz in (440, 880):
            samples.append(round(16384 * math.sin(2 * math.pi * hertz * n / RATE)))
    return samples.tobytes()


def music():
    """Four bars of two seconds, one after the other."""
    bars = []
    for chord in (("C3", "E4", "G4"), ("A2", "C4", "E4"), ("F2", "A3", "C4"), ("G2", "B3", "D4")):
        notes = [word for note in chord for word in ("pluck", note)]
        bars.append(subprocess.run(
            ["sox", "-n", "-r", str(RATE), "-c", "3", "-t", "raw", "-c", "2", "-b", "16", "-e", "signed", "-", "synth",
             "2", *notes, "remix", "1v.5,2v.3,3v.2", "1v.5,2v.2,3v.3", "fade", "0", "2", "0.05"],
            stdout=subprocess.PIPE, check=True).stdout)
    return b"".join(bars)


def signal_named(name):  # a function from the number of a frame to the block that begins with it
    if "/" in name:
        with open(name, "rb") as file:
            return loop(file.read())
    return counter if name == "counter" else loop({"tone": tone, "music": music}[name]())


def key_of(name):
    return "".join(c if c.isalnum() else "_" for c in name)


class Microphone:
    """A source that reads a pipe, and the thread that fills the pipe in step with the clock."""

    def __init__(self, server, name, signal_name):
        self.server = server
        self.name = name
        self.signal = signal_named(signal_name)
        self.position = 0  # frames given so far
        self.module = None
        self.thread = None

    def plug(self):
        key = key_of(self.name)
        path = os.path.join(self.server.directory, key + ".pipe")
        if os.path.exists(path):  # left by a server that was killed
            os.unlink(path)
        if self.module:  # the world did not stand still while the server was gone
            self.position += RATE
        properties = f'''source_properties="device.description='{self.name}'"'''
        self.module = self.server.pactl(
            "load-module", "module-pipe-source", f"source_name={key}", f"file={path}", "format=s16le",
            f"rate={RATE}", "channels=2", properties).strip()
        # A pipe is read only while somebody records, and would give what it held by then: somebody always does.
        self.listener = self.server.spawn("parec", "-d", key, "--latency-msec=100", f"--rate={RATE}",
                                          stdout=subprocess.DEVNULL)
        self.pipe = os.open(path, os.O_WRONLY | os.O_NONBLOCK)
        fcntl.fcntl(self.pipe, fcntl.F_SETPIPE_SZ, 1 << 17)
        self.stopping = threading.Event()
        self.thread = threading.Thread(target=self.feed)
        self.thread.start()

    def feed(self):
        # PipeWire reads in step with a clock of its own, which this one must never keep waiting.
        due = time.monotonic() - (0.1 if self.server.pipewire else 0)
        while not self.stopping.wait(max(0, due - time.monotonic())):
            try:
                os.write(self.pipe, self.signal(self.position))
            except BlockingIOError:
                pass  # nobody reads: the sound of this moment is gone
            except BrokenPipeError:
                return
            self.position += BLOCK_FRAMES
            due += BLOCK_FRAMES / RATE

    def stop(self):
        if not self.thread:
            return
        self.stopping.set()
        self.thread.join()
        self.thread = None
        os.close(self.pipe)
        self.server.end_process(self.listener)

    def unplug(self):
        self.server.pactl("unload-module", self.module)
        self.stop()


class Server:
    def __init__(self, pipewire):
        self.pipewire = pipewire
        self.directory = tempfile.mkdtemp(prefix="flipside-sound-")
        self.socket = os.path.join(self.directory, "pulse", "native")
        self.shared = {"PULSE_SERVER": "unix:" + self.socket, "XDG_RUNTIME_DIR": self.directory}
        self.environment = {**os.environ, **self.shared, "HOME": self.directory, "LC_ALL": "C.UTF-8",
                            "PATH": UNPACKED + ":" + os.environ["PATH"]}
        for name in ("XDG_CONFIG_HOME", "XDG_STATE_HOME", "DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "PULSE_COOKIE"):
            self.environment.pop(name, None)
        self.processes = []
        self.microphones = {}

    def spawn(self, *command, **options):
        with open(os.path.join(self.directory, "log"), "a") as log:
            process = subprocess.Popen(["setpriv", "--pdeathsig", "KILL", *command], env=self.environment,
                                       stdin=subprocess.DEVNULL, stderr=log, **{"stdout": log, **options})
        self.processes.append(process)
        return process

    def pactl(self, *arguments):
        return subprocess.run(["pactl", *arguments], env=self.environment, stdout=subprocess.PIPE, text=True,
                              check=True, timeout=DEADLINE).stdout

    def start(self):
        if self.pipewire:
            self.start_pipewire()
        else:
            self.start_pulseaudio()
        self.pactl("load-module", "module-null-sink", "sink_name=speakers", f"rate={RATE}",
                   "sink_properties=device.description=Speakers")
        for microphone in self.microphones.values():
            microphone.plug()

    def start_pulseaudio(self):
        daemon = self.spawn("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                            "--realtime=no", "--high-priority=no", "--log-target=stderr", "--log-level=warn",
                            "-L", "module-native-protocol-unix auth-anonymous=1")
        self.wait_for_socket(self.socket, daemon)

    def start_pipewire(self):
        bus = os.path.join(self.directory, "bus")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + bus
        self.wait_for_socket(bus, self.spawn("dbus-daemon", "--session", "--nofork", "--address=unix:path=" + bus))
        self.wait_for_socket(os.path.join(self.directory, "pipewire-0"), self.spawn("pipewire"))
        self.spawn("wireplumber")
        self.wait_for_socket(self.socket, self.spawn("pipewire-pulse"))

    def wait_for_socket(self, path, process):
        def accepts():
            with socket.socket(socket.AF_UNIX) as client:
                return client.connect_ex(path) == 0

        wait_until(lambda: accepts() or process.poll() is not None, path, DEADLINE, poll=0.005)
        if process.poll() is not None:
            raise Failure(f"{process.args} ended with {process.returncode}, see the log")

    def end_process(self, process):
        if process in self.processes:
            self.processes.remove(process)
        end_process(process, signal.SIGKILL)

    def kill(self):
        for process in reversed(self.processes[:]):
            self.end_process(process)
        for microphone in self.microphones.values():
            microphone.stop()
        for leftover in (self.socket, os.path.join(self.directory, "pipewire-0")):
            if os.path.exists(leftover):
                os.unlink(leftover)

    def end(self):
        self.kill()
        shutil.rmtree(self.directory, ignore_errors=True)

    def load(self, microphone):
        name, _, signal_name = microphone.partition("=")
        if name not in self.microphones:
            self.microphones[name] = Microphone(self, name, signal_name or "counter")
        self.microphones[name].plug()

    def unload(self, name):
        self.microphones.pop(name).unplug()

    def signal_all(self, signal_number):
        for process in self.processes:
            process.send_signal(signal_number)

    def command(self, line):
        """Answers with what there is to say, mostly nothing."""
        word, *rest = line.strip().split(" ", 1)
        return {"load": self.load, "unload": self.unload, "kill": self.kill, "start": self.start,
                "default": lambda name: self.pactl("set-default-source", key_of(name)),
                "unplug": lambda name: self.microphones[name].unplug(),
                "pactl": lambda arguments: {"said": self.pactl(*arguments.split())},
                "freeze": lambda: self.signal_all(signal.SIGSTOP),
                "thaw": lambda: self.signal_all(signal.SIGCONT),
                "position": lambda name: {"frames": self.microphones[name].position}}[word](*rest) or {}


def answer(**fields):
    print(json.dumps(fields), flush=True)


def obey(server):
    for line in sys.stdin:
        try:
            answer(**server.command(line))
        except Exception as error:  # told to whoever gave the command
            answer(error=repr(error))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--pipewire", action="store_true", help="PipeWire, WirePlumber and pipewire-pulse")
    parser.add_argument("--mic", action="append", default=[], metavar="NAME[=SIGNAL]")
    options = parser.parse_args()

    for ending in (signal.SIGTERM, signal.SIGINT):
        signal.signal(ending, lambda *_: sys.exit())
    with contextlib.suppress(PermissionError):  # a sound card keeps its time on a busy machine: so does its pipe
        os.sched_setscheduler(0, os.SCHED_RR, os.sched_param(1))
    server = Server(options.pipewire)
    try:
        server.start()
        for microphone in options.mic:
            server.load(microphone)
        answer(environment=server.shared)
        obey(server)
    except (OSError, Failure, subprocess.SubprocessError, KeyError) as error:
        log = os.path.join(server.directory, "log")
        answer(error=str(error), log=open(log).read()[-2000:] if os.path.exists(log) else "")
        sys.exit(1)
    finally:
        signal.signal(signal.SIGTERM, signal.SIG_IGN)
        signal.signal(signal.SIGINT, signal.SIG_IGN)
        server.end()


if __name__ == "__main__":
    main()
