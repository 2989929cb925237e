// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/DiskState.h"
#include "platform/OwnTime.h"

#include <chrono>

// Judges from one look at the output file to the next whether a recording is really being kept. No clock of
// its own: time is handed in.
class DiskWatch {
public:
    enum class Judgement { Fine, NearlyFull, Full, NotWritten, FileGone, FolderGone };
    using TimePoint = platform::OwnTime::Clock::time_point;

    static constexpr std::chrono::minutes nearlyFullBelow{5};
    // Of the time in which this program runs. The encoder gives bytes many times a second.
    static constexpr std::chrono::milliseconds longestWithoutGrowth{1500};

    DiskWatch();

    // Until now there was no reason for the file to grow.
    void start(TimePoint now);
    // `recorded` is the elapsed time of the recording, which the file's size and the bytes that are still to
    // reach the file, or never will, stand for: together they give the rate. It stays as it is while the file
    // is away or smaller than it was.
    void look(const platform::DiskState &disk, qint64 bytesToCome, std::chrono::milliseconds recorded,
        TimePoint now);

    Judgement judgement() const { return m_judgement; }
    std::chrono::seconds timeLeft() const { return m_timeLeft; }
    // How much sound a part of the file is, at the rate that was last seen.
    std::chrono::milliseconds timeOf(qint64 bytes) const;

private:
    Judgement judge(const platform::DiskState &disk, platform::OwnTime::Clock::duration now) const;

    Judgement m_judgement = Judgement::Fine;
    std::chrono::seconds m_timeLeft = std::chrono::seconds::max();
    qint64 m_size = 0;
    qint64 m_largestSize = 0;
    qint64 m_bytesPerSecond;
    platform::OwnTime m_time;
    platform::OwnTime::Clock::duration m_lastGrowth{};
};
