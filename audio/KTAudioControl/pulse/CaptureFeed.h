// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/CaptureClock.h"
#include "audio/KTAudioControl/SoundSystem.h"
#include "audio/KTAudioControl/pulse/PulseClientGate.h"
#include "platform/ThreadCheck.h"

#include <QByteArray>
#include <chrono>
#include <optional>

namespace sound {

// What was read from the server, on its way to the client: put together to pieces that are worth a delivery,
// with what is lost as a hole in its place, and up to the cut of a pause. The loop's thread, unless it says
// otherwise.
class CaptureFeed {
public:
    // What the server is asked for: short enough for a level meter, long enough to be cheap.
    static constexpr std::chrono::milliseconds fragment{20};
    // Worth a delivery: a part of what its receiver is woken for.
    static constexpr std::chrono::milliseconds piece{10};

    CaptureFeed(CaptureClient *client, const SampleSpec &spec);

    // Any thread.
    PulseClientGate<CaptureClient> &client() { return m_client; }
    // Nothing is delivered any more, whatever the loop is at; what was captured up to this boot time and has
    // not been delivered is lost. Any thread.
    void silence(std::chrono::nanoseconds upTo);
    void speak();
    // The boot time up to which what was taken was captured; nothing when no more is to come.
    void reach(std::optional<std::chrono::nanoseconds> taken);

    // Makes room, so that nothing is allocated while sound comes in.
    void prepare();
    // Bytes of whole frames, in capture order; a null pointer for what the server itself says is lost. What
    // lies beyond the cut is dropped.
    void take(const std::byte *data, std::size_t bytes);
    // What comes after the next so many bytes is lost.
    void lose(const CaptureClock::Loss &loss, qint64 after);
    // Delivers all that was taken, and a hole that was still to come.
    void flush();

    // Nothing is taken after the next so many bytes, until endCut().
    void cutAfter(qint64 bytes);
    bool hasCut() const;
    bool isCut() const;
    // What has not come up to the cut will not come: it is lost.
    void loseUpToCut(KTAudioMissingCause cause);
    void endCut();

private:
    void collect(const std::byte *data, std::size_t bytes);
    void deliver(const void *data, std::size_t bytes);
    void deliverCollected();
    void deliverHole();
    void callWithHole(std::size_t bytes, KTAudioMissingCause cause);
    std::chrono::nanoseconds timeOf(std::size_t bytes) const;

    PulseClientGate<CaptureClient> m_client; // guards what follows, up to the format
    bool m_silent = false;
    std::optional<std::chrono::nanoseconds> m_delivered; // up to this boot time
    const SampleSpec m_spec;
    platform::ThreadCheck m_loopThread;
    QByteArray m_collected; // taken, not delivered yet; less than a piece
    CaptureClock::Loss m_hole; // to be delivered
    qint64 m_untilHole = 0; // bytes that come before it
    std::optional<qint64> m_untilCut; // bytes
};

} // namespace sound
