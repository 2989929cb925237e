#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Pictures of both cards of the real program in many fonts, sizes, scales and languages, side by side on one sheet:

    contact_sheet.py BINARY FOLDER [--fonts Inter "DejaVu Sans"] [--sizes 8 10 12 14 16 20 24] [--scales 1 2 3]
                     [--languages C de ar] [--ground light] [--mirrored] [--high-contrast] [--path NAME]

A font that is not installed is refused, so that no sheet shows another one in its place. With --path the working folder
is one of that name, else none is chosen yet.
"""

import argparse
import itertools
import os
import subprocess
import sys

from desk import Desk, Failure

CARD = (460, 392)
MARGIN = 12


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("binary")
    parser.add_argument("folder")
    parser.add_argument("--fonts", nargs="+", default=["DejaVu Sans", "Inter", "Cantarell", "Noto Sans"])
    parser.add_argument("--sizes", nargs="+", type=float, default=[8, 10, 12, 14, 16, 20, 24])
    parser.add_argument("--scales", nargs="+", type=float, default=[1])
    parser.add_argument("--languages", nargs="+", default=["C"])
    parser.add_argument("--ground", choices=("light", "dark"), default="light")
    parser.add_argument("--mirrored", action="store_true")
    parser.add_argument("--high-contrast", action="store_true")
    parser.add_argument("--path")
    return parser.parse_args()


def installed(font):
    return font in subprocess.run(["fc-list", ":", "family"], capture_output=True, text=True).stdout


def both_cards(desk, folder, name):
    pictures = []
    for card in ("main", "preferences"):
        if card == "preferences":
            desk.open_preferences()
        pictures.append(desk.picture(os.path.join(folder, f"{name}-{card}.png"), MARGIN))
    return pictures


def sheet(pictures, path, columns):
    # Large ones smaller: a sheet of them is more than ImageMagick takes, and they are in the folder as they are.
    sized = [f"{picture}[1000x1000>]" for picture in pictures]
    subprocess.run(["montage", *sized, "-tile", f"{columns}x", "-geometry", "+4+4", "-background", "#808080", path],
                   check=True)


def main():
    options = arguments()
    missing = [font for font in options.fonts if not installed(font)]
    if missing:
        sys.exit(f"not installed: {', '.join(missing)}")
    os.makedirs(options.folder, exist_ok=True)
    largest = max(options.scales) * min(2, max(options.sizes) / 10)
    screen = [int((side + 200) * largest) for side in CARD]
    with Desk(options.binary, screen, options.ground) as desk:
        if options.path:
            desk.choose_folder(options.path)
        for scale in options.scales:
            pictures = []
            for font, language, size in itertools.product(options.fonts, options.languages, options.sizes):
                with desk.program(font, size, scale, options.mirrored, options.high_contrast, language):
                    name = f"{font}-{language}-{size:g}-{scale:g}x".replace(" ", "")
                    pictures += both_cards(desk, options.folder, name)
            path = os.path.join(options.folder, f"sheet-{scale:g}x.png")
            sheet(pictures, path, 2 * min(3, len(options.sizes)))
            print(path)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"The sheet failed: {failure}")
