# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A private desktop for tests that drive the real program from outside: a virtual display, a window manager, a
compositor, a session bus with accessibility, and the programs started in it. Everything is started by this module,
ended by pid, and keeps its files in one temporary folder.

    with Desktop() as desktop:
        program = desktop.start([binary])
        program.wait_for("button", "Record").press()

One desktop a process: the accessibility library connects once.
"""

import contextlib
import os
import shutil
import signal
import subprocess
import tempfile
import time

DEADLINE = 20.0
"""Seconds that any wait may take before the test fails."""


class Failure(AssertionError):
    pass


def wait_until(condition, what, deadline=DEADLINE, poll=0.03):
    """Returns the first true value of condition(); fails with `what`, or what it says then, when the deadline passes first."""
    end = time.monotonic() + deadline
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure(f"waited {deadline:g} s for: {what() if callable(what) else what}")
        time.sleep(poll)


def end_process(process, sig=signal.SIGTERM, deadline=5.0):
    """Ends a process that was started from here."""
    if process.poll() is None:
        process.send_signal(sig)
        try:
            process.wait(deadline)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
    return process.returncode


def need(command):
    path = shutil.which(command)
    if not path:
        raise Failure(f"{command} is not installed; scripts/setup installs it")
    return path


class Desktop:
    def __init__(self, window_manager=("openbox",), compositor=("picom", "--backend", "xrender", "--config", "/dev/null"),
                 size=(1280, 900), scale=1, background=("#8496A6", "#46535F")):
        self.window_manager = window_manager
        self.compositor = compositor
        self.size = size
        self.scale = scale
        self.background = background
        self.processes = []
        self.folder = tempfile.mkdtemp(prefix="flipside-desktop-")
        self.home = tempfile.mkdtemp(dir=self.folder)
        self.env = {
            "PATH": os.environ["PATH"],
            "HOME": self.home,
            "XDG_RUNTIME_DIR": self.folder,
            "XDG_CONFIG_HOME": os.path.join(self.home, ".config"),
            "XDG_CACHE_HOME": os.path.join(self.home, ".cache"),
            "LC_ALL": "C.UTF-8",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_SCALE_FACTOR": str(scale),
            "QT_QPA_PLATFORM": "xcb",
        }
        handed_on = ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "TZ")
        self.env.update({name: os.environ[name] for name in handed_on if name in os.environ})

    def __enter__(self):
        try:
            self._start_display()
            self._start_bus()
            # A gradient, where compositors look for the ground of a desktop.
            self.ask("hsetroot", "-add", self.background[0], "-add", self.background[1], "-gradient", 0)
            self.spawn(self.window_manager)
            # It is there before it looks after new windows, which have no focus then: it does what it is asked.
            does = "xdotool set_num_desktops 1; xprop -root _NET_NUMBER_OF_DESKTOPS | grep -q ' = 1$'"
            wait_until(lambda: not subprocess.call(does, shell=True, env=self.env, stderr=subprocess.DEVNULL), does)
            if self.compositor:
                self.spawn(self.compositor)
                wait_until(lambda: '"picom"' in self.ask("xwininfo", "-root", "-tree"), "a compositor")
            os.environ.update(self.env)
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            self._end_group(process)
        shutil.rmtree(self.folder, ignore_errors=True)

    # processes

    def spawn(self, command, env=None, log=None, **options):
        """Starts a program that ends with the desktop, what it prints in a log of its own."""
        need(command[0])
        with open(log or os.path.join(self.folder, os.path.basename(command[0]) + ".log"), "ab") as output:
            process = subprocess.Popen(command, env={**self.env, **(env or {})}, stdin=subprocess.DEVNULL,
                                       stderr=output, start_new_session=True, **{"stdout": output, **options})
        self.processes.append(process)
        return process

    @staticmethod
    def _end_group(process):
        # Each helper leads a group of its own; what it started (the accessibility bus, for one) ends with it.
        end_process(process, deadline=3)
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGKILL)

    def _start_display(self):
        read_end, write_end = os.pipe()
        width, height = self.size
        self.spawn(["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp",
                    "-noreset"], pass_fds=[write_end])
        os.close(write_end)
        with os.fdopen(read_end) as reader:
            number = reader.readline().strip()
        if not number:
            raise Failure("Xvfb did not start: " + self.log("Xvfb"))
        self.env["DISPLAY"] = ":" + number

    def _start_bus(self):
        # The machine's own portal, which the bus would start, stays out of this.
        services = os.path.join(self.folder, "dbus-1", "services")
        os.makedirs(services)
        with open(os.path.join(services, "org.freedesktop.portal.Desktop.service"), "w") as service:
            service.write("[D-BUS Service]\nName=org.freedesktop.portal.Desktop\nExec=/bin/false\n")
        bus = self.spawn(["dbus-daemon", "--session", "--nofork", "--print-address=1",
                          "--address=unix:path=" + os.path.join(self.folder, "bus")], stdout=subprocess.PIPE)
        address = bus.stdout.readline().decode().strip()
        if not address:
            raise Failure("the session bus did not start: " + self.log("dbus-daemon"))
        self.env["DBUS_SESSION_BUS_ADDRESS"] = address
        # Accessibility is there before any program: of those that came while it started, one in hundreds was never seen.
        bus = self.ask("dbus-send", "--print-reply=literal", "--dest=org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress")
        self.ask("dbus-send", f"--bus={bus}", "--print-reply", "--dest=org.a11y.atspi.Registry",
                 "/org/a11y/atspi/accessible/root", "org.freedesktop.DBus.Peer.Ping")

    def ask(self, *command):
        """The output of a program that looks at the desktop, or changes it."""
        answer = subprocess.run([need(command[0]), *map(str, command[1:])], env=self.env, capture_output=True, text=True)
        if answer.returncode:
            raise Failure(f"{command}: {answer.stderr.strip()}")
        return answer.stdout.strip()

    def log(self, name):
        path = os.path.join(self.folder, name + ".log")
        return open(path, errors="replace").read() if os.path.exists(path) else ""

    def start(self, command, env=None):
        """Starts the program under test."""
        return Program(self, command, env)

    def seen(self):
        """What accessibility and the window manager say, for the message of a test that fails."""
        import pyatspi
        windows = [(window.name, window.getState().contains(pyatspi.STATE_ACTIVE))
                   for program in pyatspi.Registry.getDesktop(0) for window in program or ()]
        looks = "xprop -root _NET_ACTIVE_WINDOW; xdotool getwindowfocus getwindowname"
        active = subprocess.run(looks, shell=True, env=self.env, capture_output=True, text=True).stdout
        return f"accessible: {windows}, active: {active!r}, buses: {self.log('dbus-daemon')[-1000:]!r}"

    # the screen and the pointer

    def screenshot(self, path):
        os.makedirs(os.path.dirname(os.path.abspath(path)), exist_ok=True)
        self.ask("import", "-silent", "-window", "root", path)

    def xdotool(self, *arguments):
        return self.ask("xdotool", *arguments)

    def key(self, keys):
        self.xdotool("key", "--clearmodifiers", keys)

    def active_window_geometry(self):
        """(x, y, width, height) of the active window, or None."""
        try:
            answer = self.xdotool("getactivewindow", "getwindowgeometry", "--shell")
        except Failure:
            return None
        values = dict(line.split("=") for line in answer.splitlines() if "=" in line)
        return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))


class Program:
    """The program under test, seen through the accessibility tree."""

    def __init__(self, desktop, command, env=None):
        self.desktop = desktop
        self.log_path = os.path.join(desktop.folder, f"{os.path.basename(command[0])}-{time.monotonic_ns()}.log")
        self.process = desktop.spawn(command, env, self.log_path)
        self.pid = self.process.pid

    def log(self):
        return open(self.log_path, errors="replace").read()

    def running(self):
        return self.process.poll() is None

    def end(self):
        return end_process(self.process)

    def wait_for_exit(self, deadline=DEADLINE):
        wait_until(lambda: not self.running(), "the program's end", deadline)
        return self.process.returncode

    def root(self):
        import pyatspi
        for application in pyatspi.Registry.getDesktop(0):
            try:
                if application and application.get_process_id() == self.pid:
                    return application
            except Exception:  # an application that is just leaving the bus
                continue
        return None

    def find(self, role, key):
        """The control of that role whose accessible name or description is `key`; None when none is on the screen."""
        return next(_matches(self.root(), role, key), None)

    def find_all(self, role):
        return list(_matches(self.root(), role, None))

    def wait_for(self, role, key, deadline=DEADLINE):
        def look():
            if not self.running():
                raise Failure(f"the program ended with {self.process.returncode}:\n{self.log()}")
            return self.find(role, key)
        return wait_until(look, lambda: f'{role} "{key}"; {self.desktop.seen()}, log:\n{self.log()[-2000:]}', deadline)

    def wait_gone(self, role, key, deadline=DEADLINE):
        wait_until(lambda: not self.find(role, key), f'{role} "{key}" to go', deadline)


def _matches(node, role, key):
    import pyatspi
    try:
        its_role = node.getRoleName().replace("push button", "button")
        if role in (None, its_role) and key in (None, node.name, node.description):
            if node.getState().contains(pyatspi.STATE_SHOWING):
                yield Control(node)
        children = list(node)
    except Exception:  # the control went away while it was looked at, or the whole program
        return
    for child in children:
        yield from _matches(child, role, key)


class Control:
    """One control of the program: a thin handle on its accessible object."""

    def __init__(self, node):
        self.node = node

    text = property(lambda self: self.node.name)
    description = property(lambda self: self.node.description)
    enabled = property(lambda self: self._is("SENSITIVE"))
    focused = property(lambda self: self._is("FOCUSED"))

    def _is(self, state):
        import pyatspi
        return self.node.getState().contains(getattr(pyatspi, "STATE_" + state))

    def set_value(self, number):
        self.node.queryValue().currentValue = number

    def press(self):
        """Presses the control through the accessibility bus."""
        action = self.node.queryAction()
        names = [action.getName(i).lower() for i in range(action.nActions)]
        action.doAction(names.index(next(name for name in ("press", "toggle", "showmenu") if name in names)))

    def focus(self):
        self.node.queryComponent().grabFocus()

    @property
    def in_active_window(self):
        import pyatspi
        node = self.node
        while node and not node.getState().contains(pyatspi.STATE_ACTIVE):
            node = node.parent
        return node is not None

    def click(self, desktop):
        """Clicks the middle of the control with the real pointer. The program tells of its window before the window
        manager has put it on the screen; until it is active there, a click would go to the ground, or beside it."""
        wait_until(lambda: self.in_active_window, lambda: f"the window of {self.text} to be active; {desktop.seen()}")
        import pyatspi
        box = self.node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)  # in points, and the pointer goes by pixels
        desktop.xdotool("mousemove", desktop.scale * (box.x + box.width // 2), desktop.scale * (box.y + box.height // 2),
                        "click", 1)
