// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/SoundWatch.h"

#include "platform/ThreadCheck.h"

#include <algorithm>

SoundWatch::SoundWatch(std::function<Clock::time_point()> now)
    : m_now(std::move(now))
{
}

void SoundWatch::start(const std::shared_ptr<HBRecordingTask> &task)
{
    m_task = task;
    m_peaks = {0, 0};
    m_lastArrival = m_lastSound = m_time.at(m_now());
}

void SoundWatch::stop()
{
    m_task.reset();
}

void SoundWatch::listen()
{
    platform::assertMainThread();
    if (!m_task)
        return;
    const KTAudioLevels levels = m_task->audioRecorder()->takeLevels();
    const auto now = m_time.at(m_now());
    for (int channel = 0; channel < 2; ++channel)
        m_peaks[channel] = std::max(m_peaks[channel], levels.peak[channel]);
    if (levels.frames > 0)
        m_lastArrival = now;
    if (levels.peak[0] > 0 || levels.peak[1] > 0)
        m_lastSound = now;
}

std::array<float, 2> SoundWatch::takePeaks()
{
    listen();
    return std::exchange(m_peaks, {0, 0});
}

// A microphone that delivers nothing but zeros is muted or broken; a quiet room is never that quiet.
SoundWatch::Judgement SoundWatch::judge()
{
    listen();
    const auto now = m_time.at(m_now());
    if (m_task && now - m_lastArrival > longestGap)
        return Judgement::NothingArrives;
    if (m_task && now - m_lastSound >= longestSilence)
        return Judgement::OnlySilence;
    return Judgement::Fine;
}
