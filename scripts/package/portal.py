#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stands in for the portal on the session bus of a program in a sandbox: portal.py FOLDER. Each call is one line on standard
output; the first line says that it is there. Whoever asks for a folder gets FOLDER at once.

    ready
    chooser TITLE     a folder was asked for
    directory FILE    a file was to be shown in its folder
    awake FLAGS       the computer was to stay awake: 4 is against suspending alone
    asleep            that was taken back
    notice TEXT       a notification was asked for
    taken back        it was to go

The end-to-end tests build other portals of Request and serve().
"""

import os
import sys
import time

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

PORTAL = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
REQUEST = "org.freedesktop.portal.Request"


def say(*words):
    print(*words, flush=True)


class Request(dbus.service.Object):
    """What SENDER has asked of the portal, until it is answered or closed. CLOSED is said then."""

    def __init__(self, bus, sender, options, closed="closed"):
        token = options.get("handle_token", f"unnamed_{time.monotonic_ns()}")
        self.path = dbus.ObjectPath(f"{PATH}/request/{sender[1:].replace('.', '_')}/{token}")
        super().__init__(bus, self.path)
        self.closed = closed

    @dbus.service.signal(REQUEST, signature="ua{sv}")
    def Response(self, response, results):
        pass

    @dbus.service.method(REQUEST)
    def Close(self):
        self.remove_from_connection()
        say(self.closed)

    def answer(self, response=0, uris=()):
        results = {"uris": dbus.Array(uris, signature="s")} if uris else {}
        self.Response(dbus.UInt32(response), dbus.Dictionary(results, signature="sv"))
        self.remove_from_connection()


def serve(*services):
    """SERVICES are classes with the name and the path under which the bus has one of each. Until the process is ended."""
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    served = [service(dbus.service.BusName(service.name, bus), service.path) for service in services]
    say("ready", len(served))
    GLib.MainLoop().run()


class Portal(dbus.service.Object):
    name, path = PORTAL, PATH

    def answered(self, sender, options, uris=()):
        """A request that is answered when its caller knows of it."""
        request = Request(self.connection, sender, options)
        GLib.idle_add(request.answer, 0, uris)
        return request.path

    @dbus.service.method("org.freedesktop.portal.FileChooser", in_signature="ssa{sv}", out_signature="o",
                         sender_keyword="sender")
    def OpenFile(self, window, title, options, sender):
        assert options["directory"]
        say("chooser", title)
        return self.answered(sender, options, ["file://" + sys.argv[1]])

    @dbus.service.method("org.freedesktop.portal.OpenURI", in_signature="sha{sv}", out_signature="o",
                         sender_keyword="sender")
    def OpenDirectory(self, window, descriptor, options, sender):
        descriptor = descriptor.take()
        say("directory", os.readlink(f"/proc/self/fd/{descriptor}"))
        os.close(descriptor)
        return self.answered(sender, options)

    @dbus.service.method("org.freedesktop.portal.Inhibit", in_signature="sua{sv}", out_signature="o",
                         sender_keyword="sender")
    def Inhibit(self, window, flags, options, sender):
        say("awake", flags)
        return Request(self.connection, sender, options, "asleep").path

    @dbus.service.method("org.freedesktop.portal.Notification", in_signature="sa{sv}")
    def AddNotification(self, identifier, notification):
        say("notice", notification["title"])

    @dbus.service.method("org.freedesktop.portal.Notification", in_signature="s")
    def RemoveNotification(self, identifier):
        say("taken back")


if __name__ == "__main__":
    serve(Portal)
