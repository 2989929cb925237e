// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/SoundSystem.h"

namespace sound {

class PulseConnection;

// A server that speaks PulseAudio's protocol: PulseAudio, or PipeWire in its place. The user's, or the one
// that the environment variable PULSE_SERVER names.
class PulseSoundSystem final : public SoundSystem {
public:
    // Does not wait for the server.
    PulseSoundSystem();
    ~PulseSoundSystem() override;

    DeviceList devices() const override;
    void waitForDevices(std::chrono::milliseconds deadline) override;
    QString problem() const override;
    void setDevicesChanged(std::function<void()> changed) override;
    Opened<CaptureStream> openCapture(const QString &sourceKey, const SampleSpec &spec, CaptureClient *client,
        QDeadlineTimer deadline) override;
    Opened<PlaybackStream> openPlayback(const SampleSpec &spec, PlaybackClient *client) override;

private:
    std::shared_ptr<PulseConnection> m_connection;
};

} // namespace sound
