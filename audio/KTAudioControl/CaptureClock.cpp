// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/CaptureClock.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <utility>

namespace {

// Reads over which the usual lag is averaged: about a second.
constexpr int memory = 50;
// From so many on it is known.
constexpr int enough = 10;

std::chrono::nanoseconds read(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

double seconds(std::chrono::nanoseconds time)
{
    return std::chrono::duration<double>(time).count();
}

} // namespace

Moment Moment::now()
{
    return {read(CLOCK_MONOTONIC), read(CLOCK_BOOTTIME)};
}

void CaptureClock::restart()
{
    m_begin.reset();
    m_gap.reset();
    m_frames = m_settledAt = 0;
    m_usualLag = 0;
    m_reads = m_ticks = 0;
}

void CaptureClock::restart(const Moment &since)
{
    restart();
    m_begin = m_lastRead = since;
}

double CaptureClock::lag(const Moment &now) const
{
    return seconds(now.boot - m_begin->boot) - double(m_frames) / m_rate;
}

bool CaptureClock::read(const Moment &now, std::int64_t frames)
{
    const int ticks = std::exchange(m_ticks, 0);
    if (!m_begin)
        m_begin = m_lastRead = now;
    const Moment before = std::exchange(m_lastRead, now);
    m_frames += frames;
    if (m_gap)
        return false;
    if (now.boot - before.boot >= longestGap) {
        m_gap = Gap{before, now, ticks};
        return true;
    }
    if (m_frames >= m_settledAt) {
        m_reads = std::min(m_reads + 1, memory);
        m_usualLag += (lag(now) - m_usualLag) / m_reads;
    }
    return false;
}

std::optional<std::chrono::nanoseconds> CaptureClock::reached() const
{
    if (!m_begin)
        return std::nullopt;
    const std::chrono::duration<double> sinceBegin(double(m_frames) / m_rate + m_usualLag);
    return m_begin->boot + std::chrono::duration_cast<std::chrono::nanoseconds>(sinceBegin);
}

bool CaptureClock::isInterrupted(const Moment &now) const
{
    return m_begin && !m_gap && now.boot - m_lastRead.boot >= longestGap;
}

bool CaptureClock::Gap::wasAwake() const
{
    return ticks * longestGap > (end.boot - begin.boot) / 2;
}

bool CaptureClock::sawServerStall() const
{
    return m_gap && m_gap->wasAwake();
}

CaptureClock::Loss CaptureClock::ask(const Moment &now, const Moment &upTo, std::int64_t waitingFrames)
{
    if (!m_begin)
        return {};
    const Gap gap = m_gap.value_or(Gap{m_lastRead, now, m_ticks});
    m_gap.reset();
    m_settledAt = m_frames + waitingFrames;
    const double lost = lag(upTo) - double(waitingFrames) / m_rate - m_usualLag;
    if (gap.end.boot - gap.begin.boot < longestGap || lost < seconds(smallestLoss))
        return {};
    const std::int64_t frames = std::llround(lost * m_rate);
    m_frames += frames;
    m_settledAt += frames;
    return {frames, gap.cause()};
}

std::chrono::nanoseconds CaptureClock::behind(const Moment &now, std::int64_t waitingFrames) const
{
    if (m_reads < enough)
        return {};
    const std::chrono::duration<double> time(lag(now) - double(waitingFrames) / m_rate - m_usualLag);
    return time < smallestLoss ? std::chrono::nanoseconds(0)
                               : std::chrono::duration_cast<std::chrono::nanoseconds>(time);
}

CaptureClock::Loss CaptureClock::unheard(const Moment &upTo) const
{
    if (!m_begin || upTo.boot - m_begin->boot < smallestLoss)
        return {};
    return {std::llround(seconds(upTo.boot - m_begin->boot) * m_rate), Gap{*m_begin, upTo, m_ticks}.cause()};
}

KTAudioMissingCause CaptureClock::Gap::cause() const
{
    if (end.steady - begin.steady < (end.boot - begin.boot) / 2)
        return KTAudioMissingCause::ComputerAsleep;
    return wasAwake() ? KTAudioMissingCause::SoundServerStalled : KTAudioMissingCause::ComputerBusy;
}
