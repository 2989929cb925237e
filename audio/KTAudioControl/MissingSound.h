// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioMissing.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>

// What a recording lacks since its last start: the sound that was lost, which stands as silence in its place,
// and the time in which its device was away, in whose place nothing stands. Any thread.
class MissingSound {
public:
    // Nothing is missing, the device is there, and there is no pause. `bytesPerSecond` is the rate of the
    // stream, and not 0.
    void restart(std::uint64_t bytesPerSecond);

    // Bytes of the stream, in one hole.
    void lose(std::size_t bytes, KTAudioMissingCause cause);
    // The device has gone, or is back.
    void setAway(bool away);
    // Time away does not count in a pause.
    void setPaused(bool paused);

    // The time of all holes, and the cause of the longest.
    KTAudioMissing lost() const;
    // Up to the last change. Counted by the boot clock: the computer may sleep meanwhile.
    std::chrono::milliseconds away() const;

private:
    void countAway();

    mutable std::mutex m_mutex; // guards what follows
    std::uint64_t m_bytesPerSecond = 1;
    std::uint64_t m_bytes = 0;
    std::size_t m_longestHole = 0; // bytes
    KTAudioMissingCause m_cause = KTAudioMissingCause::None;
    bool m_isAway = false;
    bool m_isPaused = false;
    std::chrono::nanoseconds m_awayTime{};
    std::optional<std::chrono::nanoseconds> m_awaySince; // by the boot clock; while that time counts
};
