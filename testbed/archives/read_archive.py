#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Prints what a keyed archive says about its root object, with the types of its values."""

import plistlib
import sys

with open(sys.argv[1], "rb") as file:
    archive = plistlib.load(file, fmt=plistlib.FMT_BINARY)
objects = archive["$objects"]
assert objects[0] == "$null"
(key, root), = archive["$top"].items()
values = dict(objects[root.data])
described = objects[values.pop("$class").data]
assert described["$classname"] == described["$classes"][0]
print(archive["$version"], archive["$archiver"], key, ",".join(described["$classes"]))
for name, value in values.items():
    print(name, type(value).__name__, value)
