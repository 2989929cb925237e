// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

// The library hides every symbol but those of its public classes.
#ifdef KTAUDIOCONTROL_BUILD
#define KTAUDIO_EXPORT __attribute__((visibility("default")))
#else
#define KTAUDIO_EXPORT
#endif
