// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/CaptureQueue.h"

#include <algorithm>
#include <array>
#include <new>
#include <pthread.h>
#include <system_error>
#include <utility>

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

namespace {

// Each delivery wakes this thread, the one that writes the file, and the main thread, and makes a frame of
// the level meter there: twenty a second, and every second one with another tenth of the elapsed time.
constexpr auto batchTime = 50ms;
// The silence of a night keeps an encoder busy for half a minute. Every so long it leaves the processor to
// others for as long as it has had it: what waits behind it comes later, and the desktop goes on.
constexpr auto turn = 5ms;
constexpr auto longestRest = 100ms;
// What comes in smaller pieces, or was the last for now.
constexpr auto patience = 100ms;

// Enough for as long as whoever takes the sound is usually away; more is only reserved when it is needed, and
// given back.
constexpr std::size_t usualBytes = 128 << 10;
// More than twenty minutes of 16-bit stereo, in which the silence of a long sleep is encoded. Whoever takes
// the sound is given up on then, and the sound is lost.
constexpr std::size_t mostBytes = 256 << 20;
// What silence is delivered from, in as many pieces as it takes. All zeros is silence in every capture
// format. A quarter of a second, so that elapsed time goes on while a lot is delivered.
alignas(std::max_align_t) constexpr std::array<std::byte, 49152> zeros{};

// Where memory is short, room is made when it is needed.
void makeRoom(std::vector<std::byte> &bytes)
{
    try {
        bytes.reserve(usualBytes);
    } catch (const std::bad_alloc &) {
    }
}

} // namespace

CaptureQueue::CaptureQueue(const sound::SampleSpec &spec, Deliver deliver)
    : m_deliver(std::move(deliver))
    , m_piece(zeros.size() - zeros.size() % spec.bytesPerFrame())
    , m_batch(spec.rate * spec.bytesPerFrame() * batchTime / 1s)
{
    makeRoom(m_incoming.bytes);
}

CaptureQueue::~CaptureQueue()
{
    end();
}

bool CaptureQueue::start()
{
    platform::assertMainThread();
    {
        const std::scoped_lock lock(m_mutex);
        m_heldUntil = Clock::time_point::max();
    }
    if (m_thread.joinable())
        return true;
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error &) {
        return false;
    }
    return true;
}

void CaptureQueue::release()
{
    releaseAt(Clock::now());
}

void CaptureQueue::releaseAt(Clock::time_point latest)
{
    const std::scoped_lock lock(m_mutex);
    m_heldUntil = std::min(m_heldUntil, latest);
    m_changed.notify_one();
}

bool CaptureQueue::add(const void *frames, std::size_t bytes)
{
    const auto *const first = static_cast<const std::byte *>(frames);
    const std::scoped_lock lock(m_mutex);
    if (m_incoming.bytes.size() + bytes > mostBytes)
        return false;
    try {
        m_incoming.bytes.insert(m_incoming.bytes.end(), first, first + bytes);
    } catch (const std::bad_alloc &) {
        return false;
    }
    m_soundLeft += bytes;
    if (!m_delivering && (std::exchange(m_resting, false) || m_incoming.bytes.size() >= m_batch))
        m_changed.notify_one();
    return true;
}

void CaptureQueue::addSilence(std::size_t bytes)
{
    const std::scoped_lock lock(m_mutex);
    const std::size_t behind = m_incoming.bytes.size();
    try {
        if (m_incoming.silences.empty() || m_incoming.silences.back().behind != behind)
            m_incoming.silences.push_back({behind, 0});
    } catch (const std::bad_alloc &) {
        return; // it is missing all the same
    }
    m_incoming.silences.back().bytes += bytes;
    m_silenceLeft += bytes;
    m_resting = false; // a little sound behind it is let go in time
    m_changed.notify_one();
}

bool CaptureQueue::waitUntilDelivered(std::chrono::milliseconds deadline)
{
    std::unique_lock lock(m_mutex);
    if (!m_thread.joinable() || Clock::now() < m_heldUntil)
        return true;
    m_hurried = m_awaited = true;
    m_changed.notify_one();
    const bool all
        = m_delivered.wait_for(lock, deadline, [this] { return m_incoming.isEmpty() && !m_delivering; });
    m_hurried = m_awaited = false;
    return all;
}

