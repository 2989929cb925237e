// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioRecorder.h"

#include <atomic>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

namespace testbed {

// Keeps what a recorder delivers. In 16-bit stereo a frame is one number, as counting microphones give them.
class FrameCollector : public KTAudioRecorderDelegate {
public:
    void KTAudioRecorderDataRecord(KTAudioRecorder *, const void *data, std::uint32_t size,
        const AudioStreamBasicDescription &format) override
    {
        std::scoped_lock lock(m_mutex);
        m_format = &format;
        m_thread = std::this_thread::get_id();
        m_bytes.insert(
            m_bytes.end(), static_cast<const char *>(data), static_cast<const char *>(data) + size);
    }

    std::vector<char> bytes() const
    {
        std::scoped_lock lock(m_mutex);
        return m_bytes;
    }
    std::vector<std::uint32_t> frames() const
    {
        const std::vector<char> data = bytes();
        std::vector<std::uint32_t> frames(data.size() / sizeof(std::uint32_t));
        if (!frames.empty())
            std::memcpy(frames.data(), data.data(), frames.size() * sizeof(std::uint32_t));
        return frames;
    }
    std::size_t frameCount() const
    {
        std::scoped_lock lock(m_mutex);
        return m_bytes.size() / sizeof(std::uint32_t);
    }
    std::thread::id thread() const
    {
        std::scoped_lock lock(m_mutex);
        return m_thread;
    }
    const AudioStreamBasicDescription *format() const
    {
        std::scoped_lock lock(m_mutex);
        return m_format;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<char> m_bytes;
    std::thread::id m_thread;
    const AudioStreamBasicDescription *m_format = nullptr;
};

// Where a number does not follow the one before it: positions of lost, repeated or swapped frames. A number
// may follow silence, because a microphone that has just been plugged in hears nothing at first; where there
// is nothing but silence, that is not what was captured.
inline std::vector<std::size_t> breaks(const std::vector<std::uint32_t> &frames)
{
    std::vector<std::size_t> positions;
    for (std::size_t i = 1; i < frames.size(); ++i)
        if (frames[i] != frames[i - 1] + 1 && frames[i - 1] != 0)
            positions.push_back(i);
    if (!frames.empty() && frames.back() == 0)
        positions.push_back(frames.size());
    return positions;
}

} // namespace testbed
