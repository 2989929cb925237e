#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Stands in for the portal on the session bus of a program in a sandbox: portal.py FOLDER. Says what any portal of the
stand-ins says, and `chooser TITLE` when a folder was asked for. Whoever asks gets FOLDER at once.
"""

import os
import sys

import dbus.service

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "testbed"))
from stand_ins import PORTAL, GLib, Portal, Request, say, serve  # noqa: E402


class Chooser(Portal):
    @dbus.service.method(PORTAL + "FileChooser", in_signature="ssa{sv}", out_signature="o", sender_keyword="sender")
    def OpenFile(self, window, title, options, sender):
        assert options["directory"]
        say("chooser", title)
        request = Request(self.connection, sender, options)
        GLib.idle_add(request.answer, 0, ["file://" + sys.argv[1]])  # when its caller knows of it
        return request.path


if __name__ == "__main__":
    serve(Chooser)
