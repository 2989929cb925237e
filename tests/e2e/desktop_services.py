#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stands in for a desktop's folder chooser and its notifications on the session bus. Each call is one line on standard
output; the first line says that the services are there. With --silent the chooser never answers at all. With --late a
notification is given its number only when the user says so, and with --sandboxed only the portal shows any.

    chooser WINDOW FOLDER TITLE    a chooser was asked for: on that window, beginning in that folder
    closed                         it was closed by the program that asked
    notice NUMBER REPLACED TEXT    a notification was asked for
    taken back NUMBER              it was closed by the program that asked
    portal notice NAME TEXT        the portal was asked for one
    portal taken back NAME

The test is the user, by method calls: test.User.Answer of the portal with a response (0 is chosen, 1 cancelled) and an
address; test.User.Close of the notifications closes the one that is shown, test.User.Number gives a late one its number.
"""

import os
import sys

import dbus
import dbus.service

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts", "package"))
from portal import PATH, PORTAL, Request, say, serve  # noqa: E402

NOTIFICATIONS = "org.freedesktop.Notifications"


class Portal(dbus.service.Object):
    """Asked by programs, and answered by the user."""
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

    @dbus.service.method("org.freedesktop.portal.Notification", in_signature="sa{sv}")
    def AddNotification(self, name, notification):
        say("portal notice", name, notification["title"])

    @dbus.service.method("org.freedesktop.portal.Notification", in_signature="s")
    def RemoveNotification(self, name):
        say("portal taken back", name)


class Notifications(dbus.service.Object):
    name, path = NOTIFICATIONS, "/org/freedesktop/Notifications"
    number = 0
    answer = None

    @dbus.service.method(NOTIFICATIONS, in_signature="susssasa{sv}i", out_signature="u",
                         async_callbacks=("answer", "refuse"))
    def Notify(self, program, replaced, icon, summary, body, actions, hints, timeout, answer, refuse):
        self.number = replaced or self.number + 1
        say("notice", self.number, replaced, summary + body)
        self.answer = answer
        if "--late" not in sys.argv:
            self.Number()

    @dbus.service.signal(NOTIFICATIONS, signature="uu")
    def NotificationClosed(self, number, reason):
        pass

    @dbus.service.method(NOTIFICATIONS, in_signature="u")
    def CloseNotification(self, number):
        say("taken back", number)

    @dbus.service.method("test.User")
    def Close(self):
        self.NotificationClosed(self.number, 2)

    @dbus.service.method("test.User")
    def Number(self):
        self.answer(dbus.UInt32(self.number))


if __name__ == "__main__":
    serve(Portal, *([] if "--sandboxed" in sys.argv else [Notifications]))
