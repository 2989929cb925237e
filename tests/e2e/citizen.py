#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""One card for the session, commands from outside its window, and the desktop's services: there, silent, or away."""

import ctypes
import json
import os
import signal
import socket
import struct
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "support"))
from recorder_test import MICROPHONE, Failure, RecorderTest, StandIns, end_process, main, wait_until  # noqa: E402

NAME = "io.github.flipside_recorder.Flipside"
PACKAGING = os.path.join(HERE, "..", "..", "packaging")
SECOND = 2
"""Seconds that a process may take that promises to end within one, on a busy machine."""


class Bus:
    """A session bus of the test's own."""

    def __init__(self, desktop, services=""):
        self.desktop, self.services = desktop, services
        self.path = os.path.join(desktop.folder, f"bus-{time.monotonic_ns()}")
        self.environment = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=" + self.path,
                            "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=" + self.path}
        self.start()

    def start(self):
        self.process = self.desktop.spawn(["dbus-daemon", "--session", "--nofork", "--address=unix:path=" + self.path],
                                          {"XDG_DATA_DIRS": self.services})
        wait_until(self.listens, "the bus")

    def listens(self):
        """Its socket is there a moment before."""
        with socket.socket(socket.AF_UNIX) as caller:
            return caller.connect_ex(self.path) == 0

    def end(self):
        self.process.send_signal(signal.SIGCONT)
        end_process(self.process)
        if os.path.exists(self.path):
            os.unlink(self.path)


class CardTest(RecorderTest):
    """The working folder has been chosen before."""

    prepared = None

    def setUp(self):
        super().setUp()
        if not CardTest.prepared:
            recorder = self.start()
            recorder.record()
            recorder.end()
            CardTest.prepared = self.home
        self.home = CardTest.prepared
        self.environment = {"HOME": self.home, "XDG_CONFIG_HOME": os.path.join(self.home, ".config"),
                            **self.sound.environment}

    def flipside(self, *arguments, **environment):
        """A process that is expected to end; (exit code, output, errors)."""
        done = subprocess.run([self.binary, *arguments], env={**self.desktop.env, **self.environment, **environment},
                              capture_output=True, text=True, timeout=20)
        return done.returncode, done.stdout, done.stderr

    def card(self, *arguments, **environment):
        card = self.desktop.start([self.binary, *arguments], {**self.environment, **environment})
        self.addCleanup(card.end)
        return card

    def state(self):
        return self.flipside("--status")[1].split("\t")[0]

    def wait_state(self, state):
        wait_until(lambda: self.state() == state, f"the state {state}")

    def window(self, card):
        def visible():
            try:
                return self.desktop.xdotool("search", "--onlyvisible", "--pid", card.pid)
            except Failure:
                return None
        return wait_until(visible, "the window")

    def own_bus(self, services=""):
        bus = Bus(self.desktop, services)
        self.addCleanup(bus.end)
        self.environment.update(bus.environment)
        return bus

    def service(self, bus, name):
        return StandIns(self.desktop, name, script=os.path.join(HERE, "services.py"), environment=bus.environment)


class SettingsManager:
    """Stands in for the program that tells all programs on an X server which theme the user wants."""

    def __init__(self):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(None))
        self.window = self.x.XCreateSimpleWindow(self.display, self.x.XDefaultRootWindow(self.display), 0, 0, 1, 1, 0, 0, 0)
        self.x.XSetSelectionOwner(self.display, self.atom(b"_XSETTINGS_S0"), self.window, 0)

    def atom(self, name):
        return self.x.XInternAtom(self.display, name, 0)

    def set_theme(self, theme):
        setting = struct.pack("<BxH13s3xII12s", 1, 13, b"Net/ThemeName", 1, 12, theme.ljust(12))
        settings = struct.pack("<B3xII", 0, 1, 1) + setting
        name = self.atom(b"_XSETTINGS_SETTINGS")
        self.x.XChangeProperty(self.display, self.window, name, name, 8, 0, settings, len(settings))
        self.x.XSync(self.display, 0)

    def end(self):
        self.x.XCloseDisplay(self.display)


class Contrast(CardTest):
    GROUND = {"usual": "#1E2124", "high": "#0F1112"}  # of the box of input devices

    def wait_contrast(self, window, contrast):
        colours = ["import", "-window", window, "-depth", "8", "-format", "%c", "histogram:info:-"]
        wait_until(lambda: self.GROUND[contrast] in self.desktop.ask(*colours), f"the {contrast} contrast")

    def test_a_change_of_the_theme_is_seen_without_a_portal(self):
        window = self.window(self.card())
        self.wait_contrast(window, "usual")
        manager = SettingsManager()
        manager.set_theme(b"HighContrast")
        self.wait_contrast(window, "high")
        manager.set_theme(b"Adwaita")
        self.wait_contrast(window, "usual")
        settings = os.path.join(self.home, ".config", "gtk-3.0", "settings.ini")
        os.makedirs(os.path.dirname(settings))
        with open(settings, "w") as file:
            file.write("[Settings]\ngtk-theme-name=HighContrast\n")
        self.wait_contrast(window, "high")
        os.unlink(settings)
        self.wait_contrast(window, "usual")
        manager.set_theme(b"HighContrast")
        self.wait_contrast(window, "high")
        manager.end()
        self.wait_contrast(window, "usual")


