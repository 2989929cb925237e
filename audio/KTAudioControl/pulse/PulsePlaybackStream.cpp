// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulsePlaybackStream.h"

namespace sound {

using namespace std::chrono_literals;

namespace {

// Long, because nobody waits for this sound in step with anything, and each wake-up costs. Stopping and
// pausing are the server's work and immediate all the same.
constexpr auto latency = 400ms;

} // namespace

PulsePlaybackStream::PulsePlaybackStream(
    std::shared_ptr<PulseConnection> connection, const SampleSpec &spec, PlaybackClient *client)
    : PulseStream(std::move(connection), spec, "Playback")
    , m_client(client)
{
}

PulsePlaybackStream::~PulsePlaybackStream()
{
    {
        const PulseLock lock(connection().loop());
        m_drain.reset();
    }
    close();
}

void PulsePlaybackStream::connectStream(pa_stream *stream)
{
    const auto writable = [](pa_stream *, std::size_t bytes, void *self) {
        static_cast<PulsePlaybackStream *>(self)->fill(bytes);
    };
    pa_stream_set_write_callback(stream, writable, this);
    pa_buffer_attr buffer{};
    buffer.maxlength = std::uint32_t(-1);
    buffer.tlength = bytesIn(latency);
    buffer.prebuf = std::uint32_t(-1);
    buffer.minreq = std::uint32_t(-1);
    pa_stream_connect_playback(stream, nullptr, &buffer, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr);
}

void PulsePlaybackStream::fill(std::size_t bytes)
{
    while (bytes > 0 && !m_filled) {
        void *buffer = nullptr;
        std::size_t size = bytes;
        if (pa_stream_begin_write(stream(), &buffer, &size) < 0 || !buffer || size == 0)
            return streamFailed(connection().lastError());
        const std::size_t filled = m_client->fillPlayback(buffer, size);
        m_filled = filled < size;
        if (filled == 0)
            pa_stream_cancel_write(stream());
        else
            pa_stream_write(stream(), buffer, filled, nullptr, 0, PA_SEEK_RELATIVE);
        bytes -= std::min(bytes, size);
        if (m_filled)
            drain();
    }
}

// The server answers when the last frame has been heard.
void PulsePlaybackStream::drain()
{
    const auto drained = [](pa_stream *, int success, void *self) {
        static_cast<PulsePlaybackStream *>(self)->finish(success ? PlaybackEnd::Heard : PlaybackEnd::Failed);
    };
    m_drain.reset(pa_stream_drain(stream(), drained, this));
    if (!m_drain)
        streamFailed(connection().lastError());
}

void PulsePlaybackStream::finish(PlaybackEnd end)
{
    m_drain.reset();
    if (!std::exchange(m_finished, true))
        m_client->playbackEnded(end);
}

// An answer to a drain is waited for half a minute at most, which a pause may outlast: the question is taken
// back and asked again.
void PulsePlaybackStream::setPaused(bool paused)
{
    const PulseLock lock(connection().loop());
    if (!isReady() || m_finished)
        return;
    if (paused)
        m_drain.reset();
    const PulseOperationHandle cork(pa_stream_cork(stream(), paused, nullptr, nullptr));
    if (!paused && m_filled)
        drain();
}

} // namespace sound
