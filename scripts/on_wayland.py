#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Runs the real program natively on a headless Wayland compositor: records, plays what was recorded, turns the card over
to the preferences and back, and takes pictures of it all:

    on_wayland.py BINARY FOLDER sway|weston|kwin|mutter [SCALE]

Says where the card is in each picture, as far as the compositor shows it, and whether a second start gets the card to the
front with the token of its launcher. What the program and the compositor say to each other is in the folder, too.
"""

import argparse
import contextlib
import os
import pwd
import re
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "testbed"))
from recorder import (  # noqa: E402
    SAMPLES_PER_SECOND, Desktop, Failure, Recorder, SoundServer, StandIns, decoded, wait_until)

SIZE = (1280, 900)
SWAY = """output * resolution {width}x{height} scale {scale} bg #8496A6 solid_color
default_border none
default_floating_border none
for_window [app_id=".*"] floating enable
"""
WESTON = """[shell]
panel-position=none
background-color=0xff8496a6
"""


class WaylandDesktop(Desktop):
    """A session bus and a compositor. Programs choose their platform themselves."""

    def __init__(self, compositor, scale):
        super().__init__(size=SIZE)
        self.name, self.output_scale = compositor, scale
        del self.env["QT_QPA_PLATFORM"], self.env["QT_SCALE_FACTOR"]
        self.env.update({"XDG_SESSION_TYPE": "wayland", "WAYLAND_DISPLAY": "wayland-flipside"})

    def __enter__(self):
        try:
            self._start_bus()
            getattr(self, "_start_" + self.name)()
            os.environ.update(self.env)
            os.environ.pop("DISPLAY", None)
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def _wait_for_socket(self, pattern):
        def look():
            return [name for name in os.listdir(self.folder) if re.fullmatch(pattern, name)]
        try:
            self.env["WAYLAND_DISPLAY"] = wait_until(look, self.name)[0]
        except Failure as failure:
            raise Failure(f"{failure}:\n{self.log(self.processes[-1].args[0])}") from None

    def _start_sway(self):
        config = os.path.join(self.folder, "sway.conf")
        with open(config, "w") as file:
            file.write(SWAY.format(width=SIZE[0], height=SIZE[1], scale=self.output_scale))
        # It refuses to run as root, and so does all that shares its bus then.
        nobody = pwd.getpwnam("nobody")
        for folder, _, names in os.walk(self.folder):
            for name in [folder, *(os.path.join(folder, name) for name in names)]:
                os.chown(name, nobody.pw_uid, nobody.pw_gid)
        os.chmod(self.folder, 0o711)
        self.spawn(["sway", "-c", config], {
            "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1", "WAYLAND_DISPLAY": ""},
            user="nobody", group="nogroup", extra_groups=[])
        self._wait_for_socket(r"wayland-\d+")

    def _start_weston(self):
        # Without a display it has no keyboard either, and the toolkit's text fields do not bear that.
        self._start_display()
        config = os.path.join(self.folder, "weston.ini")
        with open(config, "w") as file:
            file.write(WESTON)
        self.spawn(["weston", "--backend=x11-backend.so", "--use-pixman", f"--width={SIZE[0]}", f"--height={SIZE[1]}",
                    f"--scale={int(self.output_scale)}", "--socket=wayland-flipside", "--debug", "--config", config])
        self._wait_for_socket("wayland-flipside")
        del self.env["DISPLAY"]

    def _start_kwin(self):
        # A copy has no capabilities, which a container does not let it have.
        program = shutil.copy(shutil.which("kwin_wayland"), self.folder)
        self.spawn([program, "--virtual", "--width", str(SIZE[0]), "--height", str(SIZE[1]), "--scale",
                    str(self.output_scale), "--socket", "wayland-flipside", "--no-lockscreen"],
                   {"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS": "1", "WAYLAND_DISPLAY": "", "QT_QPA_PLATFORM": ""})
        self._wait_for_socket("wayland-flipside")

    def _start_mutter(self):
        for server in ("pipewire", "wireplumber"):  # which its pictures come through
            self.spawn([server])
        self.spawn(["mutter", "--wayland", "--headless", "--no-x11", "--virtual-monitor", "%dx%d" % SIZE,
                    "--wayland-display", "wayland-flipside"], {"WAYLAND_DISPLAY": ""})
        self._wait_for_socket("wayland-flipside")

    def picture(self, path):
        getattr(self, "_picture_of_" + self.name)(path)
        return path

    def _picture_of_sway(self, path):
        self.ask("grim", path)

    def _picture_of_weston(self, path):
        before = set(os.listdir(self.folder))
        subprocess.run(["weston-screenshooter"], env=self.env, cwd=self.folder, check=True, capture_output=True)
        new = wait_until(lambda: set(os.listdir(self.folder)) - before, "the picture")
        shutil.move(os.path.join(self.folder, new.pop()), path)

    def _picture_of_kwin(self, path):
        import dbus
        bus = dbus.bus.BusConnection(self.env["DBUS_SESSION_BUS_ADDRESS"])
        service = dbus.Interface(bus.get_object("org.kde.KWin", "/org/kde/KWin/ScreenShot2"), "org.kde.KWin.ScreenShot2")
        read_end, write_end = os.pipe()
        answer = service.CaptureWorkspace({"native-resolution": True}, dbus.types.UnixFd(write_end))
        os.close(write_end)
        with os.fdopen(read_end, "rb") as reader:
            pixels = reader.read()
        size = f"{int(answer['width'])}x{int(answer['height'])}"
        subprocess.run(["convert", "-size", size, "-depth", "8", "bgra:-", "-alpha", "off", path], input=pixels, check=True)

    def _picture_of_mutter(self, path):
        """One frame of its screen cast, which is a stream of PipeWire."""
        import dbus
        from dbus.mainloop.glib import DBusGMainLoop
        from gi.repository import GLib
        bus = dbus.bus.BusConnection(self.env["DBUS_SESSION_BUS_ADDRESS"], mainloop=DBusGMainLoop())
        name, nothing = "org.gnome.Mutter.ScreenCast", dbus.Dictionary(signature="sv")

        def interface(path, kind=""):
            return dbus.Interface(bus.get_object(name, path), name + kind)
        session = interface(interface("/org/gnome/Mutter/ScreenCast").CreateSession(nothing), ".Session")
        stream = interface(session.RecordMonitor("Meta-0", nothing), ".Stream")
        nodes = []
        stream.connect_to_signal("PipeWireStreamAdded", nodes.append)
        session.Start()
        wait_until(lambda: nodes or GLib.MainContext.default().iteration(False) and nodes, "the screen cast's stream")
        self.ask("gst-launch-1.0", "-q", "pipewiresrc", f"path={nodes[0]}", "num-buffers=1", "!", "videoconvert", "!",
                 "pngenc", "!", "filesink", f"location={path}")
        session.Stop()


class Session(Recorder):
    """The program, used through the accessibility bus alone: nobody moves the pointer of a headless compositor."""

    def __init__(self, desktop, sound, binary, folder):
        self.pictures, self.output = 0, folder
        super().__init__(desktop, sound, tempfile.mkdtemp(dir=desktop.folder), os.path.abspath(binary), {
            "WAYLAND_DEBUG": "1", "QT_LOGGING_RULES": "flipside.ui.debug=true",
            **({"USER": "nobody"} if desktop.name == "sway" else {})})

    def described(self):
        return f"the card reads {[label.text for label in self.program.find_all('label') if label.text]}"

    def take(self, what):
        self.pictures += 1
        name = f"{self.desktop.name}-{self.desktop.output_scale:g}x-{self.pictures}-{what}.png"
        return self.desktop.picture(os.path.join(self.output, name))

    def choose_folder(self, folder):
        field = self.wait_for("text", "Directory:")
        self.take("chooser")
        field.node.queryEditableText().setTextContents(folder)
        self.press("Choose")
        self.program.wait_gone("text", "Directory:")

    def record_and_play(self):
        self.press("Record")
        self.choose_folder(self.folder)
        self.wait_status("Recording from .*")
        self.wait_elapsed(3)
        self.take("recording")
        self.press("Stop")
        self.wait_status("Ready")
        seconds = len(decoded(self.output_file)) / SAMPLES_PER_SECOND
        print(f"  recorded {seconds:.1f} s", flush=True)
        self.press("Play")
        self.wait_status("Playing .*")
        self.take("playing")
        self.wait_status("Ready")

    def flip(self, button, back):
        flips = self.program.log().count("Flip ends")
        self.press(button)
        time.sleep(0.55)
        self.take(f"{button}-turning")
        self.wait_for("button", back)
        with contextlib.suppress(Failure):
            wait_until(lambda: self.program.log().count("Flip ends") > flips, "the end of the flip", 5)
        time.sleep(0.5)
        flipped = self.program.log().count("Flip ends") > flips
        print(f"  {button}: {'a flip' if flipped else 'exchanged at once'}", flush=True)
        return self.take(back)


    def second_start(self):
        """Whether the compositor is given the token of the launcher."""
        token = "of-the-launcher"
        done = subprocess.run(self.program.process.args, env={**self.desktop.env, "XDG_ACTIVATION_TOKEN": token}, timeout=10)
        activation = re.compile(rf'xdg_activation_v1@\d+\.activate\("{token}"')
        with contextlib.suppress(Failure):
            wait_until(lambda: activation.search(self.program.log()), "the activation", 3)
        given = "is given" if activation.search(self.program.log()) else "is not given"
        print(f"  second start: ends with {done.returncode}, and the compositor {given} its token", flush=True)


def card_place(path):
    """Where the card is on the picture."""
    answer = subprocess.run(["convert", path, "-fuzz", "4%", "-fill", "white", "-opaque", "#343a40", "-fill", "white",
                             "-opaque", "#25292d", "-threshold", "99%", "-trim", "info:"], capture_output=True, text=True)
    return answer.stdout.split()[2:4]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("binary")
    parser.add_argument("folder")
    parser.add_argument("compositor", choices=("sway", "weston", "kwin", "mutter"))
    parser.add_argument("scale", nargs="?", type=float, default=1)
    options = parser.parse_args()
    binary, folder, name = options.binary, options.folder, options.compositor
    os.makedirs(folder, exist_ok=True)
    with WaylandDesktop(name, options.scale) as desktop, contextlib.ExitStack() as stack:
        StandIns(desktop)
        sound = SoundServer(signal="music")
        stack.callback(sound.end)
        session = Session(desktop, sound, binary, folder)
        try:
            time.sleep(1)
            paths = [session.take("rest")]
            session.record_and_play()
            paths += [session.take("played"), session.flip("Preferences", "Done"), session.flip("Done", "Preferences")]
            session.second_start()
            if code := session.end():
                raise Failure(f"the program ended with {code}")
            print(f"  {name}: the card is at {[card_place(path) for path in paths]}")
            answer = subprocess.run(["compare", "-metric", "AE", "-fuzz", "6%", paths[1], paths[3], "null:"],
                                    capture_output=True, text=True)
            print(f"  {answer.stderr} pixels differ after the way there and back")
        finally:
            shutil.copy(session.program.log_path, os.path.join(folder, f"{name}.log"))


if __name__ == "__main__":
    main()
