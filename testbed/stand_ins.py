#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stands in for the services of a desktop on the session bus: a file manager and a session manager. Each call is one
line on standard output; the first line says that the services are there.

    shown URI...    the file manager was asked to show these
    awake COOKIE    the session manager was asked to stay awake
    asleep COOKIE   that was taken back
"""

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib


def say(*words):
    print(*words, flush=True)


class FileManager(dbus.service.Object):
    @dbus.service.method("org.freedesktop.FileManager1", in_signature="ass")
    def ShowItems(self, uris, startup_id):
        say("shown", *uris)


class SessionManager(dbus.service.Object):
    cookie = 0

    @dbus.service.method("org.gnome.SessionManager", in_signature="susu", out_signature="u")
    def Inhibit(self, application, window, reason, flags):
        self.cookie += 1
        say("awake", self.cookie)
        return dbus.UInt32(self.cookie)

    @dbus.service.method("org.gnome.SessionManager", in_signature="u")
    def Uninhibit(self, cookie):
        say("asleep", cookie)


def main():
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    services = [FileManager(dbus.service.BusName("org.freedesktop.FileManager1", bus), "/org/freedesktop/FileManager1"),
                SessionManager(dbus.service.BusName("org.gnome.SessionManager", bus), "/org/gnome/SessionManager")]
    say("ready", len(services))
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
