#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stands in for the services of a desktop on the session bus: a file manager and a session manager. Each call is one
line on standard output; the first line says that the services are there. With --no-animations also for the settings of a
user who wants none.

    shown URI...    the file manager was asked to show these
    awake COOKIE    the session manager was asked to stay awake
    asleep COOKIE   that was taken back
"""

import sys

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


class Settings(dbus.service.Object):
    @dbus.service.method("org.freedesktop.portal.Settings", in_signature="as", out_signature="a{sa{sv}}")
    def ReadAll(self, groups):
        group = dbus.Dictionary({"enable-animations": False, "font-name": "Sans 10"}, signature="sv")
        return dbus.Dictionary({"org.gnome.desktop.interface": group}, signature="sa{sv}")


def main():
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    services = [FileManager(dbus.service.BusName("org.freedesktop.FileManager1", bus), "/org/freedesktop/FileManager1"),
                SessionManager(dbus.service.BusName("org.gnome.SessionManager", bus), "/org/gnome/SessionManager")]
    if "--no-animations" in sys.argv:
        services.append(Settings(dbus.service.BusName("org.freedesktop.portal.Desktop", bus),
                                 "/org/freedesktop/portal/desktop"))
    say("ready", len(services))
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
