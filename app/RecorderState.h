// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// What the whole application is doing. The transitions:
//
//     Idle            -> Recording:       Record, with access to the microphone and a task that starts
//     Recording       -> RecordingPaused: Pause
//     RecordingPaused -> Recording:       Record, with access
//     Recording       -> Idle:            Stop
//     RecordingPaused -> Idle:            Stop
//     Idle            -> Playing:         Play, once there is an output file
//     Playing         -> PlayingPaused:   Pause
//     PlayingPaused   -> Playing:         Play
//     Playing         -> Idle:            Stop
//     PlayingPaused   -> Idle:            Stop
//     any             -> Idle:            playback has ended
//     any             -> Recording:       the folder has been chosen that Record asked for while it was Idle
//
// Any other command changes nothing and leaves one line in the log.
enum RecorderState : std::int32_t {
    RecorderStateIdle = 0,
    RecorderStateRecording = 1,
    RecorderStateRecordingPaused = 2,
    RecorderStatePlaying = 3,
    RecorderStatePlayingPaused = 4
};

// Paused or not.
inline bool isRecording(int state)
{
    return state == RecorderStateRecording || state == RecorderStateRecordingPaused;
}

inline bool isPlaying(int state)
{
    return state == RecorderStatePlaying || state == RecorderStatePlayingPaused;
}
