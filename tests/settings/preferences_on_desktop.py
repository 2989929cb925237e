#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The preferences of the real program on a whole desktop."""

import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
from recorder_test import RecorderTest, main, wait_until  # noqa: E402


class Preferences(RecorderTest):
    def open(self):
        recorder = self.start()
        recorder.press("Preferences")
        recorder.wait_for_side("Done")
        return recorder

    def reads(self, recorder, **texts):
        for key, text in texts.items():
            label = key.replace("_", " ")
            wait_until(lambda: recorder.text(label) == text, f"{label} to read {text!r}")

    def choose_from_menu(self, recorder, box, *keys, title):
        self.desktop.key(keys[0])
        wait_until(lambda: recorder.windows() == 2, "the menu")
        for key in keys[1:]:
            self.desktop.key(key)
        wait_until(lambda: recorder.button(box).description == title, f"{box} to be {title}")

    def tab_reaches(self, recorder, *stops):
        for stop in stops:
            wait_until(lambda: stop in [control.text for control in recorder.program.find_all(None) if control.focused],
                       f"{stop} to have the focus")
            self.desktop.key("Tab")

    def test_the_folder_is_kept_and_the_encoder_forgotten(self):
        folder = os.path.join(self.home, "100%20 ok")
        os.mkdir(folder)
        recorder = self.open()
        self.tab_reaches(recorder, "Quality target", "Quality", "Engine quality", "VBR mode", "Choose folder")
        recorder.wait_for("slider", "Quality").set_value(2.5)
        self.reads(recorder, Quality_value="2.5", Recording_estimate="About 82 MB an hour.")
        self.choose_from_menu(recorder, "Engine quality", "alt+e", "Down", "Return", title="high")
        self.choose_from_menu(recorder, "VBR mode", "alt+v", "Down", "Down", "Return", title="fast")
        self.desktop.key("alt+b")
        self.tab_reaches(recorder, "Bitrate target", "Bitrate", "Restrict encoder to constant bitrate",
                         "Engine quality", "Choose folder",
                         "Show each recording in the file manager", "Done", "Bitrate target")
        recorder.wait_for("label", "Bitrate")
        recorder.wait_for("slider", "Bitrate").set_value(100)
        self.desktop.key("alt+r")
        self.reads(recorder, Bitrate_value="100kbps", Recording_estimate="A recording sets the bitrate to 320kbps when it starts: 144 MB an hour.")
        self.desktop.key("Escape")
        recorder.wait_for_side("Preferences")
        recorder.turn_over("Preferences", "Done")
        self.desktop.key("alt+q")
        self.reads(recorder, Quality_value="2.5", Recording_estimate="About 82 MB an hour.")

        self.desktop.key("alt+s")
        self.desktop.key("alt+c")
        recorder.wait_for("text", "Directory:")
        self.desktop.xdotool("type", "--delay", "5", folder)
        recorder.press("Cancel")
        recorder.program.wait_gone("text", "Directory:")
        self.reads(recorder, Working_folder="Please select a location to save the recording")
        self.assertFalse(os.path.exists(os.path.join(self.home, ".config", "flipside")))
        recorder.press("Choose folder")
        recorder.choose_folder(folder)
        self.reads(recorder, Working_folder=folder)
        self.desktop.key("alt+s")
        # Of the two requests only this one had something to show.
        self.stand_ins.expect("shown file://.*/100%2520%20ok")
        recorder.wait_for("check box", "Show each recording in the file manager").press()
        settings = os.path.join(self.home, ".config", "flipside", "flipside.conf")
        wait_until(lambda: "showInFinderWhenFinishRecording=false" in open(settings).read(), "the switch to be kept")
        recorder.turn_over("Done", "Preferences")
        recorder.end()
        self.reads(self.open(), Working_folder=folder, Quality_value="5.0", Bitrate_value="128kbps")


if __name__ == "__main__":
    main()
