#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""From the first start to the last second of a recording."""

import os
import re
import signal
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "testbed"))
from recorder import MICROPHONE, RecorderTest, decoded_seconds, main, wait_until  # noqa: E402


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
        self.assertRegex(self.one_recording(), r"/\d{4}-\d\d-\d\d \d\dh\d\dm\d\ds\.mp3$")
        self.assertEqual(recorder.output_file, self.one_recording())

        # The folder is remembered.
        recorder.press("Stop")
        recorder.end()
        again = self.start()
        again.click("Record")
        again.wait_status("Recording from .*")

    def test_a_paused_recording_is_as_long_as_it_says(self):
        recorder = self.start()
        recorder.record()
        self.assertEqual(recorder.status, f"Recording from {MICROPHONE}")
        recorder.wait_elapsed(2)
        recorder.click("Pause")
        recorder.wait_status("Paused, recording from .*")
        shown = recorder.elapsed
        time.sleep(1.5)  # what is under test: time that is not counted
        self.assertEqual(recorder.elapsed, shown)
        recorder.click("Record")
        recorder.wait_status("Recording from .*")
        recorder.wait_elapsed(shown + 2)
        recorder.click("Stop")
        recorder.wait_status("Ready")
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), recorder.elapsed, delta=0.15)
        self.stand_ins.expect("awake .*")
        self.stand_ins.expect("asleep .*")
        self.stand_ins.expect("awake .*")
        # The two services are asked side by side.
        asked = {self.stand_ins.lines.get(timeout=5).split()[0] for _ in range(2)}
        self.assertEqual(asked, {"asleep", "shown"})

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
        recorder.wait_status("Ready")
        played = time.monotonic() - resumed + paused - began
        self.assertGreater(played, recorder.elapsed - 0.5)
        self.assertLess(played, recorder.elapsed + 2)
        self.assertTrue(recorder.button("Play").enabled)

    def test_stop_while_paused_reveals_the_file(self):
        recorder = self.start()
        recorder.record()
        self.stand_ins.expect("awake .*")
        recorder.wait_elapsed(1)
        self.assertIsNone(recorder.program.find("button", "Show in Folder"))
        recorder.press("Pause")
        self.stand_ins.expect("asleep .*")
        recorder.press("Stop")
        recorder.wait_status("Ready")
        address = re.escape("file://" + self.one_recording().replace(" ", "%20"))
        self.stand_ins.expect("shown " + address)
        recorder.click("Show in Folder")
        self.stand_ins.expect("shown " + address)
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), recorder.elapsed, delta=0.15)

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
                    recorder.click("Close")
                elif end == "terminate":
                    os.kill(recorder.program.pid, signal.SIGTERM)
                else:
                    self.desktop.key("ctrl+q")
                self.assertEqual(recorder.program.wait_for_exit(5), 0)
                # A stop would have shown the file.
                self.assertTrue(self.stand_ins.asked_nothing())
                self.assertGreater(decoded_seconds(self.recordings()[-1]), shown - 0.15)

    def test_a_killed_recording_is_there_up_to_its_last_moment(self):
        recorder = self.start()
        recorder.record()
        recorder.wait_elapsed(3)
        shown = recorder.elapsed
        os.kill(recorder.program.pid, signal.SIGKILL)
        recorder.program.wait_for_exit(5)
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), shown, delta=0.3)

    def test_every_command_has_its_key(self):
        recorder = self.start()
        recorder.record()
        recorder.wait_elapsed(4)
        self.stand_ins.drain()
        for keys, status in (("ctrl+p", "Paused, recording .*"), ("ctrl+r", "Recording .*"), ("ctrl+period", "Ready"),
                             ("ctrl+space", "Playing .*"), ("ctrl+p", "Paused, playing .*"),
                             ("ctrl+space", "Playing .*"), ("ctrl+period", "Ready")):
            self.desktop.key(keys)
            recorder.wait_status(status)
        self.stand_ins.drain()
        self.desktop.key("ctrl+shift+r")
        self.stand_ins.expect("shown .*")
        self.desktop.key("ctrl+comma")
        recorder.wait_for("button", "Done")

    def test_the_focus_stays_where_it_is(self):
        recorder = self.start()
        recorder.record()
        self.desktop.key("ctrl+p")
        recorder.wait_status("Paused, .*")
        record = recorder.button("Record")
        wait_until(lambda: record.focused, "Record to have the focus again")
        self.desktop.key("space")
        recorder.wait_status("Recording .*")
        # Record is disabled under the focus. A second press must not reach Pause, or anything else.
        self.desktop.key("space")
        self.desktop.key("Return")
        recorder.wait_elapsed(recorder.elapsed + 0.5)
        self.assertRegex(recorder.status, "Recording .*")
        self.desktop.key("Tab")
        pause = recorder.button("Pause")
        wait_until(lambda: pause.focused, "Tab to go on to Pause")


if __name__ == "__main__":
    main()
