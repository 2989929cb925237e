// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// What the whole application is doing.
enum RecorderState : std::int32_t {
    RecorderStateIdle = 0,
    RecorderStateRecording = 1,
    RecorderStateRecordingPaused = 2,
    RecorderStatePlaying = 3,
    RecorderStatePlayingPaused = 4
};
