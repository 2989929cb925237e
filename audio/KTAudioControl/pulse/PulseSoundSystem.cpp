// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseSoundSystem.h"
#include "audio/KTAudioControl/pulse/PulseCaptureStream.h"
#include "audio/KTAudioControl/pulse/PulsePlaybackStream.h"

#include <new>

namespace sound {

PulseSoundSystem::PulseSoundSystem()
    : m_connection(std::make_shared<PulseConnection>())
{
}

// What a thread that was left behind may touch lives as long as the process.
PulseSoundSystem::~PulseSoundSystem()
{
    if (!m_connection->stop())
        new (std::nothrow) std::shared_ptr<PulseConnection>(m_connection);
}

DeviceList PulseSoundSystem::devices() const
{
    return m_connection->devices().list();
}

void PulseSoundSystem::waitForDevices(std::chrono::milliseconds deadline)
{
    m_connection->devices().waitForList(deadline);
}

void PulseSoundSystem::setDevicesChanged(std::function<void()> changed)
{
    m_connection->loop().post([connection = m_connection, changed = std::move(changed)]() mutable {
        connection->devices().setChanged(std::move(changed));
    });
}

Opened<CaptureStream> PulseSoundSystem::openCapture(
    const QString &sourceKey, const SampleSpec &spec, CaptureClient *client, QDeadlineTimer deadline)
{
    auto stream = std::make_unique<PulseCaptureStream>(m_connection, sourceKey, spec, client);
    const QString problem = stream->open(deadline);
    return {problem.isEmpty() ? std::move(stream) : nullptr, problem};
}

Opened<PlaybackStream> PulseSoundSystem::openPlayback(const SampleSpec &spec, PlaybackClient *client)
{
    return {std::make_unique<PulsePlaybackStream>(m_connection, spec, client), {}};
}

} // namespace sound
