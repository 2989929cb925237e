// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseCaptureStream.h"

namespace sound {

using namespace std::chrono_literals;

namespace {

// Short enough for a level meter, long enough to be cheap.
constexpr auto fragment = 20ms;
// What the server keeps for a process that was stopped or waits for a disk. The server caps it at 4 MiB,
// which is 21 seconds of 16-bit and 10 seconds of 32-bit stereo. What comes after that is lost and cannot be
// made up for: PulseAudio goes on with the next sound that has room, without a hole, without its overflow
// callback, and with indices that count only what it has kept.
constexpr auto serverBuffer = 20s;
// How long a pause waits for the last of what came before it.
constexpr auto pauseDeadline = 200ms;

} // namespace

PulseCaptureStream::PulseCaptureStream(std::shared_ptr<PulseConnection> connection, const QString &sourceKey,
    const SampleSpec &spec, CaptureClient *client)
    : PulseStream(std::move(connection), spec, "Recording")
    , m_sourceKey(sourceKey)
    , m_client(client)
{
}

PulseCaptureStream::~PulseCaptureStream()
{
    {
        const PulseLock lock(connection().loop());
        m_flush.reset();
    }
    close();
}

void PulseCaptureStream::connectStream(pa_stream *stream)
{
    const auto readable = [](pa_stream *, std::size_t, void *self) {
        static_cast<PulseCaptureStream *>(self)->readAvailable();
    };
    pa_stream_set_read_callback(stream, readable, this);
    pa_buffer_attr buffer{};
    buffer.maxlength = bytesIn(serverBuffer);
    buffer.fragsize = bytesIn(fragment);
    const auto flags
        = PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY | (m_paused ? PA_STREAM_START_CORKED : 0);
    pa_stream_connect_record(stream, m_sourceKey.toUtf8().constData(), &buffer, pa_stream_flags_t(flags));
}

void PulseCaptureStream::streamReady()
{
    m_deliver = !m_paused;
    m_collected.reserve(2 * bytesIn(fragment)); // nothing is allocated while sound comes in
    // A command may have come while the server was making the stream.
    if (pa_stream_is_corked(stream()) != int(m_paused))
        const PulseOperationHandle cork(pa_stream_cork(stream(), int(m_paused), nullptr, nullptr));
    if (std::exchange(m_lost, false))
        m_client->captureBack();
}

void PulseCaptureStream::streamLost()
{
    m_flush.reset();
    corked();
    if (!std::exchange(m_lost, true))
        m_client->captureLost();
    connection().retryLater();
}

// The source may be back. When the attempt fails streamLost() asks for the list again, as long as the source
// is in it; when it is not, the event of its return does.
void PulseCaptureStream::devicesListed()
{
    if (m_lost && !isStarted() && connection().readyContext() && connection().devices().isKnown(m_sourceKey))
        start();
}

void PulseCaptureStream::readAvailable()
{
    const void *data = nullptr;
    std::size_t bytes = 0;
    // Nothing yet is no data and no bytes; a hole, which the protocol allows for, is no data and its length.
    while (isReady() && pa_stream_peek(stream(), &data, &bytes) == 0 && bytes > 0) {
        if (m_deliver)
            collect(data, bytes);
        pa_stream_drop(stream());
    }
}

// The server sends sound as its source has it, often in pieces of a few milliseconds. Each delivery wakes the
// threads that follow it, so short pieces are put together first.
void PulseCaptureStream::collect(const void *data, std::size_t bytes)
{
    const bool whole = !data || (m_collected.isEmpty() && bytes >= bytesIn(fragment));
    if (whole) {
        deliverCollected();
        m_client->captured(data, bytes);
        return;
    }
    m_collected.append(static_cast<const char *>(data), qsizetype(bytes));
    if (std::size_t(m_collected.size()) >= bytesIn(fragment))
        deliverCollected();
}

void PulseCaptureStream::deliverCollected()
{
    if (m_collected.isEmpty())
        return;
    m_client->captured(m_collected.constData(), std::size_t(m_collected.size()));
    m_collected.resize(0);
}

// The server answers on the connection that the sound comes on, so what it had sent before is delivered
// before its answer is.
void PulseCaptureStream::pause()
{
    const auto answer = std::make_shared<PulseAnswer>();
    PulseOperationHandle operation;
    {
        const PulseLock lock(connection().loop());
        m_paused = true;
        if (isReady()) {
            const auto done
                = [](pa_stream *, int, void *self) { static_cast<PulseCaptureStream *>(self)->corked(); };
            operation.reset(pa_stream_cork(stream(), 1, done, this));
        }
        if (operation)
            m_corked = answer;
        else
            answer->give();
    }
    answer->waitFor(pauseDeadline);
    const PulseLock lock(connection().loop());
    operation.reset();
    m_corked.reset();
    m_collected.resize(0);
    m_deliver = false;
}

void PulseCaptureStream::corked()
{
    deliverCollected();
    if (m_corked)
        m_corked->give();
}

// Delivery begins when the server has thrown away what it may have kept during the pause, and it captures
// again only after that.
void PulseCaptureStream::resume()
{
    const PulseLock lock(connection().loop());
    m_paused = false;
    if (!isReady())
        return;
    const auto done
        = [](pa_stream *, int, void *self) { static_cast<PulseCaptureStream *>(self)->flushed(); };
    m_flush.reset(pa_stream_flush(stream(), done, this));
    m_deliver = !m_flush;
    const PulseOperationHandle uncork(pa_stream_cork(stream(), 0, nullptr, nullptr));
}

void PulseCaptureStream::flushed()
{
    m_flush.reset();
    m_deliver = !m_paused;
}

} // namespace sound
