#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stands in for the services of a desktop on the session bus: a file manager and a session manager. Each call is one
line on standard output; the first line says that the services are there. With --no-animations also for the settings of a
user who wants none. Others stand in for more with serve().

    shown URI...         the file manager was asked to show these
    awake COOKIE FLAGS   the session manager was asked to stay awake: 4 is against suspending alone
    asleep COOKIE        that was taken back
"""

import os
import sys
import time

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

PORTAL = "org.freedesktop.portal."


def say(*words):
    print(*words, flush=True)


def serve(*services):
    """SERVICES are classes with the name and the path under which the bus has one of each. Until the process is ended."""
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    served = [service(dbus.service.BusName(service.name, bus), service.path) for service in services]
    say("ready", len(served))
    GLib.MainLoop().run()


class FileManager(dbus.service.Object):
    name, path = "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1"

    @dbus.service.method(name, in_signature="ass")
    def ShowItems(self, uris, startup_id):
        say("shown", *uris)


class SessionManager(dbus.service.Object):
    name, path = "org.gnome.SessionManager", "/org/gnome/SessionManager"
    cookie = 0

    @dbus.service.method(name, in_signature="susu", out_signature="u")
    def Inhibit(self, application, window, reason, flags):
        self.cookie += 1
        say("awake", self.cookie, flags)
        return dbus.UInt32(self.cookie)

    @dbus.service.method(name, in_signature="u")
    def Uninhibit(self, cookie):
        say("asleep", cookie)


class Request(dbus.service.Object):
    """What SENDER has asked of the portal, until it is answered or closed. CLOSED is said then."""

    def __init__(self, bus, sender, options, closed="closed"):
        token = options.get("handle_token", f"unnamed_{time.monotonic_ns()}")
        self.path = dbus.ObjectPath(f"{Portal.path}/request/{sender[1:].replace('.', '_')}/{token}")
        super().__init__(bus, self.path)
        self.closed = closed

    @dbus.service.signal(PORTAL + "Request", signature="ua{sv}")
    def Response(self, response, results):
        pass

    @dbus.service.method(PORTAL + "Request")
    def Close(self):
        self.remove_from_connection()
        say(self.closed)

    def answer(self, response=0, uris=()):
        results = {"uris": dbus.Array(uris, signature="s")} if uris else {}
        self.Response(dbus.UInt32(response), dbus.Dictionary(results, signature="sv"))
        self.remove_from_connection()


class Portal(dbus.service.Object):
    """Says `revealed FILE`, `awake FLAGS` and `asleep`, `portal notice NAME TEXT` and `portal taken back NAME`. Who needs a
    chooser of folders, adds one."""
    name, path = PORTAL + "Desktop", "/org/freedesktop/portal/desktop"

    @dbus.service.method(PORTAL + "OpenURI", in_signature="sha{sv}", out_signature="o", sender_keyword="sender")
    def OpenDirectory(self, window, descriptor, options, sender):
        descriptor = descriptor.take()
        file = os.readlink(f"/proc/self/fd/{descriptor}")
        os.close(descriptor)
        request = Request(self.connection, sender, options)
        GLib.idle_add(lambda: request.answer() or say("revealed", file))  # when its caller knows of it
        return request.path

    @dbus.service.method(PORTAL + "Inhibit", in_signature="sua{sv}", out_signature="o", sender_keyword="sender")
    def Inhibit(self, window, flags, options, sender):
        say("awake", flags)
        return Request(self.connection, sender, options, "asleep").path

    @dbus.service.method(PORTAL + "Notification", in_signature="sa{sv}")
    def AddNotification(self, name, notification):
        say("portal notice", name, notification["title"])

    @dbus.service.method(PORTAL + "Notification", in_signature="s")
    def RemoveNotification(self, name):
        say("portal taken back", name)


class Settings(dbus.service.Object):
    name, path = Portal.name, Portal.path

    @dbus.service.method(PORTAL + "Settings", in_signature="as", out_signature="a{sa{sv}}")
    def ReadAll(self, groups):
        group = dbus.Dictionary({"enable-animations": False, "font-name": "Sans 10"}, signature="sv")
        return dbus.Dictionary({"org.gnome.desktop.interface": group}, signature="sa{sv}")


if __name__ == "__main__":
    serve(FileManager, SessionManager, *([Settings] if "--no-animations" in sys.argv else []))
