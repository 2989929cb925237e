// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/Playback.h"

#include "platform/Logging.h"
#include "platform/MainQueue.h"
#include "platform/ThreadCheck.h"

#include <algorithm>
#include <cstring>

namespace {

sound::SampleSpec specOf(const AudioStreamBasicDescription &format)
{
    return {
        sound::SampleType::Int16, static_cast<std::uint32_t>(format.mSampleRate), format.mChannelsPerFrame};
}

} // namespace

Playback::Playback(QString path, Listener listener)
    : m_path(std::move(path))
    , m_listener(std::move(listener))
{
}

Playback::~Playback() = default;

void Playback::start()
{
    platform::assertMainThread();
    if (!m_source.open(m_path)) {
        postEnd(m_source.error());
        return;
    }
    auto opened = sound::soundSystem().openPlayback(specOf(m_source.format()), this);
    m_stream = std::move(opened.stream);
    if (!m_stream)
        postEnd(opened.problem);
}

KTAudioTransportState Playback::state() const
{
    if (!m_stream)
        return KTAudioTransportStateStopped;
    return m_paused ? KTAudioTransportStatePaused : KTAudioTransportStateRunning;
}

void Playback::pause()
{
    platform::assertMainThread();
    m_paused = true;
    m_stream->pause();
}

void Playback::resume()
{
    platform::assertMainThread();
    m_paused = false;
    m_stream->resume();
}

std::size_t Playback::fillPlayback(void *buffer, std::size_t bytes)
{
    Fill fill = {buffer, m_packetCount, 0, 0, m_source.totalPacketCount(), &m_source.format()};
    auto *const out = static_cast<std::byte *>(buffer);
    std::size_t filled = 0;
    while (filled < bytes) {
        if (m_packet.empty()) {
            m_packet = m_source.nextPacket();
            if (m_packet.empty())
                break;
            ++m_packetCount;
        }
        const std::size_t part = std::min(bytes - filled, m_packet.size());
        std::memcpy(out + filled, m_packet.data(), part);
        m_packet = m_packet.subspan(part);
        filled += part;
    }
    fill.packets = static_cast<std::uint32_t>(m_packetCount - fill.firstPacket);
    fill.bytes = static_cast<std::uint32_t>(filled);
    if (filled > 0)
        m_listener.filled(fill);
    return filled;
}

void Playback::playbackEnded(sound::PlaybackEnd end)
{
    const bool heard = end == sound::PlaybackEnd::Heard;
    postEnd(heard ? m_source.error() : QStringLiteral("the sound system has gone away"));
}

// A playback that was stopped in the meantime reports nothing. It is created and destroyed on the main thread
// only, so that holding it there is safe.
void Playback::postEnd(const QString &problem)
{
    platform::postToMainQueue([weak = weak_from_this(), problem] {
        if (const auto playback = weak.lock())
            playback->end(problem);
    });
}

void Playback::end(const QString &problem)
{
    platform::assertMainThread();
    m_stream.reset();
    if (!problem.isEmpty())
        qCWarning(lcAudio, "Can't play %s: %s", qUtf8Printable(m_path), qUtf8Printable(problem));
    m_listener.ended();
}
