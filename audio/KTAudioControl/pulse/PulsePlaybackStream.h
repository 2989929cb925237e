// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/pulse/PulseStream.h"

namespace sound {

// Plays on the default output, and follows when the user moves it to another one.
class PulsePlaybackStream final : public PlaybackStream, private PulseStream {
public:
    PulsePlaybackStream(
        std::shared_ptr<PulseConnection> connection, const SampleSpec &spec, PlaybackClient *client);
    ~PulsePlaybackStream() override;

    using PulseStream::open;

    void pause() override { setPaused(true); }
    void resume() override { setPaused(false); }

private:
    void connectStream(pa_stream *stream) override;
    void streamReady() override { }
    void streamLost() override { finish(PlaybackEnd::Failed); }
    void setPaused(bool paused);
    void fill(std::size_t bytes);
    void drain();
    void finish(PlaybackEnd end);

    PlaybackClient *const m_client;
    bool m_filled = false; // the client has given its last frame
    bool m_finished = false;
    PulseOperationHandle m_drain;
};

} // namespace sound
