// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseSoundSystem.h"
#include "audio/KTAudioControl/pulse/PulseCaptureStream.h"
#include "audio/KTAudioControl/pulse/PulsePlaybackStream.h"
#include "platform/Inquiry.h"

#include <new>

namespace sound {

using namespace std::chrono_literals;

namespace {

// The thread has the answer at hand, unless it looks up the name of a server.
constexpr auto problemDeadline = 100ms;

} // namespace

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

QString PulseSoundSystem::problem() const
{
    const auto answer = std::make_shared<platform::GivenAnswer<QString>>();
    const bool posted = m_connection->loop().post(
        [connection = m_connection, answer] { answer->give(connection->problemOfServer()); });
    return posted ? answer->wait(problemDeadline).value_or(QString()) : m_connection->problem();
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
