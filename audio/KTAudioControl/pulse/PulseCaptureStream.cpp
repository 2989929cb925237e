// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseCaptureStream.h"

#include "audio/KTAudioControl/pulse/PulseCapture.h"
#include "platform/ForPeople.h"
#include "platform/Logging.h"

namespace sound {

using namespace std::chrono_literals;

namespace {

// Longer than a pause waits for the server.
constexpr auto pauseDeadline = 800ms;

} // namespace

PulseCaptureStream::PulseCaptureStream(std::shared_ptr<PulseConnection> connection, const QString &sourceKey,
    const SampleSpec &spec, CaptureClient *client)
    : m_connection(std::move(connection))
    , m_capture(std::make_shared<PulseCapture>(m_connection, sourceKey, spec, client))
{
}

PulseCaptureStream::~PulseCaptureStream()
{
    m_capture->closeClient();
    m_connection->loop().post([capture = m_capture] { capture->end(); });
}

QString PulseCaptureStream::open(QDeadlineTimer deadline)
{
    platform::assertMainThread();
    if (!m_connection->isRunning())
        return m_connection->problem();
    const auto opened = std::make_shared<PulseCapture::Answer>();
    m_connection->loop().post([capture = m_capture, opened] { capture->begin(opened); });
    return opened->wait(std::chrono::milliseconds(deadline.remainingTime()))
        .value_or(platform::reason(QT_TRANSLATE_NOOP("Reason", "the sound server does not answer")));
}

void PulseCaptureStream::pause()
{
    platform::assertMainThread();
    const auto paused = std::make_shared<PulseCapture::Answer>();
    const Moment pressed = Moment::now();
    const bool posted = m_connection->loop().post(
        [capture = m_capture, paused, pressed] { capture->pause(paused, pressed); });
    if (posted && !paused->wait(pauseDeadline))
        qCWarning(lcAudio, "A pause does not wait any longer for the thread of the sound server.");
    m_capture->silence(pressed);
}

void PulseCaptureStream::resume()
{
    platform::assertMainThread();
    m_connection->loop().post([capture = m_capture, pressed = Moment::now()] { capture->resume(pressed); });
}

} // namespace sound
