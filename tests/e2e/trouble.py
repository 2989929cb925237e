#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""Devices that come and go, servers that do not answer, folders that vanish, and disks that fail."""

import contextlib
import os
import resource
import shutil
import signal
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
from recorder_test import MICROPHONE, OR_MISSED, RecorderTest, decoded_seconds, main, wait_until  # noqa: E402

SAID_WITHIN = 2.5
"""Seconds: two for the program, the rest for the accessibility bus to be read on a busy machine."""


class Devices(RecorderTest):
    def device(self, recorder):
        return recorder.button("Input device").description

    def wait_device(self, recorder, name):
        wait_until(lambda: self.device(recorder) == name, f"{name} to be chosen")

    def test_a_device_is_chosen_from_the_menu_and_a_new_one_resets_the_choice(self):
        self.sound.tell("load Line & Co=tone")
        self.sound.tell("default " + MICROPHONE)
        recorder = self.start()
        self.wait_device(recorder, MICROPHONE)
        recorder.click("Input device")
        # The toolkit keeps pop-up menus out of the accessible tree, so the menu is used with the keyboard. It reads
        # backwards: a monitor of an output, the other device, the default one.
        wait_until(lambda: recorder.windows() == 2, "the menu")
        for key in ("Down", "Down", "Return"):
            self.desktop.key(key)
        self.wait_device(recorder, "Line & Co")
        recorder.record()

        # The recording keeps its device, and the status line names that one.
        self.sound.tell("load Headset=tone")
        self.wait_device(recorder, MICROPHONE)
        for unplugged in (None, MICROPHONE):
            if unplugged:
                self.sound.tell("unload " + unplugged)
            recorder.wait_elapsed(recorder.elapsed + 1.5)
            self.assertRegex(recorder.status, "Recording from Line & Co" + OR_MISSED)

    def test_a_suspended_microphone_is_missed_and_goes_on_when_it_is_back(self):
        suspend = "pactl suspend-source @DEFAULT_SOURCE@ "
        recorder = self.start()
        recorder.record()
        recorder.wait_elapsed(1)
        self.sound.tell(suspend + "1")
        recorder.wait_status(f"No sound is arriving from {MICROPHONE}", SAID_WITHIN)
        shown = recorder.elapsed
        self.assertTrue(recorder.button("Stop").enabled)
        self.sound.tell(suspend + "0")
        lacking = rf"\d+(\.\d)? s are missing: {MICROPHONE} was away"
        recorder.wait_status(lacking)
        recorder.wait_elapsed(shown + 1)
        recorder.press("Stop")
        recorder.enabled_button("Record")
        self.assertRegex(recorder.status, lacking)
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), recorder.elapsed, delta=0.15)

    def test_without_a_server_the_start_fails_and_says_so(self):
        self.sound.tell("kill")
        recorder = self.start()
        recorder.wait_status("No input device")
        recorder.click("Record")
        recorder.choose_folder(recorder.folder)
        recorder.wait_for("label", "Failed to start record.")
        recorder.wait_for("label", "Unsupport format: 16 bits per channel, 48000.000000 sample rate, "
                                   "2 channels per frame, flags: 12")
        recorder.press("OK")
        recorder.program.wait_gone("label", "Failed to start record.")
        recorder.enabled_button("Record")
        # The file that failed can be played, but is not offered to be shown before something really happens.
        self.assertTrue(recorder.button("Play").enabled)
        self.assertTrue(recorder.output_file.startswith(recorder.folder))
        self.assertIsNone(recorder.program.find("button", "Show in Folder"))

        self.sound.tell("start")
        self.wait_device(recorder, MICROPHONE)
        recorder.click("Record")
        recorder.wait_status("Recording .*")

    def test_a_server_that_does_not_answer_holds_nobody_up(self):
        recorder = self.start()
        recorder.record()
        recorder.press("Stop")
        recorder.enabled_button("Record")
        recorder.end()

        self.sound.tell("freeze")
        self.addCleanup(self.sound.tell, "thaw")
        began = time.monotonic()
        recorder = self.start()
        self.assertLess(time.monotonic() - began, 3)
        recorder.click("Record")
        recorder.wait_for("label", "Failed to start record.", 5)


