// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseCaptureStream.h"

#include "audio/KTAudioControl/CaptureClock.h"

#include <QByteArray>
#include <atomic>

namespace sound {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// The window waits for it, so a server that takes longer has as good as refused.
constexpr auto openDeadline = 900ms;
// Short enough for a level meter, long enough to be cheap.
constexpr auto fragment = 20ms;
// What the server keeps for a process that stands still. The server caps it at 4 MiB, which is 21 seconds of
// 16-bit and 10 seconds of 32-bit stereo. What comes after that is lost: PulseAudio goes on with the next
// sound that has room, PipeWire throws away all that waits, and neither says so.
constexpr auto serverBuffer = 20s;
// How long a pause waits for the server to hand over what came before it.
constexpr auto serverDeadline = 700ms;
constexpr auto pauseDeadline = 800ms;

// What the device has kept while the server stood still is on its way to us by then.
constexpr auto catchUp = 500ms;
// What a device is believed to hold, whatever its driver says.
constexpr auto longestInside = 200ms;

constexpr qint64 unknown = -1;

} // namespace

class PulseCaptureStream::OnLoop final : public PulseStream {
public:
    OnLoop(std::shared_ptr<PulseConnection> connection, QString sourceKey, const SampleSpec &spec,
        CaptureClient *client)
        : PulseStream(std::move(connection), spec, "Recording")
        , m_sourceKey(std::move(sourceKey))
        , m_client(client)
        , m_clock(spec.rate)
        , m_tick([this] { ticked(); })
        , m_afterStall([this] { askTiming(); })
        , m_pauseTimer([this] { cutNow(); })
    {
    }

    void begin(std::shared_ptr<PulseAnswer> opened);
    void end();
    void pause(std::shared_ptr<PulseAnswer> paused, const timeval &pressed);
    void resume();
    // Any thread. Nothing is delivered until the next resume(), whatever the loop is at.
    void silence() { m_muted = true; }
    PulseClientGate<CaptureClient> &client() { return m_client; }

private:
    void connectStream(pa_stream *stream) override;
    void streamReady() override;
    void streamRefused(const QString &problem) override { m_opened->give(problem); }
    void streamLost() override;
    void stopped() override;
    void devicesListed() override;

    void readAvailable();
    void take(const std::byte *data, std::size_t bytes);
    void collect(const std::byte *data, std::size_t bytes);
    void deliverCollected();
    void deliverHole();
    void ticked();
    void askTiming();
    void timingAnswered();
    qint64 waitingBytes(qint64 unread);
    qint64 bytesAtPress(const pa_timing_info &info) const;
    void judge(qint64 waiting);
    void cutWhenReached();
    void cutNow();
    void flushed();
    void stopTimers();
    void cork(bool corked)
    {
        const PulseOperationHandle request(pa_stream_cork(stream(), int(corked), nullptr, nullptr));
    }

    const QString m_sourceKey;
    PulseClientGate<CaptureClient> m_client;
    std::atomic<bool> m_muted = false;
    std::shared_ptr<PulseAnswer> m_opened;
    QByteArray m_collected; // captured, not delivered yet; less than a fragment
    bool m_deliver = false; // neither paused nor still throwing away what a pause has left behind
    bool m_paused = false;
    bool m_lost = false;
    PulseOperationHandle m_flush;

    CaptureClock m_clock;
    PulseTimer m_tick;
    PulseTimer m_afterStall;
    PulseOperationHandle m_timing;
    CaptureClock::Loss m_hole; // to be delivered
    qint64 m_untilHole = 0; // bytes that come before it
    qint64 m_thrownAway = 0; // bytes that the server will never give, but counts

    std::shared_ptr<PulseAnswer> m_pause; // while a pause takes in what came before it
    timeval m_pressed{}; // in the server's clock
    PulseTimer m_pauseTimer;
    qint64 m_untilCut = unknown; // bytes
};