bool CaptureQueue::isEmpty() const
{
    const std::scoped_lock lock(m_mutex);
    return m_incoming.isEmpty() && !m_delivering;
}

void CaptureQueue::whenDelivered(std::function<void()> then)
{
    platform::assertMainThread();
    std::unique_lock lock(m_mutex);
    m_whenDelivered = std::move(then);
    if (m_incoming.isEmpty() && !m_delivering)
        delivered(lock);
}

void CaptureQueue::leaveOutSilence()
{
    const std::scoped_lock lock(m_mutex);
    m_soundOnly = true;
}

void CaptureQueue::end()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_ended = true;
        m_changed.notify_one();
    }
    if (m_thread.joinable())
        m_thread.join();
}

bool CaptureQueue::mayDeliver() const
{
    const bool worthIt = m_hurried || m_incoming.bytes.size() >= m_batch || !m_incoming.silences.empty();
    return worthIt && !m_incoming.isEmpty() && Clock::now() >= m_heldUntil;
}

// Returns when something may be delivered, or has changed. What is too little alone is let go after a while.
void CaptureQueue::wait(std::unique_lock<std::mutex> &lock)
{
    if (m_resting || m_heldUntil == Clock::time_point::max())
        return m_changed.wait(lock);
    const auto latest = std::max(m_heldUntil, Clock::now() + patience);
    if (m_changed.wait_until(lock, latest) == std::cv_status::no_timeout)
        return;
    m_resting = m_incoming.isEmpty();
    m_hurried = !m_resting;
}

void CaptureQueue::run()
{
    pthread_setname_np(pthread_self(), "flipside-take");
    Batch batch;
    makeRoom(batch.bytes);
    std::unique_lock lock(m_mutex);
    while (!m_ended) {
        if (!mayDeliver()) {
            wait(lock);
            continue;
        }
        std::swap(batch, m_incoming);
        m_delivering = true;
        lock.unlock();
        deliver(batch);
        lock.lock();
        m_delivering = false;
        m_hurried = m_awaited;
        if (m_incoming.isEmpty())
            delivered(lock);
    }
}

void CaptureQueue::delivered(std::unique_lock<std::mutex> &lock)
{
    m_delivered.notify_all();
    const auto then = std::exchange(m_whenDelivered, nullptr);
    if (!then)
        return;
    lock.unlock();
    then();
    lock.lock();
}

void CaptureQueue::deliver(Batch &batch)
{
    std::size_t done = 0;
    for (const auto &[behind, bytes] : batch.silences) {
        deliverSound(batch.bytes.data() + done, behind - done);
        deliverSilence(bytes);
        done = behind;
    }
    deliverSound(batch.bytes.data() + done, batch.bytes.size() - done);
    if (batch.bytes.capacity() > 8 * usualBytes) {
        batch.bytes = {};
        makeRoom(batch.bytes);
    }
    batch.bytes.clear();
    batch.silences.clear();
}

void CaptureQueue::deliverSound(const std::byte *frames, std::size_t bytes)
{
    m_captureThread.assertSameThread();
    for (std::size_t part = 0; bytes > 0; bytes -= part, frames += part) {
        part = std::min(bytes, m_piece);
        if (!mayDeliver(part, 0))
            return;
        m_deliver(frames, part);
    }
}

void CaptureQueue::deliverSilence(std::size_t bytes)
{
    m_captureThread.assertSameThread();
    auto begin = Clock::now();
    for (std::size_t part = 0; bytes > 0; bytes -= part) {
        part = std::min(bytes, m_piece);
        if (!mayDeliver(0, part))
            return;
        m_deliver(zeros.data(), part);
        if (const auto worked = Clock::now() - begin; worked >= turn) {
            rest(std::min<Clock::duration>(worked, longestRest));
            begin = Clock::now();
        }
    }
}

// Not while somebody waits.
void CaptureQueue::rest(Clock::duration time)
{
    m_captureThread.assertSameThread();
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, time, [this] { return m_awaited || m_soundOnly || m_ended; });
}

// What is about to be delivered is left no longer.
bool CaptureQueue::mayDeliver(std::size_t sound, std::size_t silence)
{
    const std::scoped_lock lock(m_mutex);
    if (m_ended || (silence > 0 && m_soundOnly))
        return false;
    m_soundLeft -= sound;
    m_silenceLeft -= silence;
    return true;
}
