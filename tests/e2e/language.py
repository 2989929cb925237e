#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The card speaks the language of the desktop; what scripts read, files and the log are English."""

import os
import re

from citizen import CardTest
from recorder_test import MICROPHONE, main, wait_until


class Language(CardTest):
    def test_people_hear_their_language_and_scripts_english(self):
        card = self.card(LC_ALL="ar_EG.UTF-8")
        record = card.wait_for("button", "تسجيل")
        left = [control.node.queryComponent().getExtents(0).x for control in (record, card.find("button", "التفضيلات"))]
        self.assertLess(*left)  # mirrored
        self.assertEqual(self.flipside("--record"), (0, "", ""))
        self.assertEqual(card.find("label", "الحالة").text, f"التسجيل من \u2068{MICROPHONE}\u2069")
        state, _, device, file = self.flipside("--status")[1].strip().split("\t")
        self.assertEqual((state, device), ("recording", MICROPHONE))
        self.assertTrue(re.fullmatch(r"[\d-]{10} \d\dh\d\dm\d\ds\.mp3", os.path.basename(file)), file)
        self.flipside("--stop")
        self.sound.tell("kill")
        code, _, errors = self.flipside("--record")
        self.assertEqual(code, 1)
        self.assertTrue(errors.startswith("flipside: cannot record: ") and errors.isascii(), errors)
        wait_until(lambda: card.find("label", "الحالة").text.startswith("تعذر التسجيل: "), "the reason in Arabic")
        self.assertTrue(card.log().isascii(), card.log())

    def test_what_has_no_translation_is_english(self):
        damaged = os.path.join(self.home, "damaged")
        os.makedirs(damaged, exist_ok=True)
        with open(os.path.join(os.path.dirname(self.binary), "flipside_de.qm"), "rb") as whole:
            start = whole.read(1000)
        with open(os.path.join(damaged, "flipside_de.qm"), "wb") as file:
            file.write(start)
        for said, environment in (("", {"LC_ALL": "xx_YY.UTF-8"}), ("", {"LC_ALL": "C.UTF-8", "LANGUAGE": "de"}),
                                  ("", {"LC_ALL": "fr_FR.UTF-8", "LANGUAGE": "en_GB:de"}),
                                  (".*The translation into de.* cannot be read.\n",
                                   {"LC_ALL": "de_DE.UTF-8", "FLIPSIDE_TRANSLATIONS": damaged})):
            with self.subTest(environment=environment):
                card = self.card(**environment)
                card.wait_for("button", "Record")
                self.assertRegex(card.log(), f"^{said}$")
                self.assertEqual(card.end(), 0)

    def test_a_locale_needs_no_codeset_and_no_country_that_is_known(self):
        for locale, record in (("de_AT@euro", "Aufnehmen"), ("zh_SG", "录音"), ("zh_HK", "Record")):
            card = self.card(LC_ALL=locale)
            card.wait_for("button", record)
            self.assertEqual(card.end(), 0)


if __name__ == "__main__":
    main()
