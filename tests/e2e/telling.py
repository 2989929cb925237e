#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""What the program tells those who do not look at its card, and what it asks the desktop to show for it."""

import os
import shutil
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "support"))
from recorder_test import MICROPHONE, OR_MISSED, RecorderTest, StandIns, end_process, main, wait_until  # noqa: E402

SAID_WITHIN = 1.5
"""Seconds: one for the program, the rest for the accessibility bus to be read on a busy machine."""

LISTENER = """
import pyatspi
def tell(event):
    try:
        if event.type.startswith("object:property-change") or event.source.getRoleName() == "notification":
            print(event.type.split(":")[1], event.source.getRoleName(), event.source.name, flush=True)
    except Exception:  # it went away while it was looked at
        pass
pyatspi.Registry.registerEventListener(tell, "object:state-changed:showing", "object:property-change:accessible-name")
print("ready .", flush=True)
pyatspi.Registry.start()
"""


class Watcher(StandIns):
    """Another program on the desktop, and what it says that it was told."""

    def __init__(self, test, script, *options):
        super().__init__(test.desktop, *options, script=script)
        self.desktop = test.desktop
        test.addCleanup(end_process, self.process)

    def _read(self):
        for line in self.process.stdout:
            if not line.startswith(("awake", "asleep")):  # which is not told of, but asked for
                self.lines.put(line.strip())

    def ask_portal(self, method, *arguments):
        self.desktop.ask("dbus-send", "--session", "--dest=org.freedesktop.portal.Desktop", "--print-reply",
                         "/org/freedesktop/portal/desktop", method, *arguments)

    def answer(self, response, address=""):
        self.ask_portal("test.User.Answer", f"uint32:{response}", f"string:{address}")

    def notification(self, happens):
        self.desktop.ask("dbus-send", "--session", "--dest=org.freedesktop.Notifications", "--print-reply",
                         "/org/freedesktop/Notifications", "test.User." + happens)

    def mark(self):
        # What is not shown can be taken back at any time.
        self.ask_portal("org.freedesktop.portal.Notification.RemoveNotification", "string:-")
        return "portal taken back -"


class TellingTest(RecorderTest):
    def services(self, *names):
        return Watcher(self, os.path.join(HERE, "services.py"), *(names or ("portal", "notifications")))

    def flipside(self, command):
        """Asks the card that is open, from outside."""
        return subprocess.run([self.binary, command], capture_output=True, text=True, timeout=10)

    def mute(self, muted):
        subprocess.run(["pactl", "set-source-mute", "@DEFAULT_SOURCE@", str(int(muted))],
                       env={**os.environ, **self.sound.environment}, check=True)


