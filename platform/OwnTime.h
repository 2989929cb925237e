// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

namespace platform {

// The time for which this program has itself been running, as its own looks at something tell. When they are
// far apart it stood still, and with it all that it takes in: what came meanwhile still waits at the next
// look, and neither a microphone nor a disk is to blame.
class OwnTime {
public:
    using Clock = std::chrono::steady_clock;

    // That counts between two looks. There are at least two a second.
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
