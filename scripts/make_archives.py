#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Writes the keyed archives that the tests read into testbed/archives, by a writer that is not ours."""

import argparse
import os
import plistlib
import struct
import sys
from plistlib import UID

argparse.ArgumentParser(description=__doc__).parse_args()
os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "testbed", "archives"))

VALUES = {
    "encoderTarget": 0,
    "encoderEngineQuality": 2,
    "vbrMode": 1,
    "bitrate": 192,
    "encodeQuality": 2.71828,
    "isCBR": True,
    "numberOfChannel": 1,
    "lameMode": 0,
    "sampleRate": 44099,
}


def archive(values, class_name="KTMp3LameConfig", **replaced):
    # The class comes before the object that refers to it, and something unrelated before both: a reader has to
    # follow the references.
    archived = {
        "$version": 100000,
        "$archiver": "NSKeyedArchiver",
        "$top": {"root": UID(3)},
        "$objects": [
            "$null",
            {"$classname": class_name, "$classes": [class_name, "NSObject"]},
            "unrelated",
            {**values, "$class": UID(1)},
        ],
    }
    return {**archived, **replaced}


def write(name, value, form=plistlib.FMT_BINARY):
    with open(name, "wb") as file:
        plistlib.dump(value, file, fmt=form, sort_keys=False)


write("complete.plist", archive(VALUES))
# Python's XML writer refuses references; in XML they are dictionaries with this key.
xml = archive({**VALUES})
xml["$top"]["root"] = {"CF$UID": 3}
xml["$objects"][3]["$class"] = {"CF$UID": 1}
write("complete.xml", xml, plistlib.FMT_XML)
write("empty.plist", archive({}))
write("wrong_types.plist", archive({
    "encoderTarget": "1", "encoderEngineQuality": True, "vbrMode": 2**40, "bitrate": b"\x01",
    "encodeQuality": UID(1), "isCBR": "YES", "numberOfChannel": [2], "lameMode": {}, "sampleRate": 48000.0,
}))
write("not_a_number.plist", archive({**VALUES, "encodeQuality": float("nan")}))
write("other_class.plist", archive(VALUES, "NSColor"))
write("other_archiver.plist", archive(VALUES, **{"$archiver": "NSArchiver"}))
write("other_version.plist", archive(VALUES, **{"$version": 1}))
write("reference_beyond.plist", archive(VALUES, **{"$top": {"root": UID(4)}}))
write("huge_reference.plist", archive(VALUES, **{"$top": {"root": UID(2**32)}}))
write("root_is_class.plist", archive(VALUES, **{"$top": {"root": UID(1)}}))
write("own_class.plist", archive(VALUES, **{"$objects": ["$null", 0, 0, {**VALUES, "$class": UID(3)}]}))
write("no_objects.plist", archive(VALUES, **{"$objects": "none"}))
write("no_root.plist", archive(VALUES, **{"$top": {}}))
write("plain.plist", VALUES)
# What no writer makes: deeper than a reader's stack, wider than any memory, and a count that the file cannot hold.
sys.setrecursionlimit(10000)
deep, wide = [1], [1]
for _ in range(3000):
    deep = [deep]
for _ in range(12):
    wide = [wide] * 14
write("deep.plist", deep)
write("wide.plist", wide)
for name, kind in (("dictionary", b"\xdf"), ("array", b"\xaf"), ("text", b"\x5f")):
    with open(f"huge_{name}.plist", "wb") as file:
        file.write(b"bplist00" + kind + b"\x12\x7f\xff\xff\xff" + b"\x08" + struct.pack(">6xBB3Q", 1, 1, 1, 0, 14))
