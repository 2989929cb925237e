# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The controls of one program by its own connection to the accessibility bus, beside other programs that may be frozen:
the library that the tests use asks every program on the desktop in turn, and one thread at a time."""

import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE = "org.a11y.atspi.Accessible"
ACTION = "org.a11y.atspi.Action"
ROLES = {"alert": 2, "check box": 7, "dialog": 16, "label": 29, "button": 43, "radio button": 44, "slider": 51, "text": 61}
SENSITIVE, SHOWING = 24, 25
FIRST_ACTION = GLib.Variant("(i)", (0,))


class Silent(Exception):
    """The program does not answer, or has gone."""


def accessibility_of(session):
    """The accessibility bus of a session bus, given by its address."""
    return connected(connected(session).call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                                  Gio.DBusCallFlags.NONE, 20000, None).unpack()[0])


def connected(address):
    return Gio.DBusConnection.new_for_address_sync(
        address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)


class Panel:
    def __init__(self, bus, pid):
        self.bus, self.pid = bus, pid
        self.name = None
        self.known = {}

    def call(self, name, path, interface, method, arguments=None, deadline=30.0):
        try:
            answer = self.bus.call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                                        int(deadline * 1000), None)
        except GLib.Error as error:
            raise Silent(error.message) from None
        return answer.unpack()

    def bus_call(self, method, arguments=None):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments)[0]

    def appear(self):
        """False when the program is not on the bus yet."""
        for name in self.bus_call("ListNames") if not self.name else ():
            if name.startswith(":"):
                try:
                    if self.bus_call("GetConnectionUnixProcessID", GLib.Variant("(s)", (name,))) == self.pid:
                        self.name = name
                except Silent:  # it has just left
                    pass
        return self.name

    def ask(self, path, method, deadline=30.0, interface=ACCESSIBLE, arguments=None):
        return self.call(self.name, path, interface, method, arguments, deadline)[0]

    def property(self, path, name, deadline=30.0):
        return self.call(self.name, path, "org.freedesktop.DBus.Properties", "Get",
                         GLib.Variant("(ss)", (ACCESSIBLE, name)), deadline)[0]

    def has(self, path, state):
        return bool(self.ask(path, "GetState")[0] >> state & 1)

    def walk(self, path=ROOT):
        for _, child in self.ask(path, "GetChildren"):
            if not child.endswith("/null"):  # of a list without rows
                yield child
                yield from self.walk(child)

    def find(self, role, key, deadline=20.0):
        """The path of the showing control with that role and that name or description; None at the deadline."""
        end = time.monotonic() + deadline
        while True:
            path = self.known.get((role, key)) or self._search(role, key)
            try:
                if path and self.has(path, SHOWING):
                    self.known[role, key] = path
                    return path
            except Silent:
                self.known.pop((role, key), None)
            if time.monotonic() > end:
                return None
            time.sleep(0.05)

    def _search(self, role, key):
        try:
            for path in self.walk() if self.appear() else ():
                if self.ask(path, "GetRole") == ROLES[role] and key in (self.property(path, "Name"),
                                                                        self.property(path, "Description")):
                    return path
        except Silent:  # a control that went while it was looked at
            pass
        return None

    def text(self, description, deadline=30.0):
        path = self.find("label", description)
        return self.property(path, "Name", deadline) if path else None

    def enabled(self, name, role="button"):
        path = self.find(role, name)
        return bool(path) and self.has(path, SENSITIVE)

    def usable(self, name, role="button"):
        """Waits until the control can be used."""
        path = self.find(role, name)
        end = time.monotonic() + 20
        while not path or not self.has(path, SENSITIVE):
            if time.monotonic() > end:
                raise Silent(f"{name} cannot be pressed")
            time.sleep(0.02)
            path = self.find(role, name)
        return path

    def press(self, name, role="button", deadline=90.0):
        """The program acts about a tenth of a second after this."""
        self.ask(self.usable(name, role), "DoAction", deadline, ACTION, FIRST_ACTION)

    def alerts(self, deadline=30.0):
        """The texts of the messages that are open: [(path of the OK button, text)]."""
        found = []
        for _, top in self.ask(ROOT, "GetChildren", deadline):
            if self.ask(top, "GetRole") in (ROLES["alert"], ROLES["dialog"]) and self.has(top, SHOWING):
                paths = list(self.walk(top))
                texts = [self.property(p, "Name") for p in paths if self.ask(p, "GetRole") == ROLES["label"]]
                # A folder chooser has no such button.
                ok = next((p for p in paths if self.property(p, "Name").replace("&", "") == "OK"), None)
                if ok:
                    found.append((ok, " ".join(texts)))
        return found
