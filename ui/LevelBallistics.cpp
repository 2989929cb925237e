// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/LevelBallistics.h"

#include <algorithm>
#include <cmath>

namespace {

// The largest positive value of a 16-bit sample is just below 1; a sample there has most likely been cut off.
constexpr float clippingPeak = 32767.0F / 32768.0F;

// Anything that is not a level (a broken float stream) counts as silence.
float decibels(float peak)
{
    return peak > 0 ? 20 * std::log10(std::min(peak, 1.0F)) : LevelBallistics::floorDecibels;
}

} // namespace

void LevelBallistics::advance(float peak, std::chrono::milliseconds elapsed)
{
    const float fallen = m_decibels - fallDecibelsPerSecond * static_cast<float>(elapsed.count()) / 1000;
    m_decibels = std::max({fallen, decibels(peak), floorDecibels});
    m_clipLeft
        = peak >= clippingPeak ? clipHold : std::max(m_clipLeft - elapsed, std::chrono::milliseconds::zero());
}

float LevelBallistics::position() const
{
    return 1 - m_decibels / floorDecibels;
}
