// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/CaptureClock.h"
#include "audio/KTAudioControl/pulse/CaptureFeed.h"
#include "audio/KTAudioControl/pulse/PulseBacklog.h"
#include "audio/KTAudioControl/pulse/PulseStream.h"
#include "platform/Inquiry.h"

namespace sound {

// The loop's side of a capture: reads, tells from the clocks what is lost, and takes in at a pause what came
// before it. The loop's thread, unless it says otherwise.
class PulseCapture final : public PulseStream {
public:
    // Empty when it was done, or why not.
    using Answer = platform::GivenAnswer<QString>;

    PulseCapture(std::shared_ptr<PulseConnection> connection, QString sourceKey, const SampleSpec &spec,
        CaptureClient *client);

    void begin(std::shared_ptr<Answer> opened);
    void end();
    void pause(std::shared_ptr<Answer> paused, const Moment &pressed);
    void resume(const Moment &pressed);
    // Nothing is delivered until the next resume(), whatever the loop is at: what it has not delivered of the
    // sound before the press is lost. Any thread.
    void silence(const Moment &pressed) { m_feed.silence(pressed.boot); }
    // No call follows. Any thread.
    void closeClient() { m_feed.client().close(); }

private:
    void connectStream(pa_stream *stream) override;
    void streamReady() override;
    void streamRefused(const QString &problem) override;
    void streamLost() override;
    void stopped() override;
    void devicesListed() override;

    void countFrom(const Moment &since);
    Moment loseUntilNow(const Moment &pressed);
    void suspendedChanged();
    void readAvailable();
    void askForLoss();
    void ticked();
    void backlogKnown();
    bool judge(const Moment &upTo, qint64 waiting);
    Moment capturedUpTo(qint64 waiting) const;
    void cutAt(const Moment &captured);
    void cutWhenReached();
    void lookAtPause();
    void cutNow();
    void flushed();
    void stopTimers();
    void cork(bool corked);

    const QString m_sourceKey;
    CaptureFeed m_feed;
    std::shared_ptr<Answer> m_opened;
    bool m_deliver = false; // neither paused nor still throwing away what a pause has left behind
    bool m_paused = false;
    bool m_lost = false;
    bool m_suspended = false;
    PulseOperationHandle m_flush;

    CaptureClock m_clock;
    PulseBacklog m_backlog;
    std::chrono::nanoseconds m_readAt{}; // by the steady clock
    PulseTimer m_tick;
    PulseTimer m_askLater;

    std::shared_ptr<Answer> m_pause; // while a pause takes in what came before it
    Moment m_pressed{};
    PulseTimer m_pauseTimer;
    int m_looksLeft = 0;
};

} // namespace sound