class CommandLine(CardTest):
    def refused(self, command, reason):
        code, output, error = self.flipside(command)
        self.assertEqual((code, output), (1, ""))
        self.assertIn(reason, error)

    def done(self, command, state):
        self.assertEqual(self.flipside(command), (0, "", ""))
        self.assertEqual(self.state(), state)

    def test_the_card_does_what_its_rules_allow_and_says_why_it_does_not(self):
        self.card()
        self.wait_state("idle")
        self.refused("--pause", "cannot pause: the state is idle")
        self.refused("--play", "there is no recording")
        self.refused("--show", "there is no recording")
        self.done("--toggle", "recording")
        self.refused("--record", "cannot record: the state is recording")
        self.stand_ins.expect("awake .*")
        self.done("--pause", "recording-paused")
        self.done("--toggle", "recording")
        state, elapsed, device, file = self.flipside("--status", LC_ALL="ar_EG.UTF-8")[1].rstrip("\n").split("\t")
        self.assertRegex(elapsed, r"00:00:\d\d\.\d")
        self.assertEqual((device, file), (MICROPHONE, self.recordings()[-1]))
        # Long enough to be played still when a busy machine comes to ask.
        wait_until(lambda: self.flipside("--status")[1].split("\t")[1] >= "00:00:03", "three seconds")
        self.done("--toggle", "idle")
        self.done("--play", "playing")
        status = json.loads(self.flipside("--status", "--json")[1])
        self.assertEqual((status["state"], status["file"]), ("playing", file))
        self.refused("--toggle", "cannot record: the state is playing")
        self.done("--stop", "idle")
        self.stand_ins.drain()
        self.done("--show", "idle")
        self.stand_ins.expect("shown .*")

    def test_quitting_leaves_the_name_to_the_next_card(self):
        first = self.card("--record")
        self.wait_state("recording")
        self.assertEqual(self.flipside("--quit"), (0, "", ""))
        self.card()
        self.wait_state("idle")
        self.assertEqual(first.wait_for_exit(5), 0)

    def test_a_card_without_standard_streams_stays_the_only_one(self):
        card = self.desktop.start(["sh", "-c", 'exec "$0" <&- >&- 2>&-', self.binary], self.environment)
        self.addCleanup(card.end)
        self.wait_state("idle")
        self.refused("--pause", "cannot pause: ")  # and the card has a line for its log
        self.assertEqual(self.state(), "idle")

    def test_what_needs_no_card_needs_no_display(self):
        for arguments, code, said in ((["--version"], 0, r"flipside \d"), (["--help"], 0, "Usage: "),
                                      (["--status"], 3, "not-running\t-\t-\t-\n$"), (["--quit"], 3, ".*no card is open"),
                                      (["--shout"], 2, ".*--shout\n\nUsage: "), (["--json"], 2, ".*--json"),
                                      (["--stop", "--record"], 2, ".*contradict"), (["take.mp3"], 2, ".*take.mp3"),
                                      (["--version", "--"], 0, r"flipside \d"), (["--", "--record"], 2, ".*to do with --record"),
                                      (["--record"], 1, ".*no display")):
            for wrong in {"DISPLAY": ""}, {"DISPLAY": ":999", "WAYLAND_DISPLAY": "none"}, {"QT_QPA_PLATFORM": "none"}:
                with self.subTest(arguments=arguments, wrong=wrong):
                    got, output, error = self.flipside(*arguments, **{"QT_QPA_PLATFORM": "", "LC_ALL": "xx_XX.UTF-8", **wrong})
                    self.assertEqual(got, code)
                    self.assertRegex(output or error, said)

    def test_a_card_that_stands_still_is_told_of_within_a_second(self):
        card = self.card()
        self.wait_state("idle")
        os.kill(card.pid, signal.SIGSTOP)
        self.addCleanup(os.kill, card.pid, signal.SIGCONT)
        for arguments in (["--toggle"], []):
            began = time.monotonic()
            self.assertEqual(self.flipside(*arguments)[0], 4)
            self.assertLess(time.monotonic() - began, SECOND)