class Warnings(TellingTest):
    def test_a_screen_reader_is_told_what_happens_but_not_the_time(self):
        recorder = self.start()
        reader = Watcher(self, "-c", LISTENER)
        recorder.record()
        title = recorder.program.wait_for("frame", "Recording 00:01 - Flipside")
        level = recorder.wait_for("progress bar", "Input level").node.queryValue()
        wait_until(lambda: level.currentValue > 0, "a level")
        recorder.press("Pause")
        recorder.wait_status("Paused, .*")
        self.assertRegex(title.text, "Paused 00:0[1-3] - Flipside")
        recorder.press("Record")
        recorder.wait_status("Recording from .*")
        self.sound.tell("unload " + MICROPHONE)
        recorder.wait_status("No sound .*")
        self.sound.tell(f"load {MICROPHONE}=tone")
        recorder.wait_status(".*missing.*")
        recorder.press("Stop")
        said = [reader.lines.get(timeout=5)]
        while "Stopped" not in said[-1]:
            said.append(reader.lines.get(timeout=5))
        told = [line.split("notification ")[1] for line in said if "notification" in line]
        self.assertEqual([line.split(MICROPHONE)[0] for line in told],
                         ["Waiting for a folder to be chosen", "Recording from ", "Paused, recording from ",
                          "Recording from ", "No sound is arriving from ", told[5].split(MICROPHONE)[0],
                          "Stopped. " + told[5].split(MICROPHONE)[0]])
        # Where it stands still it may be told.
        self.assertLessEqual(len([line for line in said if "label 00:" in line]), 2)

    def test_a_muted_microphone_is_named_before_and_during_a_recording(self):
        self.sound.tell("default " + MICROPHONE)
        recorder = self.start()
        for status in ("Ready", "Recording from .*" + OR_MISSED):
            recorder.wait_status(status)
            self.mute(True)
            recorder.wait_status(f"{MICROPHONE} is muted", SAID_WITHIN)
            self.mute(False)
            recorder.wait_status(status, SAID_WITHIN)
            if status == "Ready":
                recorder.record()

    def test_a_warning_is_a_notification_while_nobody_looks_at_the_card(self):
        desktop = self.services()
        self.sound.tell("default " + MICROPHONE)
        recorder = self.start()
        recorder.click("Record")
        desktop.expect("chooser .*")
        desktop.answer(0, "file://" + recorder.folder)
        recorder.wait_status("Recording from .*")
        self.mute(True)
        recorder.wait_status(".* is muted")
        desktop.expect_nothing()
        recorder.press("Minimise")
        desktop.expect(f"notice 1 0 {MICROPHONE} is muted")
        self.sound.tell("unload " + MICROPHONE)
        # A device that is not there is not muted.
        desktop.expect("taken back 1")
        desktop.expect("notice 2 0 No sound is arriving from .*")
        self.sound.tell(f"load {MICROPHONE}=tone")
        desktop.expect("notice 2 2 .* s are missing: .*")
        self.desktop.xdotool("search", "--name", "Recording .* - Flipside", "windowactivate")
        desktop.expect("taken back 2")

    def take_behind_preferences(self, desktop):
        """A recorder that shows its preferences and records."""
        self.sound.tell("default " + MICROPHONE)
        recorder = self.start()
        recorder.click("Record")
        desktop.expect("chooser .*")
        desktop.answer(0, "file://" + recorder.folder)
        recorder.wait_status("Recording from .*")
        recorder.press("Stop")
        recorder.turn_over("Preferences", "Done")
        self.flipside("--record")
        return recorder

    def test_the_take_behind_the_preferences_is_told_of_until_it_is_safe(self):
        desktop = self.services()
        recorder = self.take_behind_preferences(desktop)
        self.mute(True)
        desktop.expect("notice 1 0 .* is muted")
        recorder.wait_for("frame", "Recording 00:01 - Preferences - Flipside")
        desktop.notification("Close")
        self.flipside("--status")  # answered behind what the bus has told before
        self.sound.tell("unload " + MICROPHONE)
        # The user has closed the one before.
        desktop.expect("notice 2 0 No sound is arriving from .*")
        self.sound.tell(f"load {MICROPHONE}=tone")
        desktop.expect("notice 2 2 .* s are missing: .*")
        # What is missing is missing for good, but no more of it.
        self.flipside("--stop")
        desktop.expect("taken back 2")

    def test_a_notification_without_a_number_yet_is_taken_back_as_soon_as_it_has_one(self):
        desktop = self.services("portal", "notifications", "--late")
        recorder = self.take_behind_preferences(desktop)
        self.mute(True)
        desktop.expect("notice 1 0 .* is muted")
        recorder.turn_over("Done", "Preferences")
        desktop.expect_nothing()
        desktop.notification("Number")
        desktop.expect("taken back 1")

    def test_in_a_sandbox_the_portal_shows_the_notification(self):
        desktop = self.services("portal")
        self.take_behind_preferences(desktop)
        self.mute(True)
        desktop.expect("portal notice warning .* is muted")
        self.mute(False)
        desktop.expect("portal taken back warning")

    def test_a_device_that_takes_the_place_of_the_chosen_one_is_named(self):
        self.sound.tell("load <b>Mic</b> & Co=tone")
        self.sound.tell("default " + MICROPHONE)
        recorder = self.start()
        device = recorder.button("Input device")
        wait_until(lambda: device.description == MICROPHONE, "the first device")
        self.sound.tell("unload " + MICROPHONE)
        recorder.wait_status("Input device is now <b>Mic</b> & Co")
        self.assertEqual(device.description, "<b>Mic</b> & Co")
        recorder.click("Input device")
        wait_until(lambda: recorder.windows() == 2, "the menu")
        self.sound.tell("kill")
        wait_until(lambda: recorder.windows() == 1, "the empty menu to close")
        self.assertEqual(device.description, "No input device")


class Chooser(TellingTest):
    QUESTION = "Choose a folder for your recordings"

    def test_the_folder_is_chosen_with_the_desktops_own_chooser(self):
        music = os.path.join(self.home, "Music")
        os.mkdir(music)
        desktop = self.services()
        recorder = self.start()
        for response, status in ((1, "Ready"), (2, "Ready"), (0, "Recording from .*")):
            recorder.click("Record")
            window = self.desktop.xdotool("getactivewindow")
            desktop.expect(f"chooser x11:{int(window):x} {music} {self.QUESTION}")
            recorder.wait_status("Waiting for a folder to be chosen")
            # The window is blocked, and another request is none.
            recorder.click("Preferences")
            asked = self.flipside("--record")
            self.assertEqual(asked.returncode, 5)
            self.assertIn("the card asks for it", asked.stderr)
            recorder.wait_status("Waiting for a folder to be chosen")
            desktop.answer(response, "file://" + recorder.folder if response == 0 else "")
            recorder.wait_status(status)
            self.assertIsNone(recorder.program.find("button", "Done"))
            desktop.expect_nothing()
        self.assertEqual(os.path.dirname(recorder.output_file), recorder.folder)
        recorder.press("Stop")
        recorder.turn_over("Preferences", "Done")
        recorder.click("Choose folder")
        desktop.expect(f"chooser .* {recorder.folder} {self.QUESTION}")
        recorder.end()
        desktop.expect("closed")

    def test_a_chooser_that_does_not_come_or_goes_away_is_replaced(self):
        for options, trouble in (("--silent",), lambda desktop: None), ((), lambda desktop: end_process(desktop.process)):
            desktop = self.services("portal", *options)
            recorder = self.start()
            recorder.click("Record")
            desktop.expect("chooser .*")
            trouble(desktop)
            recorder.wait_for("dialog", self.QUESTION, 5)
            if options:
                desktop.expect("closed")
            recorder.choose_folder(recorder.folder)
            recorder.wait_status("Recording from .*")
            recorder.end()
            end_process(desktop.process)
            shutil.rmtree(os.path.join(self.home, ".config"))


if __name__ == "__main__":
    main()
