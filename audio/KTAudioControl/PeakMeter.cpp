// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/PeakMeter.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace {

using Peaks = std::array<float, 2>;

struct Int24 {
    std::uint8_t bytes[3]; // little-endian or big-endian, as the machine is
};

float magnitude(std::int16_t sample)
{
    return std::abs(float(sample)) * 0x1p-15F;
}
float magnitude(std::int32_t sample)
{
    return std::abs(float(sample)) * 0x1p-31F;
}
float magnitude(Int24 sample)
{
    constexpr bool little = std::endian::native == std::endian::little;
    const std::uint32_t high = sample.bytes[little ? 2 : 0];
    const std::uint32_t low = sample.bytes[little ? 0 : 2];
    return magnitude(std::int32_t(high << 24 | std::uint32_t(sample.bytes[1]) << 16 | low << 8));
}
float magnitude(float sample)
{
    return std::abs(sample);
}

// Copies each sample out, because the buffer promises no alignment; compilers make plain loads of it.
template <typename Sample> Peaks peaksOf(const void *frames, std::size_t frameCount, std::uint32_t channels)
{
    Peaks peaks{};
    const auto *bytes = static_cast<const std::byte *>(frames);
    for (std::size_t frame = 0; frame < frameCount; ++frame) {
        for (std::uint32_t channel = 0; channel < channels; ++channel, bytes += sizeof(Sample)) {
            Sample sample;
            std::memcpy(&sample, bytes, sizeof sample);
            // A comparison that is false for what is not a number.
            if (const float size = magnitude(sample); size > peaks[channel])
                peaks[channel] = size;
        }
    }
    return peaks;
}

Peaks peaksOf(const void *frames, std::size_t frameCount, const sound::SampleSpec &spec)
{
    switch (spec.type) {
    case sound::SampleType::Int16:
        return peaksOf<std::int16_t>(frames, frameCount, spec.channels);
    case sound::SampleType::Int24:
        return peaksOf<Int24>(frames, frameCount, spec.channels);
    case sound::SampleType::Int32:
        return peaksOf<std::int32_t>(frames, frameCount, spec.channels);
    case sound::SampleType::Float32:
        return peaksOf<float>(frames, frameCount, spec.channels);
    }
    Q_UNREACHABLE();
}

} // namespace

void PeakMeter::restart()
{
    m_soundThread.release();
    take();
}

void PeakMeter::measure(const void *frames, std::size_t frameCount, const sound::SampleSpec &spec)
{
    m_soundThread.assertSameThread();
    Peaks peaks = peaksOf(frames, frameCount, spec);
    if (spec.channels == 1)
        peaks[1] = peaks[0];
    for (std::size_t channel = 0; channel < peaks.size(); ++channel) {
        float known = m_peaks[channel].load(std::memory_order_relaxed);
        while (peaks[channel] > known
            && !m_peaks[channel].compare_exchange_weak(known, peaks[channel], std::memory_order_relaxed)) { }
    }
    m_frames.fetch_add(frameCount, std::memory_order_relaxed);
}

KTAudioLevels PeakMeter::take()
{
    return {{m_peaks[0].exchange(0, std::memory_order_relaxed),
                m_peaks[1].exchange(0, std::memory_order_relaxed)},
        m_frames.exchange(0, std::memory_order_relaxed)};
}
