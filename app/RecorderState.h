// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// What the whole application is doing. The commands' transitions:
//
//     Idle            -> Recording:       Record, once access is granted, a folder is there and the task
//     starts Recording       -> RecordingPaused: Pause RecordingPaused -> Recording:       Record Recording
//     -> Idle:            Stop RecordingPaused -> Idle:            Stop Idle            -> Playing: Play,
//     once there has been a recording Playing         -> PlayingPaused:   Pause PlayingPaused   -> Playing:
//     Play Playing         -> Idle:            Stop PlayingPaused   -> Idle:            Stop any -> Idle: the
//     end of playback
//
// Any other command is refused: it changes nothing and is one line in the log.
enum RecorderState : std::int32_t {
    RecorderStateIdle = 0,
    RecorderStateRecording = 1,
    RecorderStateRecordingPaused = 2,
    RecorderStatePlaying = 3,
    RecorderStatePlayingPaused = 4
};
