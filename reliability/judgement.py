# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""What of the microphone's sound is in a file, and what is missing."""

import collections
import json
import os
import subprocess
import tempfile

from bench import NOISE, TOOLS

PERIOD = (1 << 20) / 8000
"""Seconds until the microphone's sound begins again."""
ON_ITS_WAY = 0.015
"""Seconds of sound that are on their way from the microphone to the program."""
HELD_BACK = 0.075
"""Seconds that the encoder itself keeps, and that are written when a take ends; at a variable bitrate it is more."""
RESOLUTION = 0.04
"""Seconds: shorter holes between two pieces of sound are the measurement's own."""

Judgement = collections.namedtuple("Judgement", "lost where foreign length")
"""Seconds of wanted sound that are nowhere in the file; the missing pieces; seconds in the file that nobody wanted or
that are there twice; seconds that the file lasts."""


def pieces_of(path):
    answer = subprocess.run([os.path.join(TOOLS, "heard"), path], stdout=subprocess.PIPE, check=True)
    return json.loads(answer.stdout)


def unwrapped(pieces, begin):
    """The pieces in the microphone's own time; it begins its sound again every two minutes."""
    result, last = [], begin - 2
    for in_file, in_sound, length in pieces:
        rounds = (last - in_sound) // PERIOD + 1 if last > in_sound else 0
        place = in_sound + rounds * PERIOD
        if place - last > PERIOD - 4:  # a little back rather than nearly a round ahead
            place -= PERIOD
        result.append((in_file, place, length))
        last = place + length - 2
    return result


def held_back(settings):
    """Seconds that the encoder itself keeps with these settings of the microphone's sound, at most."""
    with tempfile.TemporaryDirectory() as folder:
        answer = subprocess.run([os.path.join(TOOLS, "held_back"), NOISE, os.path.join(folder, "take.mp3"),
                                 *(f"{name}={value}" for name, value in settings.items())],
                                stdout=subprocess.PIPE, check=True, timeout=60)
    return float(answer.stdout)


def judge(path, wanted, away=(), held=HELD_BACK):
    """Compares a file with the spans of sound that were to be in it; spans in which there was none are forgiven, and the
    last moment, which the encoder holds."""
    heard = pieces_of(path)
    pieces = unwrapped(heard["pieces"], wanted[0][0])
    spans = [(begin, end - held - ON_ITS_WAY) for begin, end in wanted]
    gaps, foreign, reached = [], 0.0, 0.0
    covered = sorted((place, place + length) for _, place, length in pieces)
    for begin, end in spans:
        at = begin
        for low, high in covered:
            if low > at:
                gaps += pieces_without(at, min(low, end), away)
            at = max(at, high)
            if at >= end:
                break
        gaps += pieces_without(at, end, away)
    for low, high in covered:
        foreign += max(0.0, min(high, reached) - low) if reached - low > RESOLUTION else 0.0
        reached = max(reached, high)
    gaps = [(a, b) for a, b in gaps if b - a > RESOLUTION]
    return Judgement(sum(b - a for a, b in gaps), gaps, foreign, heard["seconds"])


def pieces_without(begin, end, away):
    spans = [(begin, end)] if end > begin else []
    for low, high in away:
        spans = [piece for a, b in spans for piece in ((a, min(b, low)), (max(a, high), b)) if piece[1] > piece[0]]
    return spans
