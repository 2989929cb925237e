// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/pulse/PulseStream.h"

namespace sound {

// Plays on the default output, and follows when the user moves it to another one. The main thread's side: it
// only hands over what is to be done.
class PulsePlaybackStream final : public PlaybackStream {
public:
    PulsePlaybackStream(
        std::shared_ptr<PulseConnection> connection, const SampleSpec &spec, PlaybackClient *client);
    ~PulsePlaybackStream() override;

    void pause() override { setPaused(true); }
    void resume() override { setPaused(false); }
    void more() override;

private:
    class OnLoop;
    void setPaused(bool paused);

    const std::shared_ptr<PulseConnection> m_connection;
    const std::shared_ptr<OnLoop> m_onLoop;
};

} // namespace sound
