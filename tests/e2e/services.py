#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stand in for services that a desktop may have or lack, on the session bus: those that are named on the command line.
Each call is one line on standard output; the first line says that they are there.

    card        activated TOKEN; to a command it gives no answer, but to the first one that of a bus without a card
    portal      revealed NAME, awake FLAGS, released
    session     awake FLAGS
    system      awake WHAT MODE, released (when the descriptor has been closed)
"""

import os
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

CARD = "io.github.flipside_recorder.Flipside"


def say(*words):
    print(*words, flush=True)


class Portal(dbus.service.Object):
    @dbus.service.method("org.freedesktop.portal.OpenURI", in_signature="sha{sv}", out_signature="o",
                         sender_keyword="sender")
    def OpenDirectory(self, window, handle, options, sender):
        descriptor = handle.take()
        say("revealed", os.path.basename(os.readlink(f"/proc/self/fd/{descriptor}")))
        os.close(descriptor)
        request = self.request(sender, options)
        GLib.idle_add(request.Response, 0, dbus.Dictionary(signature="sv"))
        return request

    @dbus.service.method("org.freedesktop.portal.Inhibit", in_signature="sua{sv}", out_signature="o",
                         sender_keyword="sender")
    def Inhibit(self, window, flags, options, sender):
        say("awake", flags)
        return self.request(sender, options)

    def request(self, sender, options):
        sender = sender[1:].replace(".", "_")
        return Request(self.connection, f"/org/freedesktop/portal/desktop/request/{sender}/{options['handle_token']}")


class Request(dbus.service.Object):
    @dbus.service.method("org.freedesktop.portal.Request")
    def Close(self):
        say("released")

    @dbus.service.signal("org.freedesktop.portal.Request", signature="ua{sv}")
    def Response(self, response, results):
        pass


class Card(dbus.service.Object):
    asked = False

    @dbus.service.method("org.freedesktop.Application", in_signature="a{sv}")
    def Activate(self, platform_data):
        say("activated", platform_data["activation-token"])

    @dbus.service.method(CARD + ".Recorder", in_signature="s", async_callbacks=("_answer", "refuse"))
    def Run(self, command, _answer, refuse):
        if not self.asked:
            refuse(dbus.DBusException(name="org.freedesktop.DBus.Error.NameHasNoOwner"))
        self.asked = True


class Session(dbus.service.Object):
    @dbus.service.method("org.gnome.SessionManager", in_signature="susu", out_signature="u")
    def Inhibit(self, application, window, reason, flags):
        say("awake", flags)
        return dbus.UInt32(1)


class System(dbus.service.Object):
    @dbus.service.method("org.freedesktop.login1.Manager", in_signature="ssss", out_signature="h")
    def Inhibit(self, what, who, why, mode):
        say("awake", what, mode)
        kept, given = os.pipe()
        GLib.io_add_watch(kept, GLib.IO_HUP, lambda *_: say("released"))
        handle = dbus.types.UnixFd(given)
        os.close(given)
        return handle


def main():
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    named = {"portal": ("org.freedesktop.portal.Desktop", Portal, "/org/freedesktop/portal/desktop"),
             "card": (CARD, Card, "/" + CARD.replace(".", "/")),
             "session": ("org.gnome.SessionManager", Session, "/org/gnome/SessionManager"),
             "system": ("org.freedesktop.login1", System, "/org/freedesktop/login1")}
    _services = [kind(dbus.service.BusName(name, bus), path) for name, kind, path in map(named.get, sys.argv[1:])]
    say("ready")
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
