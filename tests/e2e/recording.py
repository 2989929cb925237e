#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""From the first start to the last second of a recording."""

import datetime
import os
import re
import signal
import sys
import time
import zoneinfo

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
from recorder_test import MICROPHONE, OR_MISSED, RecorderTest, decoded_seconds, main, wait_until  # noqa: E402


class Recording(RecorderTest):
    def test_first_start_asks_for_a_folder_and_takes_no_for_an_answer(self):
        recorder = self.start()
        self.assertEqual(recorder.status, "Ready")
        self.assertEqual(recorder.elapsed, 0)
        for name in ("Pause", "Stop", "Play"):
            self.assertFalse(recorder.button(name).enabled)

        recorder.click("Record")
        recorder.wait_for("text", "Directory:")
        self.desktop.key("Escape")
        recorder.program.wait_gone("text", "Directory:")
        self.assertEqual(recorder.status, "Ready")
        self.assertEqual(self.recordings(), [])
        recorder.record()

        # The folder is remembered.
        recorder.press("Stop")
        recorder.end()
        again = self.start()
        again.click("Record")
        again.wait_status("Recording from .*")

    def test_a_file_is_named_after_the_local_time_whatever_the_language(self):
        recorder = self.start(TZ="Asia/Kolkata", LC_ALL="fa_IR.UTF-8")
        before = datetime.datetime.now(zoneinfo.ZoneInfo("Asia/Kolkata"))
        recorder.record()
        self.assertEqual(recorder.output_file, self.one_recording())
        name = os.path.basename(self.one_recording())
        self.assertRegex(name, r"^[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}h[0-9]{2}m[0-9]{2}s\.mp3$")
        started = datetime.datetime.strptime(name, "%Y-%m-%d %Hh%Mm%Ss.mp3").replace(tzinfo=before.tzinfo)
        self.assertLess(abs(started - before), datetime.timedelta(seconds=30))

    def test_the_settings_of_the_encoder_apply_to_the_next_recording(self):
        recorder = self.start()
        recorder.turn_over("Preferences", "Done")
        recorder.wait_for("radio button", "Bitrate target").press()
        recorder.wait_for("check box", "Restrict encoder to constant bitrate").press()
        recorder.turn_over("Done", "Preferences")
        recorder.record()
        recorder.wait_elapsed(2)
        recorder.press("Stop")
        wait_until(lambda: recorder.button("Record").enabled, "the end of the take")
        # 320 kilobits, where the encoder left to itself takes less than half of that for a tone.
        size = os.path.getsize(self.one_recording())
        self.assertAlmostEqual(size / decoded_seconds(self.one_recording()), 40000, delta=400)

    def test_a_paused_recording_is_as_long_as_it_says(self):
        recorder = self.start()
        recorder.record()
        self.assertEqual(recorder.status, f"Recording from {MICROPHONE}")
        recorder.wait_elapsed(2)
        recorder.click("Pause")
        recorder.enabled_button("Record")
        shown = recorder.elapsed
        # What is under test: time that is not counted, and in which nothing is missed.
        paused = time.monotonic()
        while time.monotonic() < paused + 3:
            self.assertRegex(recorder.status, "Paused, recording from .*" + OR_MISSED)
        self.assertEqual(recorder.elapsed, shown)
        recorder.click("Record")
        recorder.wait_elapsed(shown + 2)
        recorder.click("Stop")
        recorder.enabled_button("Record")
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), recorder.elapsed, delta=0.15)
        self.stand_ins.expect("awake .*")
        self.stand_ins.expect("asleep .*")
        self.stand_ins.expect("awake .*")
        # The two services are asked side by side.
        asked = {self.stand_ins.lines.get(timeout=5).split()[0] for _ in range(2)}
        self.assertEqual(asked, {"asleep", "shown"})

    def test_stop_while_paused_reveals_the_file(self):
        recorder = self.start()
        recorder.record()
        self.stand_ins.expect("awake .*")
        recorder.wait_elapsed(1)
        self.assertIsNone(recorder.program.find("button", "Show in Folder"))
        recorder.press("Pause")
        self.stand_ins.expect("asleep .*")
        recorder.press("Stop")
        recorder.enabled_button("Record")
        address = re.escape("file://" + self.one_recording().replace(" ", "%20"))
        self.stand_ins.expect("shown " + address)
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), recorder.elapsed, delta=0.15)
        recorder.end()

        # Unless the user has turned that off.
        with open(os.path.join(self.home, ".config", "flipside", "flipside.conf"), "a") as settings:
            settings.write("\nshowInFinderWhenFinishRecording=false\n")
        recorder = self.start()
        recorder.click("Record")
        self.stand_ins.expect("awake .*")
        recorder.press("Stop")
        self.stand_ins.expect("asleep .*")
        recorder.click("Show in Folder")
        self.stand_ins.expect("shown .*" + re.escape(os.path.basename(recorder.output_file).replace(" ", "%20")))
        recorder.wait_for("label", "Output file").click(self.desktop)
        self.desktop.xdotool("mousedown", 1, "mousemove_relative", 9, 9, "mousemove_relative", 9, 9)
        wait_until(lambda: recorder.windows() == 2, "the take to hang on the pointer")
        self.desktop.xdotool("mouseup", 1)
        recorder.end()
        self.stand_ins.expect_nothing()

    def test_closing_quits_and_stops_nothing(self):
        for end in ("close", "terminate", "key"):
            with self.subTest(end=end):
                recorder = self.start()
                if end == "close":
                    recorder.record()
                else:
                    recorder.click("Record")
                    recorder.wait_status("Recording from .*")
                recorder.wait_elapsed(1)
                self.stand_ins.drain()
                shown = recorder.elapsed
                if end == "close":
                    # What opens behind it must not keep a program that has no window.
                    self.click_at_once(recorder, "Close", "Input device")
                elif end == "terminate":
                    os.kill(recorder.program.pid, signal.SIGTERM)
                else:
                    self.desktop.key("ctrl+q")
                self.assertEqual(recorder.program.wait_for_exit(5), 0)
                # A stop would have shown the file.
                self.stand_ins.expect_nothing()
                self.assertGreater(decoded_seconds(self.recordings()[-1]), shown - 0.15)

    def click_at_once(self, recorder, *names):
        """The program finds all the clicks waiting."""
        places = [recorder.enabled_button(name).node.queryComponent().getExtents(0) for name in names]
        os.kill(recorder.program.pid, signal.SIGSTOP)
        for place in places:
            self.desktop.xdotool("mousemove", place.x + place.width // 2, place.y + place.height // 2, "click", 1)
        os.kill(recorder.program.pid, signal.SIGCONT)

    def test_every_command_has_its_key(self):
        recorder = self.start()
        recorder.record()
        recorder.wait_elapsed(4)
        self.stand_ins.drain()
        for keys, usable in (("ctrl+p", "Record"), ("ctrl+r", "Pause"), ("ctrl+period", "Play"), ("ctrl+space", "Pause"),
                             ("ctrl+p", "Play"), ("ctrl+space", "Pause"), ("ctrl+period", "Record")):
            self.desktop.key(keys)
            recorder.enabled_button(usable)
        self.stand_ins.drain()
        self.desktop.key("ctrl+shift+r")
        self.stand_ins.expect("shown .*")
        self.desktop.key("ctrl+comma")
        recorder.wait_for("button", "Done")

    def test_the_focus_stays_where_it_is(self):
        recorder = self.start()
        recorder.record()
        self.desktop.key("ctrl+p")
        self.wait_focus(recorder, "Record")
        self.desktop.key("space")
        recorder.enabled_button("Pause")
        # Record is disabled under the focus. A second press must not reach Pause, or anything else.
        self.desktop.key("space")
        self.desktop.key("Return")
        recorder.wait_elapsed(recorder.elapsed + 0.5)
        self.assertTrue(recorder.button("Pause").enabled)
        self.desktop.key("Tab")
        self.wait_focus(recorder, "Pause")

    def test_the_focus_is_not_taken_back_from_where_the_user_moved_it(self):
        recorder = self.start()
        recorder.record()
        recorder.press("Pause")
        self.wait_focus(recorder, "Record")
        self.desktop.key("space")
        recorder.enabled_button("Pause")
        recorder.button("Help").focus()
        self.wait_focus(recorder, "Help")
        recorder.press("Pause")
        recorder.enabled_button("Record")
        self.assertTrue(recorder.button("Help").focused)

    def test_tab_follows_the_eye(self):
        recorder = self.start()
        recorder.record()
        recorder.press("Stop")
        self.wait_focus(recorder, "Record")
        for name in ("Show in Folder", "Preferences", "Help", "Minimise", "Close", "Input device", "Play", "Record"):
            self.desktop.key("Tab")
            self.wait_focus(recorder, name)

    def test_help_opens_the_contact_page_or_says_that_nothing_does(self):
        browser = os.path.join(self.home, "xdg-open")
        with open(browser, "w") as script:
            script.write(f'#!/bin/sh\necho "$1" >{self.home}/opened\ncat {self.home}/fails >&2 || exit 0\nexit 4\n')
        os.chmod(browser, 0o755)
        recorder = self.start(PATH=f"{self.home}:{os.environ['PATH']}")
        recorder.click("Help")
        wait_until(lambda: os.path.exists(f"{self.home}/opened"), "the browser to be started")
        wait_until(lambda: open(f"{self.home}/opened").read().endswith("/contact\n"), "the contact page")
        with open(f"{self.home}/fails", "w") as complaint:
            complaint.write("No browser\n")
        recorder.click("Help")
        recorder.wait_status("Nothing opens https://.*/contact")
        log = recorder.program.log()
        self.assertIn("Nothing opens https://", log)
        self.assertNotIn("No browser", log)

    def wait_focus(self, recorder, name):
        button = recorder.button(name)
        wait_until(lambda: button.focused, f"{name} to have the focus")


class Playback(RecorderTest):
    pipewire = True  # PulseAudio plays in KTAudioPlayerServerTest

    def test_playback_pauses_goes_on_and_ends_by_itself(self):
        recorder = self.start()
        recorder.record()
        recorder.wait_elapsed(2)
        recorder.press("Stop")
        recorder.click("Play")
        recorder.wait_status("Playing .*mp3")
        began = time.monotonic()
        recorder.click("Pause")
        recorder.wait_status("Paused, playing .*mp3")
        paused = time.monotonic()
        time.sleep(2.5)  # longer than the file: it must not play on
        self.assertRegex(recorder.status, "Paused, playing .*mp3")
        recorder.click("Play")
        resumed = time.monotonic()
        recorder.wait_status("Ready" + OR_MISSED)
        played = time.monotonic() - resumed + paused - began
        self.assertGreater(played, recorder.elapsed - 0.5)
        self.assertLess(played, recorder.elapsed + 2)
        recorder.press("Play")
        recorder.wait_status("Playing .*")
        self.stand_ins.drain()
        recorder.press("Stop")
        recorder.enabled_button("Record")
        self.stand_ins.expect_nothing()


if __name__ == "__main__":
    main()
