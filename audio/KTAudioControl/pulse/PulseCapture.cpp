// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseCapture.h"

#include "platform/Logging.h"

namespace sound {

using namespace std::chrono_literals;

namespace {

// What the server keeps for a process that stands still. The server caps it at 4 MiB, which is 21 seconds of
// 16-bit and 10 seconds of 32-bit stereo. What comes after that is lost: PulseAudio goes on with the next
// sound that has room, PipeWire throws away all that waits, and neither says so.
constexpr auto serverBuffer = 20s;
// The server sends sound as its source has it, often a hundred times a second, and to wake up costs more than
// to read. Half of what is delivered at once.
constexpr auto restsFor = 25ms;
// How long a pause waits for the server to hand over what came before it: so many looks, so far apart. A time
// in which this program itself stands still is one of them, because it reads the clock before what the server
// has sent meanwhile.
constexpr int looksAtPause = 7;
constexpr auto looksEvery = 100ms;

// What the device has kept while the server stood still is on its way to us by then.
constexpr auto catchUp = 500ms;
// A new stream brings what the device already had; what it holds after that is what it always holds.
constexpr auto settled = 1s;

} // namespace

PulseCapture::PulseCapture(std::shared_ptr<PulseConnection> connection, QString sourceKey,
    const SampleSpec &spec, CaptureClient *client)
    : PulseStream(std::move(connection), spec, QT_TRANSLATE_NOOP("PulseStream", "Recording"))
    , m_sourceKey(std::move(sourceKey))
    , m_feed(client, spec)
    , m_clock(spec.rate)
    , m_backlog(this->spec(), [this] { backlogKnown(); })
    , m_tick([this] { ticked(); })
    , m_askLater([this] { m_backlog.ask(stream()); })
    , m_pauseTimer([this] { lookAtPause(); })
{
}

void PulseCapture::begin(std::shared_ptr<Answer> opened)
{
    assertOnLoop();
    m_opened = std::move(opened);
    open();
}

void PulseCapture::end()
{
    assertOnLoop();
    stopTimers();
    m_flush.reset();
    close();
}

void PulseCapture::cork(bool corked)
{
    const PulseOperationHandle request(pa_stream_cork(stream(), int(corked), nullptr, nullptr));
}

void PulseCapture::stopTimers()
{
    m_tick.stop();
    m_askLater.stop();
    m_pauseTimer.stop();
    m_backlog.cancel();
}

void PulseCapture::stopped()
{
    assertOnLoop();
    stopTimers();
    m_flush.reset();
    if (m_pause)
        std::exchange(m_pause, nullptr)->give({});
    PulseStream::stopped();
}

void PulseCapture::connectStream(pa_stream *stream)
{
    assertOnLoop();
    const auto readable
        = [](pa_stream *, std::size_t, void *self) { static_cast<PulseCapture *>(self)->readAvailable(); };
    pa_stream_set_read_callback(stream, readable, this);
    const auto suspended
        = [](pa_stream *, void *self) { static_cast<PulseCapture *>(self)->suspendedChanged(); };
    pa_stream_set_suspended_callback(stream, suspended, this);
    pa_buffer_attr buffer{};
    buffer.maxlength = std::uint32_t(spec().bytesIn(serverBuffer));
    buffer.fragsize = std::uint32_t(spec().bytesIn(CaptureFeed::fragment));
    const auto flags
        = PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY | (m_paused ? PA_STREAM_START_CORKED : 0);
    pa_stream_connect_record(stream, m_sourceKey.toUtf8().constData(), &buffer, pa_stream_flags_t(flags));
}

// What is said from then on counts, also while nothing arrives: from a server that is late, or a device that
// takes its time to wake up. Not so what an output plays: one that plays nothing may take seconds to its next
// piece of silence, and nothing is lost by that.
void PulseCapture::countFrom(const Moment &since)
{
    if (connection().devices().isMonitor(m_sourceKey))
        m_clock.restart();
    else
        m_clock.restart(since);
    connection().start(m_tick, CaptureClock::longestGap);
}

// A device that is suspended, as when another user has the screen, is away. During a pause the server may
// suspend it because nobody listens.
void PulseCapture::suspendedChanged()
{
    assertOnLoop();
    const bool suspended = pa_stream_is_suspended(stream()) > 0 && !m_paused;
    if (m_lost || std::exchange(m_suspended, suspended) == suspended)
        return;
    m_clock.restart();
    m_feed.reach({});
    m_feed.client().call([suspended](CaptureClient &client) {
        if (suspended)
            client.captureLost();
        else
            client.captureBack();
    });
}

void PulseCapture::streamReady()
{
    assertOnLoop();
    m_deliver = !m_paused;
    m_clock.restart();
    if (m_deliver)
        countFrom(Moment::now());
    m_backlog.restart();
    m_feed.prepare();
    connection().start(m_askLater, settled);
    // A command may have come while the server was making the stream.
    if (pa_stream_is_corked(stream()) != int(m_paused))
        cork(m_paused);
    m_opened->give({});
    if (std::exchange(m_lost, false))
        m_feed.client().call([](CaptureClient &client) { client.captureBack(); });
}

void PulseCapture::streamRefused(const QString &problem)
{
    assertOnLoop();
    m_opened->give(problem);
}

void PulseCapture::streamLost()
{
    assertOnLoop();
    stopTimers();
    // A server that stood still before it went. What an attempt to have it back takes is time away.
    if (!m_lost)
        judge(m_pause ? m_pressed : Moment::now(), 0);
    m_flush.reset();
    m_feed.flush();
    m_feed.reach({});
    cutNow();
    m_suspended = false;
    if (!std::exchange(m_lost, true))
        m_feed.client().call([](CaptureClient &client) { client.captureLost(); });
    connection().retryLater();
}

// The source may be back. When the attempt fails streamLost() asks for the list again, as long as the source
// is in it; when it is not, the event of its return does.
void PulseCapture::devicesListed()
{
    assertOnLoop();
    if (m_lost && !isStarted() && connection().readyContext() && connection().devices().isKnown(m_sourceKey))
        start();
}

void PulseCapture::readAvailable()
{
    assertOnLoop();
    const void *data = nullptr;
    std::size_t bytes = 0;
    qint64 frames = 0;
    // Nothing yet is no data and no bytes; a hole, which the protocol allows for, is no data and its length.
    while (isReady() && pa_stream_peek(stream(), &data, &bytes) == 0 && bytes > 0) {
        if (m_deliver)
            m_feed.take(static_cast<const std::byte *>(data), bytes);
        frames += qint64(bytes / spec().bytesPerFrame());
        pa_stream_drop(stream());
    }
    cutWhenReached();
    if (frames == 0 || !m_deliver)
        return;
    const Moment now = Moment::now();
    m_readAt = now.steady;
    const bool wasInterrupted = m_clock.read(now, frames);
    m_feed.reach(m_clock.reached());
    if (wasInterrupted && !m_pause) // which asks itself
        askForLoss();
    if (!m_pause && !m_backlog.isAsked())
        connection().loop().rest(restsFor);
}

void PulseCapture::askForLoss()
{
    m_backlog.cancel(); // an answer from before knows nothing of it
    if (m_clock.sawServerStall())
        connection().start(m_askLater, catchUp);
    else
        m_backlog.ask(stream());
}

// The timer is not restarted at each read, which would cost a system call.
void PulseCapture::ticked()
{
    assertOnLoop();
    const auto unread = std::chrono::floor<std::chrono::milliseconds>(Moment::now().steady - m_readAt);
    if (unread < CaptureClock::longestGap)
        return connection().start(m_tick, CaptureClock::longestGap - unread);
    m_clock.tick();
    // Suspended already when the recording went on: nothing has changed since.
    if (isReady() && !m_suspended && pa_stream_is_suspended(stream()) > 0)
        suspendedChanged();
    connection().start(m_tick, CaptureClock::longestGap);
}

void PulseCapture::backlogKnown()
{
    assertOnLoop();
    const bool goesOn = m_clock.isInterrupted(Moment::now());
    if (m_deliver && !goesOn && !m_clock.wasInterrupted())
        m_backlog.learnInside();
    else if (m_deliver && !m_pause && !m_backlog.knowsInside())
        connection().start(m_askLater, settled);
    if (goesOn && !m_pause)
        return; // it is asked again when that is over
    const qint64 waiting = m_backlog.waiting();
    const bool lost = judge(m_pause ? m_pressed : m_backlog.moment(), waiting);
    if (m_pause)
        cutAt(lost ? m_pressed : capturedUpTo(waiting));
}

// The server answers for what it has looked at, which after a time in which it stood still is not all that
// its device has by then.
Moment PulseCapture::capturedUpTo(qint64 waiting) const
{
    const qint64 kept = m_backlog.knowsInside() ? 0 : m_backlog.inside();
    return m_backlog.moment().before(
        m_clock.behind(m_backlog.moment(), (waiting + kept) / spec().bytesPerFrame()));
}

// What is lost up to that moment is lost after all that waits: the server had no room for it.
bool PulseCapture::judge(const Moment &upTo, qint64 waiting)
{
    const CaptureClock::Loss loss = m_clock.ask(Moment::now(), upTo, waiting / spec().bytesPerFrame());
    if (loss.frames == 0 || (!m_deliver && !m_flush))
        return false;
    m_feed.lose(loss, waiting);
    return true;
}

void PulseCapture::pause(std::shared_ptr<Answer> paused, const Moment &pressed)
{
    assertOnLoop();
    m_paused = true;
    // A server that does not go on has captured nothing since it was told to.
    if (m_flush) {
        m_feed.lose(m_clock.unheard(pressed), 0);
        m_flush.reset();
        stopTimers();
    }
    if (isReady() && !m_deliver)
        cork(true);
    if (!isReady() || !m_deliver)
        return static_cast<void>(paused->give({}));
    m_pause = std::move(paused);
    m_pressed = pressed;
    m_looksLeft = looksAtPause;
    connection().start(m_pauseTimer, looksEvery);
    m_backlog.ask(stream());
}

// With all that waits comes what was still inside the device at the press, and without what was captured
// after the press and waits. Where the server has not looked so far, what is to come belongs to it as well.
void PulseCapture::cutAt(const Moment &captured)
{
    using std::chrono::duration_cast, std::chrono::microseconds;
    const auto since = duration_cast<microseconds>(captured.steady - m_pressed.steady);
    const qint64 later = since.count() < 0 ? -qint64(spec().bytesIn(-since)) : qint64(spec().bytesIn(since));
    m_feed.cutAfter(std::max<qint64>(0, m_backlog.waiting() + m_backlog.inside() - later));
    cutWhenReached();
}

void PulseCapture::cutWhenReached()
{
    if (m_pause && m_feed.isCut())
        cutNow();
}

// The server has not given in time what came before the pause, or has not even said how much that is.
void PulseCapture::lookAtPause()
{
    assertOnLoop();
    if (--m_looksLeft > 0)
        return connection().start(m_pauseTimer, looksEvery);
    qCWarning(lcAudio, "The sound server does not hand over in time what came before a pause.");
    if (!m_feed.hasCut())
        judge(m_pressed, 0);
    m_feed.loseUpToCut(KTAudioMissingCause::SoundServerStalled);
    cutNow();
}

// All that came before the pause has been taken in.
void PulseCapture::cutNow()
{
    if (!m_pause)
        return;
    m_feed.flush();
    m_feed.endCut();
    m_feed.reach({});
    m_deliver = false;
    stopTimers();
    if (isReady())
        cork(true);
    std::exchange(m_pause, nullptr)->give({});
}

// The server captures for us when it is told to: what this thread is late for is lost, however short it is.
Moment PulseCapture::loseUntilNow(const Moment &pressed)
{
    const Moment now = Moment::now();
    m_clock.restart(pressed);
    const CaptureClock::Loss late = m_clock.unheard(now);
    m_feed.lose(late, 0);
    return late.frames > 0 ? now : pressed;
}

// Delivery begins when the server has thrown away what it may have kept during the pause, and it captures
// again only after that.
void PulseCapture::resume(const Moment &pressed)
{
    assertOnLoop();
    cutNow();
    m_paused = false;
    m_feed.speak();
    if (!isReady())
        return;
    countFrom(loseUntilNow(pressed));
    const auto done = [](pa_stream *, int, void *self) { static_cast<PulseCapture *>(self)->flushed(); };
    m_flush.reset(pa_stream_flush(stream(), done, this));
    if (!m_flush)
        flushed();
    cork(false);
}

void PulseCapture::flushed()
{
    assertOnLoop();
    m_flush.reset();
    m_deliver = !m_paused;
    // What is said until the first sound arrives is judged when it does.
    if (!m_backlog.knowsInside())
        connection().start(m_askLater, settled);
}

} // namespace sound
