#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""A desktop's settings service on the session bus, for a desktop whose user wants no animations. Prints "ready"."""

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)


class Settings(dbus.service.Object):
    @dbus.service.method("org.freedesktop.portal.Settings", in_signature="as", out_signature="a{sa{sv}}")
    def ReadAll(self, groups):
        assert "org.gnome.desktop.interface" in groups
        group = dbus.Dictionary({"enable-animations": False, "font-name": "Sans 10"}, signature="sv")
        return dbus.Dictionary({"org.gnome.desktop.interface": group}, signature="sa{sv}")


bus = dbus.SessionBus()
name = dbus.service.BusName("org.freedesktop.portal.Desktop", bus)
settings = Settings(bus, "/org/freedesktop/portal/desktop")
print("ready", flush=True)
GLib.MainLoop().run()
