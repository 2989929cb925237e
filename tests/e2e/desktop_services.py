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

import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

PORTAL = "org.freedesktop.portal.Desktop"
REQUEST = "org.freedesktop.portal.Request"
NOTIFICATIONS = "org.freedesktop.Notifications"


def say(*words):
    print(*words, flush=True)


class Request(dbus.service.Object):
    @dbus.service.signal(REQUEST, signature="ua{sv}")
    def Response(self, response, results):
        pass

    @dbus.service.method(REQUEST)
    def Close(self):
        self.remove_from_connection()
        say("closed")


class Chooser(dbus.service.Object):
    """Asked by programs through the portal, and answered by the user."""
    silent = False
    request = None

    @dbus.service.method("org.freedesktop.portal.FileChooser", in_signature="ssa{sv}", out_signature="o",
                         sender_keyword="sender", async_callbacks=("answer", "refuse"))
    def OpenFile(self, window, title, options, answer, refuse, sender):
        folder = bytes(options["current_folder"]).rstrip(b"\0").decode()
        assert options["directory"] and options["modal"]
        path = f"/org/freedesktop/portal/desktop/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
        self.request = Request(self.connection, path)
        say("chooser", window or "none", folder, title)
        if not self.silent:
            answer(dbus.ObjectPath(path))

    @dbus.service.method("test.User", in_signature="us")
    def Answer(self, response, address):
        results = {"uris": dbus.Array([address], signature="s")} if address else {}
        self.request.Response(dbus.UInt32(response), dbus.Dictionary(results, signature="sv"))
        self.request.remove_from_connection()


class Notifications(dbus.service.Object):
    number = 0

    @dbus.service.method(NOTIFICATIONS, in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, program, replaced, icon, summary, body, actions, hints, timeout):
        self.number = replaced or self.number + 1
        say("notice", self.number, replaced, summary + body)
        return dbus.UInt32(self.number)

    @dbus.service.method(NOTIFICATIONS, in_signature="u")
    def CloseNotification(self, number):
        say("taken back", number)


def main():
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    chooser = Chooser(dbus.service.BusName(PORTAL, bus), "/org/freedesktop/portal/desktop")
    chooser.silent = "--silent" in sys.argv
    _notifications = Notifications(dbus.service.BusName(NOTIFICATIONS, bus), "/org/freedesktop/Notifications")
    say("ready", 2)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