void PulseCaptureStream::OnLoop::begin(std::shared_ptr<PulseAnswer> opened)
{
    m_opened = std::move(opened);
    open();
}

void PulseCaptureStream::OnLoop::end()
{
    stopTimers();
    m_flush.reset();
    close();
}

void PulseCaptureStream::OnLoop::stopTimers()
{
    m_tick.stop();
    m_afterStall.stop();
    m_pauseTimer.stop();
    m_timing.reset();
}

void PulseCaptureStream::OnLoop::stopped()
{
    stopTimers();
    m_flush.reset();
    if (m_pause)
        std::exchange(m_pause, nullptr)->give();
    PulseStream::stopped();
}

void PulseCaptureStream::OnLoop::connectStream(pa_stream *stream)
{
    const auto readable
        = [](pa_stream *, std::size_t, void *self) { static_cast<OnLoop *>(self)->readAvailable(); };
    pa_stream_set_read_callback(stream, readable, this);
    // A device that is suspended, as when another user has the screen, is away.
    const auto suspended = [](pa_stream *, void *self) { static_cast<OnLoop *>(self)->m_clock.restart(); };
    pa_stream_set_suspended_callback(stream, suspended, this);
    pa_buffer_attr buffer{};
    buffer.maxlength = bytesIn(serverBuffer);
    buffer.fragsize = bytesIn(fragment);
    const auto flags
        = PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY | (m_paused ? PA_STREAM_START_CORKED : 0);
    pa_stream_connect_record(stream, m_sourceKey.toUtf8().constData(), &buffer, pa_stream_flags_t(flags));
}

void PulseCaptureStream::OnLoop::streamReady()
{
    m_deliver = !m_paused;
    m_clock.restart();
    m_thrownAway = 0;
    m_collected.reserve(qsizetype(2) * bytesIn(fragment)); // nothing is allocated while sound comes in
    // A command may have come while the server was making the stream.
    if (pa_stream_is_corked(stream()) != int(m_paused))
        cork(m_paused);
    m_opened->give();
    if (std::exchange(m_lost, false))
        m_client.call([](CaptureClient &client) { client.captureBack(); });
}

void PulseCaptureStream::OnLoop::streamLost()
{
    stopTimers();
    m_flush.reset();
    deliverHole();
    m_untilCut = 0;
    cutNow();
    m_untilCut = unknown;
    deliverCollected();
    if (!std::exchange(m_lost, true))
        m_client.call([](CaptureClient &client) { client.captureLost(); });
    connection().retryLater();
}

// The source may be back. When the attempt fails streamLost() asks for the list again, as long as the source
// is in it; when it is not, the event of its return does.
void PulseCaptureStream::OnLoop::devicesListed()
{
    if (m_lost && !isStarted() && connection().readyContext() && connection().devices().isKnown(m_sourceKey))
        start();
}

void PulseCaptureStream::OnLoop::readAvailable()
{
    const void *data = nullptr;
    std::size_t bytes = 0;
    qint64 frames = 0;
    // Nothing yet is no data and no bytes; a hole, which the protocol allows for, is no data and its length.
    while (isReady() && pa_stream_peek(stream(), &data, &bytes) == 0 && bytes > 0) {
        if (m_deliver)
            take(static_cast<const std::byte *>(data), bytes);
        frames += qint64(bytes / spec().bytesPerFrame());
        pa_stream_drop(stream());
    }
    cutWhenReached();
    if (frames == 0 || !m_deliver)
        return;
    connection().start(m_tick, CaptureClock::longestGap);
    if (!m_clock.read(Moment::now(), frames))
        return;
    if (m_clock.sawServerStall())
        connection().start(m_afterStall, catchUp);
    else
        askTiming();
}