class OneCard(CardTest):
    def test_of_two_that_start_at_once_one_becomes_the_card(self):
        for _ in range(4):
            cards = [self.card(), self.card()]
            wait_until(lambda: any(not card.running() for card in cards), "the end of one")
            first, second = sorted(cards, key=lambda card: card.running())
            self.assertEqual(first.process.returncode, 0, first.log())
            self.window(second)
            self.assertEqual(self.state(), "idle")
            second.end()

    def test_a_second_start_brings_the_card_to_the_front(self):
        card = self.card()
        window = self.window(card)
        self.wait_state("idle")
        self.desktop.xdotool("windowminimize", "--sync", window)
        self.assertEqual(self.flipside(), (0, "", ""))
        wait_until(lambda: self.desktop.ask("xprop", "-root", "_NET_ACTIVE_WINDOW").endswith(" " + hex(int(window))),
                   "the card to be in front")

    def test_a_card_that_comes_between_and_stands_still_is_told_of_within_a_second(self):
        self.service(self.own_bus(), "card")
        began = time.monotonic()
        code, _, error = self.flipside("--toggle")
        self.assertEqual(code, 4, error)
        self.assertLess(time.monotonic() - began, SECOND)

    def test_a_second_start_hands_the_launchers_token_over(self):
        card = self.service(self.own_bus(), "card")
        for tokens, token in (({"XDG_ACTIVATION_TOKEN": "new", "DESKTOP_STARTUP_ID": "old_TIME1"}, "new"),
                              ({"DESKTOP_STARTUP_ID": "old_TIME1"}, "old_TIME1")):
            self.assertEqual(self.flipside(**tokens), (0, "", ""))
            card.expect("activated " + token)

    def test_the_desktop_starts_it_over_the_bus_with_an_action(self):
        services = os.path.join(self.home, "share", "dbus-1", "services")
        os.makedirs(services)
        with open(os.path.join(PACKAGING, NAME + ".service.in")) as template:
            service = template.read().replace("@CMAKE_INSTALL_FULL_BINDIR@", os.path.dirname(self.binary))
        with open(os.path.join(services, NAME + ".service"), "w") as file:
            file.write(service)
        self.desktop.env, usual = {**self.desktop.env, **self.environment}, self.desktop.env
        self.addCleanup(setattr, self.desktop, "env", usual)  # what the bus gives to those that it starts
        self.own_bus(os.path.join(self.home, "share"))
        self.addCleanup(self.flipside, "--quit")  # no other process knows the card as its child
        self.call("ActivateAction", "record", "[]", "{}")
        self.wait_state("recording")
        self.call("Activate", "{}")
        self.assertNotEqual(self.call("Open", "[]", "{}"), 0)

    def call(self, method, *arguments):
        path = "/" + NAME.replace(".", "/")
        return subprocess.run(["gdbus", "call", "--session", "--dest", NAME, "--object-path", path, "--method",
                               "org.freedesktop.Application." + method, *arguments], capture_output=True,
                              env={**self.desktop.env, **self.environment}).returncode


class Buses(CardTest):
    def test_a_bus_that_was_away_knows_the_card_again(self):
        bus = self.own_bus()
        self.card()
        self.wait_state("idle")
        bus.end()
        self.assertEqual(self.state(), "not-running")
        bus.start()
        self.wait_state("idle")

    def test_a_silent_bus_holds_nobody_up(self):
        bus = self.own_bus()
        os.kill(bus.process.pid, signal.SIGSTOP)
        began = time.monotonic()
        self.assertEqual(self.flipside("--toggle")[0], 4)
        self.assertLess(time.monotonic() - began, SECOND)
        card = self.card()
        self.window(card)
        self.assertLess(time.monotonic() - began, 15)
        # Its system's bus, which a recording asks to stay awake, is silent too.
        takes = len(self.recordings())
        wait_until(self.desktop.active_window_geometry, "the window to be active")
        self.desktop.key("ctrl+r")
        wait_until(lambda: len(self.recordings()) > takes, "a recording")
        self.assertEqual(card.end(), 0)

    def opener(self):
        """What opens folders; answers with what it was given."""
        folder = self.desktop.folder
        with open(os.path.join(folder, "xdg-open"), "w") as script:
            script.write(f'#!/bin/sh\necho "$1" >>{folder}/opened\n')
        os.chmod(script.name, 0o755)
        opened = os.path.join(folder, "opened")
        self.addCleanup(os.unlink, opened)
        self.environment["PATH"] = f"{folder}:{os.environ['PATH']}"
        return lambda: os.path.exists(opened) and open(opened).read()

    def test_a_take_is_shown_by_the_portal_or_in_its_folder(self):
        opened = self.opener()
        bus = self.own_bus()
        portal = self.service(bus, "portal")
        self.card("--record")
        self.wait_state("recording")
        portal.expect("awake 4")
        self.flipside("--stop")
        self.assertEqual(sorted(portal.lines.get(timeout=5).split()[0] for _ in range(2)), ["asleep", "revealed"])
        self.flipside("--show")
        portal.expect("revealed .*" + os.path.basename(self.recordings()[-1]))
        self.assertFalse(opened())
        end_process(portal.process)
        self.flipside("--show")
        folder = "file://" + os.path.join(self.home, "Recordings") + "\n"
        wait_until(lambda: opened() == folder, "the folder to be opened")

    def test_only_suspend_is_inhibited(self):
        bus = self.own_bus()
        for service, awake, released in (("system", "awake sleep block", "released"), ("session", "awake 1 4", None)):
            with self.subTest(service=service):
                services = self.service(bus, service)
                card = self.card("--record")
                services.expect(awake)
                end_process(services.process)
                services = self.service(bus, service)  # started anew, it knows of nobody
                services.expect(awake)
                self.flipside("--pause")
                if released:
                    services.expect(released)
                card.end()
                end_process(services.process)


if __name__ == "__main__":
    main()
