#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Runs the real program natively on a headless Wayland compositor, turns its card over and back, and takes pictures:

    on_wayland.py BINARY FOLDER sway|weston|kwin|mutter [SCALE]

Says where the card is before, between and after, as far as the compositor shows it, and whether a second start gets the
card to the front with the token of its launcher. What the program and the compositor say to each other is in the folder, too.
"""

import contextlib
import os
import pwd
import re
import shutil
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "testbed"))
from desktop import Desktop, Failure, wait_until  # noqa: E402

SIZE = (1280, 900)
SWAY = """output * resolution {width}x{height} scale {scale} bg #8496A6 solid_color
default_border none
default_floating_border none
for_window [app_id=".*"] floating enable
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
        self.spawn(["weston", "--backend=headless-backend.so", "--use-pixman", f"--width={SIZE[0]}",
                    f"--height={SIZE[1]}", f"--scale={int(self.output_scale)}", "--socket=wayland-flipside", "--debug",
                    "--no-config"])
        self._wait_for_socket("wayland-flipside")

    def _start_kwin(self):
        # A copy has no capabilities, which a container does not let it have.
        program = shutil.copy(shutil.which("kwin_wayland"), self.folder)
        self.spawn([program, "--virtual", "--width", str(SIZE[0]), "--height", str(SIZE[1]), "--scale",
                    str(self.output_scale), "--socket", "wayland-flipside", "--no-lockscreen"],
                   {"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS": "1", "WAYLAND_DISPLAY": "", "QT_QPA_PLATFORM": ""})
        self._wait_for_socket("wayland-flipside")

    def _start_mutter(self):
        self.spawn(["mutter", "--wayland", "--headless", "--no-x11", "--virtual-monitor", "%dx%d" % SIZE,
                    "--wayland-display", "wayland-flipside"], {"WAYLAND_DISPLAY": ""})
        self._wait_for_socket("wayland-flipside")

    def picture(self, path):
        """None where the compositor lets nobody see its screen."""
        if self.name == "sway":
            self.ask("grim", path)
        elif self.name == "weston":
            before = set(os.listdir(self.folder))
            subprocess.run(["weston-screenshooter"], env=self.env, cwd=self.folder, check=True, capture_output=True)
            new = wait_until(lambda: set(os.listdir(self.folder)) - before, "the picture")
            shutil.move(os.path.join(self.folder, new.pop()), path)
        elif self.name == "kwin":
            self._picture_of_kwin(path)
        else:
            return None
        return path

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


class Session:
    def __init__(self, desktop, binary, folder):
        self.desktop, self.folder = desktop, folder
        self.pictures = 0
        user = "nobody" if desktop.name == "sway" else None
        log = os.path.join(desktop.folder, "flipside.log")
        desktop.env.update({"QT_LOGGING_RULES": "flipside.ui.debug=true", "PULSE_SERVER": "unix:/nonexistent"})
        self.program = desktop.start([os.path.abspath(binary)], {"WAYLAND_DEBUG": "1", **({"USER": user} if user else {})})
        self.log = log

    def take(self, what):
        self.pictures += 1
        path = os.path.join(self.folder, f"{self.desktop.name}-{self.desktop.output_scale}-{self.pictures}-{what}.png")
        return self.desktop.picture(path)

    def flip(self, button, back):
        flips = self.program.log().count("Flip ends")
        self.program.wait_for("button", button).press()
        time.sleep(0.55)
        self.take(f"{button}-turning")
        self.program.wait_for("button", back)
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
    answer = subprocess.run(["convert", path, "-fuzz", "12%", "-fill", "white", "-opaque", "#343a40", "-fill", "white",
                             "-opaque", "#25292d", "-threshold", "99%", "-trim", "info:"], capture_output=True, text=True)
    return answer.stdout.split()[2:4]


def main():
    binary, folder, name, *scale = sys.argv[1:]
    os.makedirs(folder, exist_ok=True)
    with WaylandDesktop(name, float(scale[0]) if scale else 1) as desktop:
        session = Session(desktop, binary, folder)
        try:
            session.program.wait_for("button", "Preferences")
            time.sleep(1)
            paths = [session.take("rest"), session.flip("Preferences", "Done"), session.flip("Done", "Preferences")]
            session.second_start()
            if code := session.program.end():
                raise Failure(f"the program ended with {code}")
            print(f"  {name}: the card is at {[card_place(path) for path in paths if path]}")
            if all(paths):
                answer = subprocess.run(["compare", "-metric", "AE", "-fuzz", "6%", paths[0], paths[2], "null:"],
                                        capture_output=True, text=True)
                print(f"  {answer.stderr} pixels differ after the way there and back")
        finally:
            shutil.copy(session.program.log_path, os.path.join(folder, f"{name}.log"))


if __name__ == "__main__":
    main()
