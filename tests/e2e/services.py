#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stand in for services that a desktop may have or lack, on the session bus: those that are named on the command line.
Each call is one line on standard output; the first line says that they are there.

    card           activated TOKEN; to a command it gives no answer, but to the first one that of a bus without a card
    portal         chooser WINDOW FOLDER TITLE, closed (by the program that asked), and what any portal says
    notifications  notice NUMBER REPLACED TEXT, taken back NUMBER
    session        awake COOKIE FLAGS, asleep COOKIE
    system         awake WHAT MODE, released (when the descriptor has been closed)

With --silent the chooser never answers at all; with --late a notification is given its number only when the user says so.
The test is the user, by method calls: test.User.Answer of the portal with a response (0 is chosen, 1 cancelled) and an
address; test.User.Close of the notifications closes the one that is shown, test.User.Number gives a late one its number.
"""

import os
import sys

import dbus
import dbus.service

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "testbed"))
from stand_ins import PORTAL, GLib, Portal, Request, SessionManager, say, serve  # noqa: E402


class Chooser(Portal):
    """Asked by programs, and answered by the user."""
    request = None

    @dbus.service.method(PORTAL + "FileChooser", in_signature="ssa{sv}", out_signature="o", sender_keyword="sender",
                         async_callbacks=("answer", "refuse"))
    def OpenFile(self, window, title, options, answer, refuse, sender):
        folder = bytes(options["current_folder"]).rstrip(b"\0").decode()
        assert options["directory"] and options["modal"]
        self.request = Request(self.connection, sender, options)
        say("chooser", window or "none", folder, title)
        if "--silent" not in sys.argv:
            answer(self.request.path)

    @dbus.service.method("test.User", in_signature="us")
    def Answer(self, response, address):
        self.request.answer(response, [address] if address else [])


class Notifications(dbus.service.Object):
    name, path = "org.freedesktop.Notifications", "/org/freedesktop/Notifications"
    number = 0
    answer = None

    @dbus.service.method(name, in_signature="susssasa{sv}i", out_signature="u", async_callbacks=("answer", "refuse"))
    def Notify(self, program, replaced, icon, summary, body, actions, hints, timeout, answer, refuse):
        self.number = replaced or self.number + 1
        say("notice", self.number, replaced, summary + body)
        self.answer = answer
        if "--late" not in sys.argv:
            self.Number()

    @dbus.service.signal(name, signature="uu")
    def NotificationClosed(self, number, reason):
        pass

    @dbus.service.method(name, in_signature="u")
    def CloseNotification(self, number):
        say("taken back", number)

    @dbus.service.method("test.User")
    def Close(self):
        self.NotificationClosed(self.number, 2)

    @dbus.service.method("test.User")
    def Number(self):
        self.answer(dbus.UInt32(self.number))


class Card(dbus.service.Object):
    name, path = "io.github.flipside_recorder.Flipside", "/io/github/flipside_recorder/Flipside"
    asked = False

    @dbus.service.method("org.freedesktop.Application", in_signature="a{sv}")
    def Activate(self, platform_data):
        say("activated", platform_data["activation-token"])

    @dbus.service.method(name + ".Recorder", in_signature="s", async_callbacks=("_answer", "refuse"))
    def Run(self, command, _answer, refuse):
        if not self.asked:
            refuse(dbus.DBusException(name="org.freedesktop.DBus.Error.NameHasNoOwner"))
        self.asked = True


class System(dbus.service.Object):
    name, path = "org.freedesktop.login1", "/org/freedesktop/login1"

    @dbus.service.method(name + ".Manager", in_signature="ssss", out_signature="h")
    def Inhibit(self, what, who, why, mode):
        say("awake", what, mode)
        kept, given = os.pipe()
        GLib.io_add_watch(kept, GLib.IO_HUP, lambda *_: say("released"))
        handle = dbus.types.UnixFd(given)
        os.close(given)
        return handle


SERVICES = {"card": Card, "portal": Chooser, "notifications": Notifications, "session": SessionManager, "system": System}

if __name__ == "__main__":
    serve(*(SERVICES[name] for name in sys.argv[1:] if not name.startswith("--")))
