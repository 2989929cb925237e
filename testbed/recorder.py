# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The program on a whole private desktop with a sound server of its own, used as a person uses it: controls found by
their accessible names, keys and clicks of a real pointer. Nothing inside the program is touched.
"""

import array
import json
import os
import queue
import re
import subprocess
import threading

from desktop import Desktop, Failure, wait_until  # noqa: F401

HERE = os.path.dirname(os.path.abspath(__file__))
MICROPHONE = "USB Microphone"
SAMPLES_PER_SECOND = 48000 * 2  # of decoded sound


class SoundServer:
    """A private sound server with one microphone, for programs that get its environment."""

    def __init__(self, pipewire=False, signal="tone"):
        self.process = subprocess.Popen(
            ["/usr/bin/python3", os.path.join(HERE, "sound_server.py"), "--mic", f"{MICROPHONE}={signal}",
             *(["--pipewire"] if pipewire else [])], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.environment = {"PULSE_SERVER": self.answer()["environment"]["PULSE_SERVER"]}

    def answer(self):
        answer = json.loads(self.process.stdout.readline())
        if "error" in answer:
            raise Failure(f"the sound server: {answer}")
        return answer

    def tell(self, command):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()
        return self.answer()

    def end(self):
        self.process.stdin.close()
        self.process.wait(15)
        self.process.stdout.close()


class StandIns:
    """What the program has asked the desktop's services for."""

    def __init__(self, desktop, *options, script=os.path.join(HERE, "stand_ins.py"), environment=None):
        self.process = desktop.spawn(["/usr/bin/python3", script, *options], environment, stdout=subprocess.PIPE, text=True)
        self.lines = queue.Queue()
        threading.Thread(target=self._read, daemon=True).start()
        self.expect("ready .")

    def _read(self):
        for line in self.process.stdout:
            self.lines.put(line.strip())

    def expect(self, line, deadline=5):
        """The next call is this one."""
        try:
            said = self.lines.get(timeout=deadline)
        except queue.Empty:
            raise Failure(f"the desktop was not asked: {line}") from None
        if not re.fullmatch(line, said):
            raise Failure(f"the desktop was asked {said} instead of {line}")
        return said

    def mark(self):
        """A call that is read behind all that the program has sent until now; answers its line."""
        import dbus  # finds the bus in the environment, as it is now
        service = "org.freedesktop.FileManager1"
        dbus.SessionBus().call_blocking(service, "/" + service.replace(".", "/"), service, "ShowItems", "ass", (["-"], ""))
        return "shown -"

    def drain(self):
        end = self.mark()
        while self.lines.get(timeout=5) != end:
            pass

    def expect_nothing(self):
        """Nothing was asked for that is not read yet."""
        self.expect(self.mark())


class Recorder:
    """The running program and its main controls."""

    def __init__(self, desktop, sound, home, binary, environment=None):
        self.desktop = desktop
        self.home = home
        self.folder = os.path.join(home, "Recordings")
        os.makedirs(self.folder, exist_ok=True)
        places = {"HOME": home, "XDG_CONFIG_HOME": os.path.join(home, ".config")}
        self.program = desktop.start([binary], {**sound.environment, **places, **(environment or {})})
        self.wait_for("button", "Record")

    def wait_for(self, role, key, deadline=20):
        try:
            return self.program.wait_for(role, key, deadline)
        except Failure as failure:
            raise Failure(f"{failure}; {self.described()}") from None

    def button(self, name):
        return self.wait_for("button", name)

    def enabled_button(self, name):
        button = self.button(name)
        wait_until(lambda: button.enabled, f"{name} to be enabled")
        return button

    def press(self, name):
        """Through the accessibility bus."""
        self.enabled_button(name).press()

    def click(self, name):
        """With the pointer."""
        self.enabled_button(name).click(self.desktop)

    def text(self, description):
        label = self.program.find("label", description)
        return label.text if label else None

    @property
    def status(self):
        return self.text("Status")

    @property
    def elapsed(self):
        """The elapsed time that is shown, in seconds."""
        hours, minutes, seconds = self.text("Elapsed time").split(":")
        return int(hours) * 3600 + int(minutes) * 60 + float(seconds)

    @property
    def output_file(self):
        return self.text("Output file")

    def wait_status(self, status, deadline=20):
        try:
            wait_until(lambda: re.fullmatch(status, self.status or ""), f'status "{status}"', deadline)
        except Failure as failure:
            raise Failure(f"{failure}; {self.described()}") from None

    def described(self):
        """What a person would see, for the message of a test that fails."""
        texts = [control.text for control in self.program.find_all("label") if control.text]
        return (f"the card reads {texts}, {self.windows()} windows, active: {self.desktop.active_window_geometry()}, "
                f"pointer: {self.desktop.xdotool('getmouselocation')}, log:\n{self.program.log()[-3000:]}")

    def wait_elapsed(self, seconds, deadline=20):
        wait_until(lambda: self.elapsed >= seconds, f"{seconds} s recorded", deadline)

    def choose_folder(self, folder):
        """Answers the folder chooser that is open. What is typed before it has the keyboard goes to another window."""
        field = self.wait_for("text", "Directory:")
        wait_until(lambda: field.focused, "the chooser to have the keyboard")
        self.desktop.key("ctrl+a")
        self.desktop.xdotool("type", "--delay", "5", folder)
        wait_until(lambda: field.node.queryText().getText(0, -1) == folder, "the folder's name to be typed")
        self.desktop.key("Return")
        self.program.wait_gone("text", "Directory:")

    def record(self):
        """The first recording in a new home: asks for the folder."""
        self.click("Record")
        self.choose_folder(self.folder)
        self.wait_status("Recording from .*")

    def windows(self):
        """How many windows are on the screen, menus included; None when one of them is just going."""
        try:
            return len(self.desktop.xdotool("search", "--onlyvisible", "--pid", self.program.pid).split())
        except Failure:
            return None

    def turn_over(self, button, back):
        """Clicks the button that turns the card; `back` is one on the other side."""
        self.click(button)
        self.wait_for_side(back)

    def wait_for_side(self, button):
        self.wait_for("button", button)
        # The card has turned over when the window that it turned in is gone.
        wait_until(lambda: self.windows() == 1, "the end of the flip")

    def end(self):
        return self.program.end()


def decoded(path):
    """The sound in the file, 16-bit stereo; fails for a file with a fault in it."""
    answer = subprocess.run(["mpg123", "-q", "-s", "--stereo", "-r", "48000", path], capture_output=True)
    if answer.returncode or answer.stderr.strip():
        raise Failure(f"mpg123 {path}: {answer.stderr.decode()}")
    return array.array("h", answer.stdout)


def decoded_seconds(path):
    return len(decoded(path)) / SAMPLES_PER_SECOND
