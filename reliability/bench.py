# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Where the faults happen: programs on one private desktop, each with a home of its own, sound servers with a microphone
whose every moment can be told apart."""

import contextlib
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "testbed"))
from desktop import Desktop, Failure, wait_until  # noqa: E402
from panel import FIRST_ACTION, Panel, Silent, accessibility_of  # noqa: E402
from recorder import MICROPHONE, SoundServer  # noqa: E402

BUILD = os.environ.get("FLIPSIDE_BUILD", os.path.join(HERE, "..", "build", "release"))
PROGRAM = os.path.join(BUILD, "app", "flipside")
TOOLS = os.path.join(BUILD, "reliability")
NOISE = os.path.join(TOOLS, "noise.raw")
RATE = 48000

CBR = {"encoderTarget": 0, "isCBR": 1}
VBR = {"encoderTarget": 1}
"""Settings of the encoder: 40 kB a second, which programs have here unless a case says otherwise, and the defaults."""
BUS = 0.1
"""Seconds that the accessibility bus takes to press a button: it shows it pressed first."""
WAITING_BUTTONS = ("Record", "Pause", "Stop")
"""What they do may wait for the disk or the sound server."""
ACTING = 1.5
"""Seconds after the press of one within which the program has done it, or has given up."""
STARTING = 0.2
"""Seconds from Record to the first sound: no program hears what was said before it listened."""
QUEUED = 0.3
"""Seconds of sound that die with a server: they were on their way to the programs."""
COMING_BACK = 1.0
"""Seconds that a recording may take to go on after a server or a device has come back."""
CALM = re.compile(r"Ready|(Paused, )?([Rr]ecording from|[Pp]laying) .*|")
"""Status texts that tell of nothing wrong."""


class Sound:
    """A sound server, and where its microphone is."""

    def __init__(self, pipewire, signal_path=NOISE):
        self.server = SoundServer(pipewire, signal_path)
        self.environment = self.server.environment
        self.lead = 0.15 if pipewire else 0.0
        self.lock = threading.Lock()
        self.away = []

    def tell(self, command):
        with self.lock:
            return self.server.tell(command)

    def position(self):
        """Seconds of the microphone's sound that programs can have heard by now; PipeWire's is fed ahead of its time."""
        return self.tell("position " + MICROPHONE)["frames"] / RATE - self.lead

    def settle(self):
        """Until the microphone is the one that programs are offered first."""
        def is_default():
            answer = subprocess.run(["pactl", "get-default-source"], env={**os.environ, **self.environment},
                                    capture_output=True, text=True, check=False)
            return answer.stdout.strip() and not answer.stdout.strip().endswith(".monitor")
        wait_until(is_default, "the microphone", 15)

    def missing(self, gone, back, seconds):
        """The microphone is not there for so long; nobody can record what it would have given."""
        begin = self.position()
        self.tell(gone)
        time.sleep(seconds)
        try:
            self.tell(back)
        except Failure:  # a server that does not come up on a busy machine
            self.tell("kill")
            self.tell("start")
        self.away.append((begin - QUEUED, self.position() + COMING_BACK))


class Watch:
    """How long the window was silent, seen by another process."""

    def __init__(self, desktop, pid):
        self.process = subprocess.Popen([os.path.join(TOOLS, "window_watch"), str(pid), "60"], env=desktop.env,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.silences = []
        self.thread = threading.Thread(target=self._read, daemon=True)
        self.thread.start()

    def _read(self):
        for line in self.process.stdout:
            if line[0].isdigit():
                self.silences.append(tuple(map(float, line.split())))

    def finish(self):
        if not self.process.stdin.closed:
            self.process.stdin.close()
        self.process.wait(10)
        self.thread.join(10)

    def longest(self, frozen=(), until=float("inf"), pressed=()):
        """Seconds without an answer, less those in which the process was stopped or had no processor: in the moment after a
        button that may wait for disk or server was pressed, and at any other time."""
        waiting = other = 0.0
        for begin, end, waited in self.silences:
            end = min(end, until)
            stopped = sum(max(0.0, min(end, thaw) - max(begin, freeze)) for freeze, thaw in frozen)
            silent = end - begin - waited - stopped
            if any(press < end and begin < done for press, done in pressed):
                waiting = max(waiting, silent)
            else:
                other = max(other, silent)
        return waiting, other


class Run:
    """One program, in a home of its own."""

    def __init__(self, bench, sound, environment=None, folder=None, home=None, command=None, disk=None, **settings):
        self.bench, self.sound, self.disk = bench, sound, disk
        self.home = home or tempfile.mkdtemp(dir=bench.desktop.folder)
        self.folder = os.path.join(os.fsencode(self.home), b"Recordings") if folder is None else os.fsencode(folder)
        self.wanted, self.frozen, self.told, self.alerts, self.pressed = [], [], [], [], []
        self.since = self.panel = self.watch = None
        self.asked_to_end = float("inf")
        if folder != "":
            os.makedirs(self.folder, exist_ok=True)
            if not os.path.exists(self.settings_file):
                self.prepare(**settings)
        places = {"HOME": self.home, "XDG_CONFIG_HOME": os.path.join(self.home, ".config")}
        shim = disk.put_under(self.home) if disk else {}
        self.environment = {**sound.environment, **places, **shim, **(environment or {})}
        self.command = command or [PROGRAM]
        self.launch()

    @property
    def settings_file(self):
        return os.path.join(self.home, ".config", "flipside", "flipside.conf")

    def prepare(self, **settings):
        os.makedirs(os.path.dirname(self.settings_file), exist_ok=True)
        subprocess.run([os.path.join(TOOLS, "prepare_home"), self.settings_file, self.folder,
                        *(f"{name}={value}" for name, value in (settings or CBR).items())], check=True)

    def launch(self, appears=True):
        self.began = time.monotonic()
        given = {name: value for name, value in self.environment.items() if value is not None}
        lacking = [word for name in self.environment if name not in given for word in ("-u", name)]
        self.program = self.bench.desktop.start((["env", *lacking] if lacking else []) + self.command, given)
        self.panel = Panel(self.bench.bus, self.program.pid)
        self.watch = Watch(self.bench.desktop, self.program.pid)
        self.listening = True
        self.listener = threading.Thread(target=self._listen, daemon=True)
        self.listener.start()
        self.bench.runs.append(self)
        if appears and not self.panel.find("button", "Record"):
            raise Failure(f"no window: {self.log()[-500:]}")

    def log(self):
        return self.program.log()

    def _listen(self):
        """What the program says: its status line, and messages, which are answered."""
        panel = Panel(self.bench.bus, self.program.pid)
        while self.listening and self.program.running():
            try:
                if panel.appear():
                    self._hear(panel)
            except Silent:
                pass
            time.sleep(0.2)

    def _hear(self, panel):
        status = panel.text("Status", 120)
        if status is not None and (not self.told or self.told[-1] != status):
            self.told.append(status)
        for ok, text in panel.alerts(120):
            if text not in self.alerts:
                self.alerts.append(text)
            panel.ask(ok, "DoAction", 5, "org.a11y.atspi.Action", FIRST_ACTION)

    # what a person does

    def record(self, deadline=20):
        """False when no recording has begun by then."""
        self.panel.usable("Record")
        begin = self.sound.position()
        self.say("Record")
        with contextlib.suppress(Failure):
            wait_until(lambda: self.panel.enabled("Stop") and self.panel.enabled("Pause"), "a recording", deadline)
            self.since = begin + BUS + STARTING
            return True
        return False

    def until(self, press, deadline=150):
        end = self.sound.position()
        if press == "Close":
            self.asked_to_end = time.monotonic()
        if press:
            self.say(press, deadline)
        if self.since is not None:
            self.wanted.append((self.since, end))
            self.since = None

    def stop(self):
        self.until("Stop")

    def pause(self):
        self.until("Pause")

    def say(self, name, deadline=90):
        begin = time.monotonic()
        self.panel.press(name, deadline=deadline)
        if name in WAITING_BUTTONS:
            self.pressed.append((begin, time.monotonic() + ACTING))

    def signal(self, number):
        self.until(None)
        self.asked_to_end = min(self.asked_to_end, time.monotonic())
        self.program.process.send_signal(number)

    @contextlib.contextmanager
    def stopped(self):
        """The process stands still."""
        self.program.process.send_signal(signal.SIGSTOP)
        begin = time.monotonic()
        yield
        self.frozen.append((begin, time.monotonic() + 0.01))
        self.program.process.send_signal(signal.SIGCONT)

    def finish(self, deadline=20.0):
        """Seconds until the program has ended by itself; None when it had to be killed."""
        begin = time.monotonic()
        if self.program.running():
            if self.since is not None:
                self.until(None)
            self.asked_to_end = min(self.asked_to_end, begin)
            self.program.process.send_signal(signal.SIGTERM)
            with contextlib.suppress(subprocess.TimeoutExpired):
                self.program.process.wait(deadline)
        ended = None if self.program.running() else time.monotonic() - begin
        self.listening = False
        if ended is None:
            self.program.process.kill()
            self.program.process.wait()
        self.watch.finish()
        return ended

    def record_for(self, seconds):
        """A whole one, whose end is in the file."""
        self.record()
        time.sleep(seconds)
        self.stop()
        time.sleep(0.5)

    # what became of it

    def files(self):
        return sorted(entry.path for entry in os.scandir(self.folder) if entry.name.endswith(b".mp3"))

    def words(self):
        """What it has said that is not the usual."""
        return [text for text in dict.fromkeys(self.told + self.alerts) if not CALM.fullmatch(text)]

    def silence(self):
        """The longest one of the window after Record, Pause and Stop, and at any other time."""
        return self.watch.longest(self.frozen, self.asked_to_end, self.pressed)


class SideBySide(Desktop):
    """A session bus that keeps the program's name from everybody: the programs on it are strangers to each other, which
    they would be in the sessions of several users."""

    CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
        "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
        <busconfig><include>/usr/share/dbus-1/session.conf</include>
        <policy context="mandatory"><deny own="io.github.flipside_recorder.Flipside"/></policy></busconfig>"""

    def spawn(self, command, *arguments, **options):
        if command[0] == "dbus-daemon":
            path = os.path.join(self.folder, "bus.conf")
            with open(path, "w") as file:
                file.write(self.CONFIGURATION)
            command = [f"--config-file={path}" if word == "--session" else word for word in command]
        return super().spawn(command, *arguments, **options)