class Log(RecorderTest):
    def lose_the_microphone(self, recorder):
        """Which has lines in the log, the first of them by the sound thread."""
        self.sound.tell("unload " + MICROPHONE)
        recorder.wait_status(f"No sound is arriving from {MICROPHONE}", 5)
        self.sound.tell("load " + MICROPHONE + "=tone")
        recorder.wait_status(".* was away")
        recorder.wait_elapsed(recorder.elapsed + 0.5)

    def test_a_log_that_nobody_takes_holds_nobody_up(self):
        log, script = os.path.join(self.home, "log"), os.path.join(self.home, "flipside")
        os.mkfifo(log)
        reader, writer = (os.open(log, mode | os.O_NONBLOCK) for mode in (os.O_RDONLY, os.O_WRONLY))
        with open(script, "w") as file:
            file.write(f'#!/bin/sh\nexec "{self.binary}" 2>"{log}"\n')
        os.chmod(script, 0o755)
        binary, self.binary = self.binary, script
        recorder = self.start()
        recorder.record()
        with contextlib.suppress(BlockingIOError):
            while True:
                os.write(writer, bytes(4096))
        self.lose_the_microphone(recorder)
        os.read(reader, 1 << 20)
        self.lose_the_microphone(recorder)
        self.assertIn(b" lines of the log had no room", os.read(reader, 1 << 20))
        for end in (reader, writer):
            os.close(end)
        self.lose_the_microphone(recorder)
        recorder.press("Stop")
        recorder.enabled_button("Record")
        # What is refused has a line by the main thread, which is the one that a signal would reach.
        self.assertEqual(subprocess.run([binary, "--pause"], env=self.desktop.env, check=False, timeout=20).returncode, 1)
        self.assertEqual(recorder.end(), 0)


class Folders(RecorderTest):
    def test_a_folder_that_vanishes_is_told_and_asked_for_again(self):
        recorder = self.start()
        recorder.record()
        recorder.wait_elapsed(1)
        shutil.rmtree(recorder.folder)
        recorder.wait_status("The folder is gone", SAID_WITHIN)
        recorder.press("Stop")
        recorder.enabled_button("Record")
        self.assertRegex(recorder.status, "The folder is gone.*")
        os.mkdir(recorder.folder)
        recorder.wait_status("Ready" + OR_MISSED)
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), recorder.elapsed, delta=0.15)
        shutil.rmtree(recorder.folder)

        os.mkdir(recorder.folder + " 2")
        recorder.click("Record")
        recorder.choose_folder(recorder.folder + " 2")
        recorder.wait_status("Recording .*")
        self.assertEqual(os.path.dirname(recorder.output_file), recorder.folder + " 2")