// Up to a hole, up to the cut of a pause.
void PulseCaptureStream::OnLoop::take(const std::byte *data, std::size_t bytes)
{
    while (bytes > 0 && m_untilCut != 0) {
        if (m_hole.frames > 0 && m_untilHole == 0)
            deliverHole();
        std::size_t part = bytes;
        if (m_hole.frames > 0)
            part = std::min(part, std::size_t(m_untilHole));
        if (m_untilCut != unknown)
            part = std::min(part, std::size_t(m_untilCut));
        collect(data, part);
        data = data ? data + part : nullptr;
        bytes -= part;
        m_untilHole -= m_hole.frames > 0 ? qint64(part) : 0;
        m_untilCut -= m_untilCut != unknown ? qint64(part) : 0;
    }
}

// The server sends sound as its source has it, often in pieces of a few milliseconds. Each delivery wakes the
// threads that follow it, so short pieces are put together first.
void PulseCaptureStream::OnLoop::collect(const std::byte *data, std::size_t bytes)
{
    if (!data) {
        deliverCollected();
        m_client.call([&](CaptureClient &client) {
            if (!m_muted)
                client.captureHole(bytes, KTAudioMissingCause::SoundServerStalled);
        });
        return;
    }
    m_collected.append(reinterpret_cast<const char *>(data), qsizetype(bytes));
    if (std::size_t(m_collected.size()) >= bytesIn(fragment))
        deliverCollected();
}

void PulseCaptureStream::OnLoop::deliverCollected()
{
    if (m_collected.isEmpty())
        return;
    m_client.call([&](CaptureClient &client) {
        if (!m_muted)
            client.captured(m_collected.constData(), std::size_t(m_collected.size()));
    });
    m_collected.resize(0);
}

void PulseCaptureStream::OnLoop::deliverHole()
{
    const auto [frames, cause] = std::exchange(m_hole, {});
    if (frames == 0)
        return;
    deliverCollected();
    m_client.call(
        [&, lost = std::size_t(frames) * spec().bytesPerFrame(), why = cause](CaptureClient &client) {
            if (!m_muted)
                client.captureHole(lost, why);
        });
}

void PulseCaptureStream::OnLoop::ticked()
{
    m_clock.tick();
    connection().start(m_tick, CaptureClock::longestGap);
}

// How much waits at the server: before it hands that over, nobody can tell what is lost, nor where a pause
// begins. An acknowledgement of a cork would overtake it.
void PulseCaptureStream::OnLoop::askTiming()
{
    const auto answered = [](pa_stream *, int, void *self) { static_cast<OnLoop *>(self)->timingAnswered(); };
    m_timing.reset(pa_stream_update_timing_info(stream(), answered, this));
    if (!m_timing)
        timingAnswered();
}

void PulseCaptureStream::OnLoop::timingAnswered()
{
    m_timing.reset();
    const pa_timing_info *info = pa_stream_get_timing_info(stream());
    const bool valid = info && !info->write_index_corrupt && !info->read_index_corrupt;
    const qint64 frame = spec().bytesPerFrame();
    const qint64 waiting = valid ? waitingBytes(info->write_index - info->read_index) / frame : 0;
    judge(waiting);
    if (!m_pause)
        return;
    m_untilCut = std::max<qint64>(0, waiting * frame + (valid ? bytesAtPress(*info) : 0));
    cutWhenReached();
}

// A server whose buffer ran over may count what it threw away for ever as written and not read.
qint64 PulseCaptureStream::OnLoop::waitingBytes(qint64 unread)
{
    m_thrownAway = std::clamp<qint64>(unread, 0, m_thrownAway);
    const qint64 waiting = std::max<qint64>(0, unread - m_thrownAway);
    if (waiting <= qint64(pa_stream_get_buffer_attr(stream())->maxlength))
        return waiting;
    m_thrownAway += waiting;
    return 0;
}

// What had been captured at the press but was still inside the device when the server answered, less what the
// server had captured between the press and its answer.
qint64 PulseCaptureStream::OnLoop::bytesAtPress(const pa_timing_info &info) const
{
    using std::chrono::duration_cast, std::chrono::microseconds, std::chrono::milliseconds;
    const auto inside = std::min<microseconds>(microseconds(info.source_usec), longestInside);
    auto since = microseconds(pa_timeval_diff(&info.timestamp, &m_pressed));
    if (pa_timeval_cmp(&info.timestamp, &m_pressed) < 0 || since > serverDeadline)
        since = 0us; // another clock
    const auto bytes = [&](microseconds time) { return qint64(bytesIn(duration_cast<milliseconds>(time))); };
    return bytes(inside) - bytes(since);
}

