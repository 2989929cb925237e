// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulsePlaybackStream.h"

#include "audio/KTAudioControl/pulse/PulseClientGate.h"
#include "platform/ForPeople.h"

#include <utility>

namespace sound {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Long, because nobody waits for this sound in step with anything, and each wake-up costs. Stopping and
// pausing are the server's work and immediate all the same.
constexpr auto latency = 400ms;
// A server that for five seconds neither takes sound nor has played the last of it is as good as gone. The
// last part of them begins anew when this program stood still itself: it reads the clock before what the
// server has sent meanwhile.
constexpr auto progressDeadline = 4500ms;
constexpr auto secondLook = 500ms;

} // namespace

class PulsePlaybackStream::OnLoop final : public PulseStream {
public:
    OnLoop(std::shared_ptr<PulseConnection> connection, const SampleSpec &spec, PlaybackClient *client)
        : PulseStream(std::move(connection), spec, QT_TRANSLATE_NOOP("PulseStream", "Playback"))
        , m_client(client)
        , m_stalled([this] { stalled(); })
    {
    }

    void begin();
    void end();
    void setPaused(bool paused);
    void fillMore();
    PulseClientGate<PlaybackClient> &client() { return m_client; }

private:
    void connectStream(pa_stream *stream) override;
    void streamReady() override;
    void streamRefused(const QString &problem) override { finish(PlaybackEnd::Failed, problem); }
    void streamLost() override { finish(PlaybackEnd::Failed, connection().problem()); }
    void stopped() override;
    void waitForServer();
    void stalled();
    void fill(std::size_t bytes);
    void drain();
    void finish(PlaybackEnd end, const QString &problem);

    PulseClientGate<PlaybackClient> m_client;
    bool m_paused = false;
    bool m_atEnd = false; // the client has given its last frame
    bool m_finished = false;
    PulseTimer m_stalled; // runs while it is the server's turn
    bool m_looksAgain = false;
    PulseOperationHandle m_drain;
};

void PulsePlaybackStream::OnLoop::begin()
{
    assertOnLoop();
    waitForServer();
    open();
}

void PulsePlaybackStream::OnLoop::end()
{
    assertOnLoop();
    m_drain.reset();
    m_stalled.stop();
    close();
}

void PulsePlaybackStream::OnLoop::stopped()
{
    assertOnLoop();
    m_drain.reset();
    m_stalled.stop();
    PulseStream::stopped();
}

void PulsePlaybackStream::OnLoop::waitForServer()
{
    assertOnLoop();
    m_looksAgain = false;
    connection().start(m_stalled, progressDeadline);
}

void PulsePlaybackStream::OnLoop::stalled()
{
    assertOnLoop();
    if (!std::exchange(m_looksAgain, true))
        return connection().start(m_stalled, secondLook);
    finish(PlaybackEnd::Failed,
        platform::reason(QT_TRANSLATE_NOOP("Reason", "the sound server makes no progress")));
}

void PulsePlaybackStream::OnLoop::connectStream(pa_stream *stream)
{
    assertOnLoop();
    waitForServer();
    const auto writable
        = [](pa_stream *, std::size_t bytes, void *self) { static_cast<OnLoop *>(self)->fill(bytes); };
    pa_stream_set_write_callback(stream, writable, this);
    pa_buffer_attr buffer{};
    buffer.maxlength = std::uint32_t(-1);
    buffer.tlength = std::uint32_t(spec().bytesIn(latency));
    buffer.prebuf = std::uint32_t(-1);
    buffer.minreq = std::uint32_t(-1);
    const auto flags = PA_STREAM_ADJUST_LATENCY | (m_paused ? PA_STREAM_START_CORKED : 0);
    pa_stream_connect_playback(stream, nullptr, &buffer, pa_stream_flags_t(flags), nullptr, nullptr);
}

