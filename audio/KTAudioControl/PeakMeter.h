// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioRecorder.h"
#include "audio/KTAudioControl/SoundSystem.h"
#include "platform/ThreadCheck.h"

#include <array>
#include <atomic>

// Peaks of what passes by, handed from the sound thread to whoever shows them. Neither side waits or
// allocates.
class PeakMeter {
public:
    // Another stream, which may have another thread: what was measured before does not count. Nothing is
    // being measured.
    void restart();
    // Sound thread only.
    void measure(const void *frames, std::size_t frameCount, const sound::SampleSpec &spec);
    // Any other thread. Resets what it takes.
    KTAudioLevels take();

private:
    platform::ThreadCheck m_soundThread;
    std::array<std::atomic<float>, 2> m_peaks{};
    std::atomic<std::uint64_t> m_frames = 0;
};