// What is lost is lost after all that waits: the server had no room for it.
void PulseCaptureStream::OnLoop::judge(qint64 waiting)
{
    const CaptureClock::Loss loss = m_clock.ask(Moment::now(), waiting);
    if (loss.frames == 0 || !m_deliver)
        return;
    deliverHole(); // one that is still to come
    m_hole = loss;
    m_untilHole = waiting * spec().bytesPerFrame();
    if (waiting == 0)
        deliverHole();
}

void PulseCaptureStream::OnLoop::pause(std::shared_ptr<PulseAnswer> paused, const timeval &pressed)
{
    m_paused = true;
    if (isReady() && !m_deliver)
        cork(true);
    if (!isReady() || !m_deliver)
        return paused->give();
    m_pause = std::move(paused);
    m_pressed = pressed;
    connection().start(m_pauseTimer, serverDeadline);
    askTiming();
}

void PulseCaptureStream::OnLoop::cutWhenReached()
{
    if (m_pause && m_untilCut == 0)
        cutNow();
}

// All that came before the pause has been taken in, or as much of it as the server gives in time.
void PulseCaptureStream::OnLoop::cutNow()
{
    if (!m_pause)
        return;
    if (m_untilCut == unknown)
        judge(0);
    deliverHole();
    deliverCollected();
    m_deliver = false;
    stopTimers();
    m_untilCut = unknown;
    if (isReady())
        cork(true);
    std::exchange(m_pause, nullptr)->give();
}

// Delivery begins when the server has thrown away what it may have kept during the pause, and it captures
// again only after that.
void PulseCaptureStream::OnLoop::resume()
{
    cutNow();
    m_paused = false;
    m_muted = false;
    if (!isReady())
        return;
    const auto done = [](pa_stream *, int, void *self) { static_cast<OnLoop *>(self)->flushed(); };
    m_flush.reset(pa_stream_flush(stream(), done, this));
    if (!m_flush)
        flushed();
    cork(false);
}

void PulseCaptureStream::OnLoop::flushed()
{
    m_flush.reset();
    m_deliver = !m_paused;
    m_clock.restart();
}

PulseCaptureStream::PulseCaptureStream(std::shared_ptr<PulseConnection> connection, const QString &sourceKey,
    const SampleSpec &spec, CaptureClient *client)
    : m_connection(std::move(connection))
    , m_onLoop(std::make_shared<OnLoop>(m_connection, sourceKey, spec, client))
{
}

PulseCaptureStream::~PulseCaptureStream()
{
    m_onLoop->client().close();
    m_connection->loop().post([onLoop = m_onLoop] { onLoop->end(); });
}

QString PulseCaptureStream::open()
{
    platform::assertMainThread();
    if (!m_connection->isRunning())
        return m_connection->problem();
    const auto opened = std::make_shared<PulseAnswer>();
    m_connection->loop().post([onLoop = m_onLoop, opened] { onLoop->begin(opened); });
    return opened->waitFor(openDeadline).value_or(u"the sound server does not answer"_s);
}

void PulseCaptureStream::pause()
{
    platform::assertMainThread();
    const auto paused = std::make_shared<PulseAnswer>();
    timeval pressed{};
    pa_gettimeofday(&pressed);
    if (m_connection->loop().post([onLoop = m_onLoop, paused, pressed] { onLoop->pause(paused, pressed); }))
        paused->waitFor(pauseDeadline);
    m_onLoop->silence();
}

void PulseCaptureStream::resume()
{
    m_connection->loop().post([onLoop = m_onLoop] { onLoop->resume(); });
}

} // namespace sound
