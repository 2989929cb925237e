// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/CaptureFeed.h"

#include <algorithm>
#include <utility>

namespace sound {

CaptureFeed::CaptureFeed(CaptureClient *client, const SampleSpec &spec)
    : m_client(client)
    , m_spec(spec)
{
}

void CaptureFeed::prepare()
{
    m_loopThread.assertSameThread();
    m_collected.reserve(2 * qsizetype(m_spec.bytesIn(piece)));
}

// Up to a hole, up to the cut.
void CaptureFeed::take(const std::byte *data, std::size_t bytes)
{
    m_loopThread.assertSameThread();
    while (bytes > 0 && m_untilCut != 0) {
        if (m_hole.frames > 0 && m_untilHole == 0)
            deliverHole();
        std::size_t part = bytes;
        if (m_hole.frames > 0)
            part = std::min(part, std::size_t(m_untilHole));
        if (m_untilCut)
            part = std::min(part, std::size_t(*m_untilCut));
        collect(data, part);
        data = data ? data + part : nullptr;
        bytes -= part;
        m_untilHole -= m_hole.frames > 0 ? qint64(part) : 0;
        if (m_untilCut)
            *m_untilCut -= qint64(part);
    }
}

// The server sends sound as its source has it, some in pieces of a few milliseconds, which are put together
// first, in room that was made for them.
void CaptureFeed::collect(const std::byte *data, std::size_t bytes)
{
    if (!data) {
        deliverCollected();
        return callWithHole(bytes, KTAudioMissingCause::SoundServerStalled);
    }
    if (bytes >= m_spec.bytesIn(piece)) {
        deliverCollected();
        return deliver(data, bytes);
    }
    m_collected.append(reinterpret_cast<const char *>(data), qsizetype(bytes));
    if (std::size_t(m_collected.size()) >= m_spec.bytesIn(piece))
        deliverCollected();
}

void CaptureFeed::deliverCollected()
{
    if (m_collected.isEmpty())
        return;
    deliver(m_collected.constData(), std::size_t(m_collected.size()));
    m_collected.resize(0);
}

void CaptureFeed::deliver(const void *data, std::size_t bytes)
{
    m_client.call([&](CaptureClient &client) {
        if (m_silent)
            return;
        client.captured(data, bytes);
        if (m_delivered)
            *m_delivered += timeOf(bytes);
    });
}

void CaptureFeed::lose(const CaptureClock::Loss &loss, qint64 after)
{
    m_loopThread.assertSameThread();
    deliverHole(); // one that is still to come
    m_hole = loss;
    m_untilHole = after;
    if (after == 0)
        deliverHole();
}

void CaptureFeed::cutAfter(qint64 bytes)
{
    m_loopThread.assertSameThread();
    m_untilCut = bytes;
}

bool CaptureFeed::hasCut() const
{
    m_loopThread.assertSameThread();
    return m_untilCut.has_value();
}

bool CaptureFeed::isCut() const
{
    m_loopThread.assertSameThread();
    return m_untilCut == 0;
}

void CaptureFeed::endCut()
{
    m_loopThread.assertSameThread();
    m_untilCut.reset();
}

void CaptureFeed::loseUpToCut(KTAudioMissingCause cause)
{
    m_loopThread.assertSameThread();
    const qint64 frames = std::exchange(m_untilCut, 0).value_or(0) / m_spec.bytesPerFrame();
    if (frames > 0 && m_hole.frames == 0)
        m_hole = {0, cause};
    m_hole.frames += frames;
}

void CaptureFeed::deliverHole()
{
    const auto [frames, cause] = std::exchange(m_hole, {});
    if (frames == 0)
        return;
    deliverCollected();
    callWithHole(std::size_t(frames) * m_spec.bytesPerFrame(), cause);
}

void CaptureFeed::callWithHole(std::size_t bytes, KTAudioMissingCause cause)
{
    m_client.call([&](CaptureClient &client) {
        if (m_silent)
            return;
        client.captureHole(bytes, cause);
        if (m_delivered)
            *m_delivered += timeOf(bytes);
    });
}

// A multiple of frames: so much is still going to come.
void CaptureFeed::silence(std::chrono::nanoseconds upTo)
{
    using std::chrono::duration_cast, std::chrono::microseconds;
    m_client.call([&](CaptureClient &client) {
        const auto delivered = std::exchange(m_delivered, std::nullopt).value_or(upTo);
        if (!std::exchange(m_silent, true) && upTo > delivered)
            client.captureHole(m_spec.bytesIn(duration_cast<microseconds>(upTo - delivered)),
                KTAudioMissingCause::ComputerBusy);
    });
}

void CaptureFeed::speak()
{
    m_loopThread.assertSameThread();
    m_client.call([this](CaptureClient &) { m_silent = false; });
}

void CaptureFeed::reach(std::optional<std::chrono::nanoseconds> taken)
{
    m_loopThread.assertSameThread();
    m_client.call([&](CaptureClient &) {
        m_delivered = taken;
        if (m_delivered)
            *m_delivered -= timeOf(std::size_t(m_collected.size()))
                + timeOf(std::size_t(m_hole.frames) * m_spec.bytesPerFrame());
    });
}

std::chrono::nanoseconds CaptureFeed::timeOf(std::size_t bytes) const
{
    return std::chrono::nanoseconds(bytes / m_spec.bytesPerFrame() * 1'000'000'000 / m_spec.rate);
}

void CaptureFeed::flush()
{
    m_loopThread.assertSameThread();
    deliverHole();
    deliverCollected();
}

} // namespace sound
