// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/Playback.h"

#include "platform/ForPeople.h"
#include "platform/Inquiry.h"
#include "platform/Logging.h"
#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <cstring>

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr std::uint32_t secondsAhead = 2;
// As long as for a sound server that makes no progress. Looks are counted, not the time between them, in
// which this program may have stood still itself.
constexpr int patientLooks = 5;
constexpr auto lookEvery = 1s;

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

void Playback::start()
{
    platform::assertMainThread();
    m_running = true;
    m_starving = steady_clock::now();
    if (!platform::runOnSpareThread([self = shared_from_this()] { self->read(); }))
        return post([](Playback &playback) {
            playback.end(platform::reason(QT_TRANSLATE_NOOP("Reason", "there is no room for a thread")));
        });
    watchDisk();
}

void Playback::watchDisk()
{
    platform::assertMainThread();
    std::optional<steady_clock::time_point> starving;
    {
        const std::scoped_lock lock(m_mutex);
        starving = m_paused ? std::nullopt : m_starving;
    }
    m_looks = starving && starving == std::exchange(m_lastStarving, starving) ? m_looks + 1 : 0;
    if (m_looks == patientLooks)
        return end(platform::reason(QT_TRANSLATE_NOOP("Reason", "the disk does not answer")));
    QTimer::singleShot(lookEvery, qApp, [weak = weak_from_this()] {
        if (const auto self = weak.lock(); self && self->m_running)
            self->watchDisk();
    });
}

void Playback::stop()
{
    platform::assertMainThread();
    m_running = false;
    std::unique_ptr<sound::PlaybackStream> stream;
    {
        const std::scoped_lock lock(m_mutex);
        m_stopped = true;
        stream = std::move(m_stream);
    }
    m_room.notify_one();
}

KTAudioTransportState Playback::state() const
{
    platform::assertMainThread();
    if (!m_running)
        return KTAudioTransportStateStopped;
    return m_paused ? KTAudioTransportStatePaused : KTAudioTransportStateRunning;
}

void Playback::pause()
{
    platform::assertMainThread();
    m_paused = true;
    if (m_stream)
        m_stream->pause();
}

void Playback::resume()
{
    platform::assertMainThread();
    m_paused = false;
    {
        const std::scoped_lock lock(m_mutex);
        if (m_starving)
            m_starving = steady_clock::now();
    }
    if (m_stream)
        m_stream->resume();
}

void Playback::read()
{
    m_readingThread.assertSameThread();
    if (!m_source.open(m_path)) {
        post([problem = m_source.error()](Playback &playback) { playback.end(problem); });
        return;
    }
    std::span<const std::byte> packet = m_source.nextPacket();
    m_format = m_source.format();
    m_totalPackets = m_source.totalPacketCount();
    m_packetBytes = packet.size();
    {
        const std::scoped_lock lock(m_mutex);
        m_ahead.resize(std::size_t(m_format.mSampleRate) * secondsAhead * m_format.mBytesPerFrame);
    }
    post([](Playback &playback) { playback.opened(); });
    while (!packet.empty() && append(packet))
        packet = m_source.nextPacket();
    const std::scoped_lock lock(m_mutex);
    m_atEnd = true;
    m_starving.reset();
    m_problem = m_source.error();
    if (m_stream)
        m_stream->more();
}

// False when nobody wants it any more.
bool Playback::append(std::span<const std::byte> samples)
{
    m_readingThread.assertSameThread();
    std::unique_lock lock(m_mutex);
    m_starving.reset();
    while (!samples.empty() && !m_stopped) {
        if (m_size == m_ahead.size()) {
            m_room.wait(lock);
            continue;
        }
        const std::size_t at = (m_begin + m_size) % m_ahead.size();
        const std::size_t part = std::min({samples.size(), m_ahead.size() - m_size, m_ahead.size() - at});
        std::memcpy(m_ahead.data() + at, samples.data(), part);
        m_size += part;
        samples = samples.subspan(part);
        if (m_stream && std::exchange(m_hungry, false))
            m_stream->more();
    }
    return !m_stopped;
}

void Playback::opened()
{
    platform::assertMainThread();
    auto [stream, problem] = sound::soundSystem()->openPlayback(specOf(m_format), this);
    if (!stream)
        return end(problem);
    if (m_paused)
        stream->pause();
    const std::scoped_lock lock(m_mutex);
    m_stream = std::move(stream);
    // What it asked for in vain before this thread was here.
    m_stream->more();
}

// The reader is woken when there is room for a while, not for every piece.
sound::PlaybackFill Playback::fillPlayback(void *buffer, std::size_t bytes)
{
    m_soundThread.assertSameThread();
    std::size_t filled = 0;
    bool atEnd = false;
    std::int64_t before = 0;
    {
        const std::scoped_lock lock(m_mutex);
        before = m_played;
        while (filled < bytes && m_size > 0) {
            const std::size_t part = std::min({bytes - filled, m_size, m_ahead.size() - m_begin});
            std::memcpy(static_cast<std::byte *>(buffer) + filled, m_ahead.data() + m_begin, part);
            m_begin = (m_begin + part) % m_ahead.size();
            m_size -= part;
            filled += part;
        }
        m_played += std::int64_t(filled);
        atEnd = m_atEnd && m_size == 0;
        m_hungry = filled < bytes;
        if (m_hungry && !m_atEnd && !m_starving)
            m_starving = steady_clock::now();
        if (m_size <= m_ahead.size() * 3 / 4)
            m_room.notify_one();
    }
    if (filled > 0) {
        const std::int64_t first = packetsBefore(before);
        Fill fill = {buffer, first, std::uint32_t(packetsBefore(before + std::int64_t(filled)) - first),
            std::uint32_t(filled), m_totalPackets, &m_format};
        m_listener.filled(fill);
    }
    return {filled, atEnd};
}

std::int64_t Playback::packetsBefore(std::int64_t bytes) const
{
    const auto packet = std::int64_t(m_packetBytes);
    return packet > 0 ? (bytes + packet - 1) / packet : 0;
}

void Playback::playbackEnded(sound::PlaybackEnd end, const QString &problem)
{
    post([heard = end == sound::PlaybackEnd::Heard, problem](Playback &playback) {
        std::unique_lock lock(playback.m_mutex);
        const QString reason = heard ? playback.m_problem : problem;
        lock.unlock();
        playback.end(reason);
    });
}

// A playback that was stopped in the meantime reports nothing.
void Playback::post(std::function<void(Playback &)> work)
{
    platform::postToMainQueue([weak = weak_from_this(), work = std::move(work)] {
        const auto playback = weak.lock();
        if (playback && playback->m_running)
            work(*playback);
    });
}

void Playback::end(const QString &problem)
{
    platform::assertMainThread();
    stop();
    if (!problem.isEmpty())
        qCWarning(lcAudio, "Can't play %s: %s", qUtf8Printable(m_path), qUtf8Printable(problem));
    m_listener.ended(problem);
}
