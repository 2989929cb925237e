// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

namespace platform {

// Has the program speak the language of the desktop, if there is a translation, with the toolkit's own texts
// and its direction of writing; else English. Before the first widget. Translations are taken from the
// program, or from the folder that FLIPSIDE_TRANSLATIONS names. Main thread only.
void speakLanguageOfDesktop();

} // namespace platform