class Disks(RecorderTest):
    """A disk that is told what to do."""

    def start_on_disk(self, folder="Recordings"):
        library = os.path.join(os.path.dirname(self.binary), "..", "testbed", "libslow_disk.so")
        self.disk("")
        return self.start(LD_PRELOAD=library, SLOW_DISK_FOLDER=os.path.join(self.home, folder),
                          SLOW_DISK_CONTROL=os.path.join(self.home, "disk"))

    def disk(self, faults):
        with open(os.path.join(self.home, "disk"), "w") as control:
            control.write(faults + "\n")

    def test_what_waits_for_a_silent_disk_is_told_and_comes_into_the_file(self):
        recorder = self.start_on_disk()
        recorder.record()
        recorder.wait_elapsed(1)
        self.disk("write stall")
        recorder.wait_status(r"The disk does not answer: \S+ s are safe in memory", 5)
        recorder.wait_elapsed(recorder.elapsed + 1)
        began = time.monotonic()
        recorder.click("Stop")
        recorder.enabled_button("Record")
        self.assertLess(time.monotonic() - began, 1.5)
        self.assertRegex(recorder.status, "The disk does not answer: .*")
        shown = recorder.elapsed
        # What opens the file would get its beginning only; the menu passes over it.
        self.stand_ins.drain()
        recorder.wait_for("label", "Output file").click(self.desktop)
        self.desktop.xdotool("click", "3")
        wait_until(lambda: recorder.windows() == 2, "the menu")
        self.desktop.key("Down")
        self.desktop.key("Return")
        self.stand_ins.expect("shown .*mp3")
        # The end of a session is not patient, the program is.
        for request in (signal.SIGTERM, signal.SIGHUP, signal.SIGTERM):
            os.kill(recorder.program.pid, request)
            time.sleep(0.2)  # as far apart as they come
        self.disk("")
        self.assertEqual(recorder.program.wait_for_exit(5), 0)
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), shown, delta=0.15)

    def test_a_chooser_on_a_silent_disk_is_cancelled_and_left_open(self):
        recorder = self.start_on_disk()
        recorder.record()
        recorder.press("Stop")
        recorder.turn_over("Preferences", "Done")
        self.disk("all stall")
        recorder.press("Choose folder")
        recorder.press("Cancel")
        began = time.monotonic()
        recorder.program.wait_gone("text", "Directory:")
        recorder.click("Choose folder")
        recorder.wait_for("text", "Directory:")
        self.assertLess(time.monotonic() - began, 5)  # the disk never answers
        self.assertEqual(recorder.end(), 0)

    def test_a_chosen_folder_is_recorded_into_while_the_disk_of_the_settings_is_silent(self):
        recorder = self.start_on_disk(".config")
        recorder.click("Record")
        field = recorder.wait_for("text", "Directory:")
        wait_until(lambda: field.focused, "the chooser to have the keyboard")
        # With the first letter the toolkit reads what the user's keys compose.
        self.desktop.key("x")
        wait_until(lambda: field.node.queryText().getText(0, -1).endswith("x"), "the letter")
        self.disk("all stall")
        recorder.choose_folder(recorder.folder)
        recorder.wait_elapsed(1)
        self.disk("")
        recorder.press("Stop")
        recorder.end()
        self.assertEqual(len(self.recordings()), 1)
        recorder = self.start()
        recorder.click("Record")
        recorder.wait_status("Recording from .*")

    def test_a_full_disk_is_told_until_there_is_space_again(self):
        recorder = self.start_on_disk()
        recorder.record()
        recorder.wait_elapsed(1)
        self.disk("write fail ENOSPC")
        recorder.wait_status("The disk is full.*", SAID_WITHIN)
        self.disk("")
        over = time.monotonic()
        recorder.wait_status("Recording from .*" + OR_MISSED)
        self.assertGreater(time.monotonic() - over, 2, "nobody can have read it")
        self.disk("write fail ENOSPC")
        recorder.wait_status("The disk is full.*", SAID_WITHIN)
        recorder.press("Stop")
        recorder.enabled_button("Record")
        self.assertRegex(recorder.status, "The disk is full.*")
        self.disk("")
        recorder.wait_status("Ready" + OR_MISSED)
        self.assertAlmostEqual(decoded_seconds(self.one_recording()), recorder.elapsed, delta=0.15)

    def test_what_could_not_be_done_is_told_until_the_next_command(self):
        recorder = self.start_on_disk()
        self.disk("open fail EACCES")
        recorder.click("Record")
        recorder.choose_folder(recorder.folder)
        recorder.wait_status("Cannot record: .*")
        recorder.press("OK")
        self.disk("")
        recorder.click("Record")
        recorder.wait_status("Recording .*")
        recorder.press("Stop")
        self.disk("open stall")
        recorder.click("Play")
        recorder.wait_status(r"Cannot play .*\.mp3: the disk does not answer", 8)
        self.disk("")
        os.unlink(self.recordings()[-1])
        recorder.click("Play")
        recorder.wait_status(r"Cannot play .*\.mp3: no such file")

    def test_a_start_that_would_leave_no_file_for_an_alert_is_refused(self):
        recorder = self.start()
        recorder.record()
        recorder.press("Stop")
        recorder.enabled_button("Record")
        open_files = len(os.listdir(f"/proc/{recorder.program.pid}/fd"))
        resource.prlimit(recorder.program.pid, resource.RLIMIT_NOFILE, (open_files + 8, open_files + 8))
        recorder.click("Record")
        recorder.wait_status("Cannot record: too many files are open")
        self.assertEqual(len(self.recordings()), 1)


if __name__ == "__main__":
    main()
