// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/DiskWatch.h"

#include <algorithm>

namespace {

// 320 kilobits, the most that the encoder writes, as long as there is too little to measure.
constexpr qint64 largestBytesPerSecond = 40000;
constexpr std::chrono::seconds enoughToMeasure{5};
// File systems keep a little for themselves; what is below this is as good as nothing.
constexpr qint64 asGoodAsNothing = 16384;

qint64 bytesPerSecond(qint64 bytes, std::chrono::milliseconds recorded)
{
    if (recorded < enoughToMeasure || bytes <= 0)
        return largestBytesPerSecond;
    return std::max<qint64>(1, bytes * 1000 / recorded.count());
}

} // namespace

DiskWatch::DiskWatch()
    : m_bytesPerSecond(largestBytesPerSecond)
{
}

void DiskWatch::start(TimePoint now)
{
    m_lastGrowth = m_time.at(now);
}

void DiskWatch::look(
    const platform::DiskState &disk, qint64 bytesToCome, std::chrono::milliseconds recorded, TimePoint moment)
{
    const auto now = m_time.at(moment);
    // The file may well be written all the same. If not, its writer knows why.
    if (disk.folder == platform::DiskState::Unknown)
        return;
    if (disk.fileSize != m_size)
        m_lastGrowth = now;
    m_size = disk.fileSize;
    // A file that is gone, or has another one in its place, tells nothing of the sound.
    if (disk.fileExists && disk.fileSize >= m_largestSize) {
        m_largestSize = disk.fileSize;
        m_bytesPerSecond = bytesPerSecond(disk.fileSize + bytesToCome, recorded);
    }
    m_timeLeft = disk.bytesFree ? std::chrono::seconds(*disk.bytesFree / m_bytesPerSecond)
                                : std::chrono::seconds::max();
    m_judgement = judge(disk, now);
}

std::chrono::milliseconds DiskWatch::timeOf(qint64 bytes) const
{
    return std::chrono::milliseconds(bytes * 1000 / m_bytesPerSecond);
}

DiskWatch::Judgement DiskWatch::judge(
    const platform::DiskState &disk, platform::OwnTime::Clock::duration now) const
{
    if (!disk.folderExists())
        return Judgement::FolderGone;
    if (!disk.fileExists)
        return Judgement::FileGone;
    if (disk.bytesFree && *disk.bytesFree < asGoodAsNothing)
        return Judgement::Full;
    if (now - m_lastGrowth > longestWithoutGrowth)
        return Judgement::NotWritten;
    return m_timeLeft < nearlyFullBelow ? Judgement::NearlyFull : Judgement::Fine;
}
