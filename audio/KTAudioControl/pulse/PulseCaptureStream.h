// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/pulse/PulseStream.h"

#include <QByteArray>

namespace sound {

// Captures from one source, and from no other: when the source or the server goes away it waits for a source
// of the same key.
class PulseCaptureStream final : public CaptureStream, private PulseStream {
public:
    PulseCaptureStream(std::shared_ptr<PulseConnection> connection, const QString &sourceKey,
        const SampleSpec &spec, CaptureClient *client);
    ~PulseCaptureStream() override;

    using PulseStream::open;

    void pause() override;
    void resume() override;

private:
    void connectStream(pa_stream *stream) override;
    void streamReady() override;
    void streamLost() override;
    void devicesListed() override;
    void readAvailable();
    void collect(const void *data, std::size_t bytes);
    void deliverCollected();
    void corked();
    void flushed();

    const QString m_sourceKey;
    CaptureClient *const m_client;
    QByteArray m_collected; // captured, not delivered yet; less than a fragment
    bool m_deliver = true; // neither paused nor still throwing away what a pause has left behind
    bool m_paused = false;
    bool m_lost = false;
    std::shared_ptr<PulseAnswer> m_corked; // while pause() waits
    PulseOperationHandle m_flush;
};

} // namespace sound
