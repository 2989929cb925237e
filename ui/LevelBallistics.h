// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>

// One channel of a peak meter: rises at once, falls at a steady rate, and remembers for a moment that it was
// overdriven. Time is handed in, so it runs at any rate.
class LevelBallistics {
public:
    static constexpr float floorDecibels = -60; // the left end of the scale
    static constexpr float fallDecibelsPerSecond = 20; // as a studio peak meter does
    static constexpr std::chrono::milliseconds clipHold{1000};

    // `peak` is the largest magnitude of a sample since the last call, 1 is full scale.
    void advance(float peak, std::chrono::milliseconds elapsed);

    // On the scale, 0 at the floor to 1 at full scale, even steps of decibels.
    float position() const;
    bool isClipping() const { return m_clipLeft > std::chrono::milliseconds::zero(); }
    // There is nothing to show and nothing to wait for.
    bool isAtRest() const { return m_decibels <= floorDecibels && !isClipping(); }

private:
    float m_decibels = floorDecibels;
    std::chrono::milliseconds m_clipLeft{0};
};
