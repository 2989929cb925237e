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
"""

import os
import sys

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
    closed = None

    @dbus.service.signal(REQUEST, signature="ua{sv}")
    def Response(self, response, results):
        pass

    @dbus.service.method(REQUEST)
    def Close(self):
        say(self.closed or "closed")
        self.remove_from_connection()


class Portal(dbus.service.Object):
    requests = 0

    def request(self, sender, options, results=None):
        """A request of this program, answered when its caller knows of it."""
        self.requests += 1
        token = options.get("handle_token", f"request{self.requests}")
        request = Request(self.connection, f"{PATH}/request/{sender[1:].replace('.', '_')}/{token}")
        if results is not None:
            GLib.idle_add(request.Response, dbus.UInt32(0), dbus.Dictionary(results, signature="sv"))
        return request

    @dbus.service.method("org.freedesktop.portal.FileChooser", in_signature="ssa{sv}", out_signature="o",
                         sender_keyword="sender")
    def OpenFile(self, window, title, options, sender):
        assert options["directory"]
        say("chooser", title)
        uris = dbus.Array(["file://" + sys.argv[1]], signature="s")
        return dbus.ObjectPath(self.request(sender, options, {"uris": uris}).__dbus_object_path__)

    @dbus.service.method("org.freedesktop.portal.OpenURI", in_signature="sha{sv}", out_signature="o",
                         sender_keyword="sender")
    def OpenDirectory(self, window, descriptor, options, sender):
        descriptor = descriptor.take()
        say("directory", os.readlink(f"/proc/self/fd/{descriptor}"))
        os.close(descriptor)
        return dbus.ObjectPath(self.request(sender, options, {}).__dbus_object_path__)

    @dbus.service.method("org.freedesktop.portal.Inhibit", in_signature="sua{sv}", out_signature="o",
                         sender_keyword="sender")
    def Inhibit(self, window, flags, options, sender):
        say("awake", flags)
        request = self.request(sender, options)
        request.closed = "asleep"
        return dbus.ObjectPath(request.__dbus_object_path__)


DBusGMainLoop(set_as_default=True)
portal = Portal(dbus.service.BusName(PORTAL, dbus.SessionBus()), PATH)
say("ready")
GLib.MainLoop().run()
