// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>

enum class KTAudioMissingCause {
    None,
    ComputerBusy, // this program did not run for so long that the sound server's buffer ran over
    ComputerAsleep,
    SoundServerStalled
};

// Sound that was lost, and stands as silence in its place. The time of a pause, or while the device or the
// server is away, is not missing.
struct KTAudioMissing {
    std::chrono::milliseconds time{0};
    KTAudioMissingCause cause = KTAudioMissingCause::None; // of the longest hole
};
