// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/HBRecordingTask.h"
#include "platform/OwnTime.h"

#include <array>
#include <chrono>
#include <functional>
#include <memory>

// Listens in on a running recording: for the level meter, and to tell whether the microphone can be trusted.
// Taking a recorder's levels resets them, so nothing else takes them. Main thread only.
class SoundWatch {
public:
    enum class Judgement { Fine, OnlySilence, NothingArrives };
    using Clock = platform::OwnTime::Clock;

    // Of the time in which this program runs.
    static constexpr std::chrono::milliseconds longestGap{1200};
    static constexpr std::chrono::seconds longestSilence{5};

    // `now` may be replaced for a test.
    explicit SoundWatch(std::function<Clock::time_point()> now = Clock::now);

    // A recording begins or goes on: it is trusted at first.
    void start(const std::shared_ptr<HBRecordingTask> &task);
    void stop();

    // The largest magnitude of each channel since it was last asked.
    std::array<float, 2> takePeaks();
    Judgement judge();

private:
    void listen();

    std::function<Clock::time_point()> m_now;
    std::shared_ptr<HBRecordingTask> m_task;
    std::array<float, 2> m_peaks = {0, 0};
    platform::OwnTime m_time;
    Clock::duration m_lastArrival{};
    Clock::duration m_lastSound{};
};
