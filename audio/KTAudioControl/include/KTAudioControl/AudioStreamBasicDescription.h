// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// How PCM is laid out. The record and its flags follow the platform audio interface of the same name.

inline constexpr std::uint32_t kAudioFormatLinearPCM = 0x6C70636D; // 'lpcm'

enum AudioFormatFlag : std::uint32_t {
    kAudioFormatFlagIsFloat = 1,
    kAudioFormatFlagIsBigEndian = 2,
    kAudioFormatFlagIsSignedInteger = 4,
    kAudioFormatFlagIsPacked = 8,
    kAudioFormatFlagIsNonInterleaved = 32
};

struct AudioStreamBasicDescription {
    double mSampleRate = 0; // frames a second
    std::uint32_t mFormatID = 0; // four-character code
    std::uint32_t mFormatFlags = 0; // AudioFormatFlag
    std::uint32_t mBytesPerPacket = 0;
    std::uint32_t mFramesPerPacket = 0; // 1 for PCM
    std::uint32_t mBytesPerFrame = 0; // all channels
    std::uint32_t mChannelsPerFrame = 0;
    std::uint32_t mBitsPerChannel = 0; // one sample of one channel
    std::uint32_t mReserved = 0; // always 0

    bool operator==(const AudioStreamBasicDescription &) const = default;
};

// Native-endian, interleaved, packed PCM; `kind` is kAudioFormatFlagIsFloat or kAudioFormatFlagIsSignedInteger.
constexpr AudioStreamBasicDescription packedPCM(
    double sampleRate, std::uint32_t channels, std::uint32_t bitsPerChannel, AudioFormatFlag kind)
{
    AudioStreamBasicDescription description;
    description.mSampleRate = sampleRate;
    description.mFormatID = kAudioFormatLinearPCM;
    description.mFormatFlags = kind | std::uint32_t(kAudioFormatFlagIsPacked);
    description.mBytesPerPacket = description.mBytesPerFrame = channels * bitsPerChannel / 8;
    description.mFramesPerPacket = 1;
    description.mChannelsPerFrame = channels;
    description.mBitsPerChannel = bitsPerChannel;
    return description;
}
