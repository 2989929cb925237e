// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/pulse/PulseStream.h"

namespace sound {

class PulseCapture;

// Captures from one source, and from no other: when the source or the server goes away it waits for a source
// of the same key. The main thread's side: it hands over what is to be done, and waits for what came of it,
// not longer than its deadlines.
class PulseCaptureStream final : public CaptureStream {
public:
    PulseCaptureStream(std::shared_ptr<PulseConnection> connection, const QString &sourceKey,
        const SampleSpec &spec, CaptureClient *client);
    ~PulseCaptureStream() override;

    // Why the stream does not run; empty when it does. Called once.
    QString open(QDeadlineTimer deadline);
    void pause() override;
    void resume() override;

private:
    const std::shared_ptr<PulseConnection> m_connection;
    const std::shared_ptr<PulseCapture> m_capture;
};

} // namespace sound
