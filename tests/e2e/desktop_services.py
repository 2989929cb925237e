#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stands in for a desktop's folder chooser and its notifications on the session bus. Each call is one line on standard
output; the first line says that the services are there. With --silent the chooser never answers at all.

    chooser WINDOW FOLDER TITLE    a chooser was asked for: on that window, beginning in that folder
    closed                         it was closed by the program that asked
    notice NUMBER REPLACED TEXT    a notification was asked for
    taken back NUMBER              it was closed by the program that asked

The test is the user, by a method call to the portal: test.User.Answer with a response (0 is chosen, 1 cancelled) and an
address.
"""

import os
import sys

import dbus
import dbus.service

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts", "package"))
from portal import PATH, PORTAL, Request, say, serve  # noqa: E402

NOTIFICATIONS = "org.freedesktop.Notifications"


class Chooser(dbus.service.Object):
    """Asked by programs through the portal, and answered by the user."""
    name, path = PORTAL, PATH
    silent = "--silent" in sys.argv
    request = None

    @dbus.service.method("org.freedesktop.portal.FileChooser", in_signature="ssa{sv}", out_signature="o",
                         sender_keyword="sender", async_callbacks=("answer", "refuse"))
    def OpenFile(self, window, title, options, answer, refuse, sender):
        folder = bytes(options["current_folder"]).rstrip(b"\0").decode()
        assert options["directory"] and options["modal"]
        self.request = Request(self.connection, sender, options)
        say("chooser", window or "none", folder, title)
        if not self.silent:
            answer(self.request.path)

    @dbus.service.method("test.User", in_signature="us")
    def Answer(self, response, address):
        self.request.answer(response, [address] if address else [])


class Notifications(dbus.service.Object):
    name, path = NOTIFICATIONS, "/org/freedesktop/Notifications"
    number = 0

    @dbus.service.method(NOTIFICATIONS, in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, program, replaced, icon, summary, body, actions, hints, timeout):
        self.number = replaced or self.number + 1
        say("notice", self.number, replaced, summary + body)
        return dbus.UInt32(self.number)

    @dbus.service.method(NOTIFICATIONS, in_signature="u")
    def CloseNotification(self, number):
        say("taken back", number)


if __name__ == "__main__":
    serve(Chooser, Notifications)
