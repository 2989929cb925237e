// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/MissingSound.h"

#include "audio/KTAudioControl/CaptureClock.h"

#include <algorithm>
#include <utility>

void MissingSound::restart(std::uint64_t bytesPerSecond)
{
    const std::scoped_lock lock(m_mutex);
    m_bytesPerSecond = bytesPerSecond;
    m_bytes = m_longestHole = 0;
    m_cause = KTAudioMissingCause::None;
    m_isAway = m_isPaused = false;
    m_awayTime = {};
    m_awaySince.reset();
}

void MissingSound::lose(std::size_t bytes, KTAudioMissingCause cause)
{
    const std::scoped_lock lock(m_mutex);
    m_bytes += bytes;
    if (bytes > std::exchange(m_longestHole, std::max(bytes, m_longestHole)))
        m_cause = cause;
}

// A device may come back at the very moment at which a recording goes on.
void MissingSound::setAway(bool away)
{
    const std::scoped_lock lock(m_mutex);
    m_isAway = away;
    countAway();
}

void MissingSound::setPaused(bool paused)
{
    const std::scoped_lock lock(m_mutex);
    m_isPaused = paused;
    countAway();
}

// Under the mutex. Adds the time since the last call, if that was to count.
void MissingSound::countAway()
{
    const auto now = Moment::now().boot;
    if (m_awaySince)
        m_awayTime += now - *m_awaySince;
    m_awaySince = m_isAway && !m_isPaused ? std::optional(now) : std::nullopt;
}

KTAudioMissing MissingSound::lost() const
{
    const std::scoped_lock lock(m_mutex);
    return {std::chrono::milliseconds(m_bytes * 1000 / m_bytesPerSecond), m_cause};
}

std::chrono::milliseconds MissingSound::away() const
{
    const std::scoped_lock lock(m_mutex);
    return std::chrono::duration_cast<std::chrono::milliseconds>(m_awayTime);
}
