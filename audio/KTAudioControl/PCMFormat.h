// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/AudioStreamBasicDescription.h"
#include "audio/KTAudioControl/SoundSystem.h"

#include <optional>

// The capture format nearest to what is asked for: linear PCM, native-endian, interleaved and packed, of one
// or two channels, at a rate that MPEG audio knows (ISO/IEC 11172-3 and 13818-3, and the 2.5 extension of
// half their rates). Nothing when it is not linear PCM.
std::optional<sound::SampleSpec> captureSpecFor(const AudioStreamBasicDescription &asked);

AudioStreamBasicDescription descriptionOf(const sound::SampleSpec &spec);
