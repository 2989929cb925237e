// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

namespace platform {

// The time for which this program has itself been running, judged by how often it looked at something. Where
// its looks are far apart it stood still, and took nothing in: what came meanwhile still waits at the next
// look, and neither a microphone nor a disk is to blame.
class OwnTime {
public:
    using Clock = std::chrono::steady_clock;

    // The most that counts between two looks. There are at least two a second.
    static constexpr std::chrono::milliseconds longestStep{600};

    // A look at that moment. The time since the first one.
    Clock::duration at(Clock::time_point now)
    {
        if (m_lastLook)
            m_time += std::min<Clock::duration>(now - *m_lastLook, longestStep);
        m_lastLook = now;
        return m_time;
    }

private:
    Clock::duration m_time{};
    std::optional<Clock::time_point> m_lastLook;
};

} // namespace platform
