// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/CaptureClock.h"
#include "audio/KTAudioControl/pulse/PulseHandles.h"
#include "platform/ThreadCheck.h"

#include <optional>

namespace sound {

struct SampleSpec;

// What has been captured for a stream and is still at the server, or inside the device. The loop's thread.
class PulseBacklog {
public:
    PulseBacklog(const SampleSpec &spec, std::function<void()> answered);

    // Another stream.
    void restart();
    // The answer follows, from inside this call where the server cannot be asked: then nothing waits.
    void ask(pa_stream *stream);
    // No answer follows.
    void cancel();
    bool isAsked() const;

    // The moment of which the answer tells. It was on its way since.
    Moment moment() const;
    // Bytes that will come, captured until that moment, without what the device always holds.
    qint64 waiting() const;
    // Bytes that the device always holds.
    qint64 inside() const;

    // What the device holds now is what it always holds: nothing is unusual.
    void learnInside();
    bool knowsInside() const;

private:
    using microseconds = std::chrono::microseconds;

    void answered(pa_stream *stream);
    qint64 unreadBytes(qint64 unread, qint64 room);
    microseconds kept() const;
    qint64 bytesIn(microseconds time) const;

    const SampleSpec &m_spec;
    const std::function<void()> m_answered;
    platform::ThreadCheck m_loopThread;
    PulseOperationHandle m_request;
    Moment m_asked{};
    Moment m_moment{};
    qint64 m_waiting = 0;
    microseconds m_inside{};
    std::optional<microseconds> m_usual;
    qint64 m_thrownAway = 0; // bytes that the server will never give, but counts
};

} // namespace sound
