#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""encoder_instructions.py BUILD_DIR: instructions of KTMp3Lame beside a bare loop over libmp3lame, as a table.

Both make the same encoder calls on the same PCM and write the same file; valgrind counts them, so that the figures
do not depend on what else the machine does.
"""

import os
import re
import subprocess
import sys


def instructions(program, who, entry):
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", "--collect-atstart=no",
               "--toggle-collect=measured", program, who, entry]
    done = subprocess.run(command, stderr=subprocess.PIPE, text=True, check=True, timeout=600)
    return int(re.search(r"Collected : (\d+)", done.stderr).group(1))


def main():
    program = os.path.join(sys.argv[1], "benchmarks", "encoder_instructions")
    print("| samples | bare loop, instructions | KTMp3Lame, instructions | ratio |")
    print("|---|---|---|---|")
    for entry in ("float", "short", "int", "long", "double"):
        bare = instructions(program, "bare", entry)
        writer = instructions(program, "writer", entry)
        print(f"| {entry} | {bare:,} | {writer:,} | {writer / bare:.5f} |", flush=True)


if __name__ == "__main__":
    main()
