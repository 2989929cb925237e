// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioMissing.h"

#include <chrono>
#include <cstdint>
#include <optional>

// The clocks of one moment. The boot-time clock goes on while the computer sleeps, the steady one does not.
struct Moment {
    std::chrono::nanoseconds steady;
    std::chrono::nanoseconds boot;

    static Moment now();
    Moment before(std::chrono::nanoseconds time) const { return {steady - time, boot - time}; }
};

// Tells from the clock how much of a captured stream is lost where nobody else says so. Sound is only lost
// in an interruption: while nothing is read for a while, because this process, the computer or the server
// stood still. How far the stream lags behind the clock is known from before; if it lags further when all
// that waited has been counted, the rest is gone. A sound card whose clock drifts has no interruptions.
class CaptureClock {
public:
    struct Loss {
        std::int64_t frames = 0;
        KTAudioMissingCause cause = KTAudioMissingCause::None;
    };

    static constexpr std::chrono::milliseconds longestGap{400};
    static constexpr std::chrono::milliseconds smallestLoss{100};

    explicit CaptureClock(std::uint32_t rate)
        : m_rate(rate)
    {
    }

    // A new stream, or one that goes on after a pause: what was before does not count.
    void restart();
    // The same, but what is said from this moment on counts already, before the first read.
    void restart(const Moment &since);
    // `frames` frames have been read. True when an interruption ends with them: the caller finds out how many
    // frames still wait at the server and calls ask().
    bool read(const Moment &now, std::int64_t frames);
    // The boot time up to which the stream has been captured and read. Nothing before the first read.
    std::optional<std::chrono::nanoseconds> reached() const;
    // This process was seen running, once every longestGap while nothing is read.
    void tick() { ++m_ticks; }
    // Whether in the last interruption this process ran, so that it was the server that stood still.
    bool sawServerStall() const;
    // Whether one has ended whose cost has not been asked for.
    bool wasInterrupted() const { return m_gap.has_value(); }
    // Whether one still goes on.
    bool isInterrupted(const Moment &now) const;
    // What the last interruption has cost of the sound up to a moment, which is that of the server's answer,
    // or earlier. Also for one that still goes on.
    Loss ask(const Moment &now, const Moment &upTo, std::int64_t waitingFrames);
    // For how long before a moment nothing had been captured for this stream that is read or waits then,
    // beyond what it usually lags behind: a server that stood still has not looked at its device yet.
    std::chrono::nanoseconds behind(const Moment &now, std::int64_t waitingFrames) const;
    // What was said since the beginning and up to a moment, when nothing was read and nothing of it will
    // come.
    Loss unheard(const Moment &upTo) const;

private:
    double lag(const Moment &now) const;

    const double m_rate;
    std::optional<Moment> m_begin;
    Moment m_lastRead{};
    std::int64_t m_frames = 0; // since the beginning, lost ones included
    double m_usualLag = 0; // seconds
    std::int64_t m_settledAt = 0; // frames up to which the lag says nothing
    int m_reads = 0;
    int m_ticks = 0;
    struct Gap {
        Moment begin, end;
        int ticks;
        bool wasAwake() const;
        KTAudioMissingCause cause() const;
    };
    std::optional<Gap> m_gap;
};