class Bench:
    """One private desktop, and all that runs on it."""

    def __enter__(self):
        self.stack = contextlib.ExitStack()
        self.runs, self.sounds, self.troubles = [], {}, []
        self.desktop = self.stack.enter_context(SideBySide(compositor=None))
        self.bus = accessibility_of(self.desktop.env["DBUS_SESSION_BUS_ADDRESS"])
        return self

    def __exit__(self, *_):
        for run in self.runs:
            with contextlib.suppress(Exception):
                if run.program.running():
                    run.program.process.kill()
                run.finish()
        for sound in self.sounds.values():
            with contextlib.suppress(Exception):
                sound.server.end()
        self.stack.close()

    def sound(self, server="pulseaudio"):
        if server not in self.sounds:
            self.sounds[server] = Sound(server == "pipewire")
            self.sounds[server].settle()
        return self.sounds[server]

    def start(self, server="pulseaudio", **options):
        return Run(self, self.sound(server), **options)

    def together(self, functions):
        """Runs them side by side. One that fails answers nothing, and breaks the promise of the row."""
        answers = [None] * len(functions)

        def call(index):
            try:
                answers[index] = functions[index]()
            except Exception as error:
                self.troubles.append(f"{type(error).__name__}: {error}"[:300])
        threads = [threading.Thread(target=call, args=(i,)) for i in range(len(functions))]
        for thread in threads:
            thread.start()
            time.sleep(0.05)
        for thread in threads:
            thread.join()
        return answers

    @contextlib.contextmanager
    def disk(self, size="400m", kind="tmpfs"):
        """A small disk of its own."""
        place = tempfile.mkdtemp(dir=self.desktop.folder)
        subprocess.run(["mount", "-t", kind, "-o", f"size={size}", kind, place], check=True)
        try:
            yield place
        finally:
            subprocess.run(["umount", "-l", place], stderr=subprocess.DEVNULL, check=False)
            shutil.rmtree(place, ignore_errors=True)
