// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/PCMFormat.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::uint32_t, 9> encoderRates{
    8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};

std::uint32_t rateFor(double asked)
{
    const auto *rate = std::find_if(encoderRates.begin(), encoderRates.end(),
        [&](std::uint32_t known) { return double(known) == asked; });
    return rate == encoderRates.end() ? 48000 : *rate;
}

// Unsigned samples, and widths that no sound server delivers, become 16-bit.
sound::SampleType typeFor(std::uint32_t bits, std::uint32_t flags)
{
    if (flags & kAudioFormatFlagIsFloat)
        return sound::SampleType::Float32;
    if (bits == 32 && (flags & kAudioFormatFlagIsSignedInteger))
        return sound::SampleType::Int32;
    if (bits == 24 && (flags & kAudioFormatFlagIsSignedInteger))
        return sound::SampleType::Int24;
    return sound::SampleType::Int16;
}

} // namespace

std::optional<sound::SampleSpec> captureSpecFor(const AudioStreamBasicDescription &asked)
{
    if (asked.mFormatID != kAudioFormatLinearPCM)
        return {};
    return sound::SampleSpec{typeFor(asked.mBitsPerChannel, asked.mFormatFlags), rateFor(asked.mSampleRate),
        asked.mChannelsPerFrame == 1 ? 1U : 2U};
}

AudioStreamBasicDescription descriptionOf(const sound::SampleSpec &spec)
{
    const bool isFloat = spec.type == sound::SampleType::Float32;
    return packedPCM(spec.rate, spec.channels, spec.bytesPerSample() * 8,
        isFloat ? kAudioFormatFlagIsFloat : kAudioFormatFlagIsSignedInteger);
}
