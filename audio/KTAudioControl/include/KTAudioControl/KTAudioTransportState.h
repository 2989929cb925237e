// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// The state of a recorder or a player:
//     stopped --start--> running --pause--> paused --resume--> running; running or paused --stop--> stopped.
// Whoever reads a state treats every value but paused and running as stopped.
enum KTAudioTransportState : std::int32_t {
    KTAudioTransportStateStopped = 0,
    KTAudioTransportStatePaused = 1,
    KTAudioTransportStateRunning = 2
};
