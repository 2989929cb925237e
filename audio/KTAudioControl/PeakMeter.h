// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioRecorder.h"
#include "audio/KTAudioControl/SoundSystem.h"

#include <array>
#include <atomic>

// Peaks of what passes by, handed from the sound thread to whoever shows them. Neither side waits or
// allocates.
class PeakMeter {
public:
    // Sound thread only.
    void measure(const void *frames, std::size_t frameCount, const sound::SampleSpec &spec);
    // Any other thread. Resets what it takes.
    KTAudioLevels take();

private:
    std::array<std::atomic<float>, 2> m_peaks{};
    std::atomic<std::uint64_t> m_frames = 0;
};