// A command may have come while the server was making the stream.
void PulsePlaybackStream::OnLoop::streamReady()
{
    assertOnLoop();
    if (pa_stream_is_corked(stream()) != int(m_paused))
        const PulseOperationHandle cork(pa_stream_cork(stream(), int(m_paused), nullptr, nullptr));
    // Paused before it was ready: a server that waits does not stand still.
    if (m_paused)
        m_stalled.stop();
}

void PulsePlaybackStream::OnLoop::fill(std::size_t bytes)
{
    assertOnLoop();
    while (bytes > 0 && !m_atEnd && !m_finished) {
        void *buffer = nullptr;
        std::size_t size = bytes;
        if (pa_stream_begin_write(stream(), &buffer, &size) < 0 || !buffer || size == 0)
            return streamFailed(connection().lastError());
        PlaybackFill filled;
        m_client.call([&](PlaybackClient &client) { filled = client.fillPlayback(buffer, size); });
        m_atEnd = filled.atEnd;
        if (filled.bytes == 0)
            pa_stream_cancel_write(stream());
        else
            pa_stream_write(stream(), buffer, filled.bytes, nullptr, 0, PA_SEEK_RELATIVE);
        if (m_atEnd)
            return m_paused ? void() : drain();
        if (filled.bytes < size)
            return m_stalled.stop(); // it is the client's turn, which says when there is more
        bytes -= std::min(bytes, size);
    }
    if (!m_paused && !m_finished)
        waitForServer();
}

void PulsePlaybackStream::OnLoop::fillMore()
{
    assertOnLoop();
    if (isReady() && !m_paused)
        fill(pa_stream_writable_size(stream()));
}

// The server answers when the last frame has been heard. Sound that is shorter than what the server waits for
// before it begins is played all the same.
void PulsePlaybackStream::OnLoop::drain()
{
    const auto drained = [](pa_stream *, int success, void *self) {
        auto *const playback = static_cast<OnLoop *>(self);
        playback->finish(
            success ? PlaybackEnd::Heard : PlaybackEnd::Failed, playback->connection().lastError());
    };
    waitForServer();
    m_drain.reset(pa_stream_drain(stream(), drained, this));
    if (!m_drain)
        streamFailed(connection().lastError());
}

void PulsePlaybackStream::OnLoop::finish(PlaybackEnd end, const QString &problem)
{
    assertOnLoop();
    m_drain.reset();
    m_stalled.stop();
    if (!std::exchange(m_finished, true))
        m_client.call([&](PlaybackClient &client) { client.playbackEnded(end, problem); });
}

// An answer to a drain is waited for half a minute at most, which a pause may outlast: the question is taken
// back and asked again.
void PulsePlaybackStream::OnLoop::setPaused(bool paused)
{
    assertOnLoop();
    m_paused = paused;
    if (!isReady() || m_finished)
        return;
    if (paused) {
        m_drain.reset();
        m_stalled.stop();
    }
    const PulseOperationHandle cork(pa_stream_cork(stream(), paused, nullptr, nullptr));
    if (paused)
        return;
    if (m_atEnd)
        drain();
    else
        fillMore();
}

PulsePlaybackStream::PulsePlaybackStream(
    std::shared_ptr<PulseConnection> connection, const SampleSpec &spec, PlaybackClient *client)
    : m_connection(std::move(connection))
    , m_onLoop(std::make_shared<OnLoop>(m_connection, spec, client))
{
    m_connection->loop().post([onLoop = m_onLoop] { onLoop->begin(); });
}

PulsePlaybackStream::~PulsePlaybackStream()
{
    m_onLoop->client().close();
    m_connection->loop().post([onLoop = m_onLoop] { onLoop->end(); });
}

void PulsePlaybackStream::setPaused(bool paused)
{
    platform::assertMainThread();
    m_connection->loop().post([onLoop = m_onLoop, paused] { onLoop->setPaused(paused); });
}

void PulsePlaybackStream::more()
{
    m_connection->loop().post([onLoop = m_onLoop] { onLoop->fillMore(); });
}

} // namespace sound
