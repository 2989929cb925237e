// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/FileWriter.h"

#include "platform/Inquiry.h"
#include "platform/Logging.h"
#include "platform/OpenOutputs.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cstdio>

using namespace std::chrono_literals;

namespace platform {

namespace {

constexpr std::size_t mostWaiting = std::size_t(256) * 1024 * 1024;
constexpr auto seekDeadline = 900ms;
constexpr auto closePatience = 50ms;
constexpr auto firstPause = 100ms;
constexpr auto longestPause = 1000ms;
// Beyond this a disk that does not answer is worth a log line.
constexpr auto silence = 1s;
constexpr auto lookEvery = 1s;
constexpr auto looksAtRest = 250ms; // whether the disk is silent
// How long a byte is held back while memory is short: four fifths of its time at 320 kbit/s, so that sound
// which is captured meanwhile keeps step.
constexpr auto holdForByte = 20us;
constexpr auto longestHold = 200ms;

} // namespace

Patience::Clock::duration Patience::left(Clock::time_point now)
{
    m_left = std::min(longest, m_left + (now - m_since) / share);
    m_since = now;
    // Less than the shortest sleep of a thread is not worth the attempt.
    return m_left < std::chrono::milliseconds(1) ? Clock::duration::zero() : m_left;
}

void Patience::spend(Clock::time_point from, Clock::time_point to)
{
    m_left -= std::min(m_left, to - from);
    m_since = to;
}

FileWriter::FileWriter(Private, const QString &path)
    : m_path(path)
    , m_file(QFile::encodeName(path))
    , m_ring(mostWaiting)
{
}

std::shared_ptr<FileWriter> FileWriter::open(const QString &path, int &error, QDeadlineTimer deadline)
{
    auto writer = std::make_shared<FileWriter>(Private(), path);
    if (writer->m_ring.capacity() == 0)
        error = ENOMEM;
    else if (!runOnSpareThread([writer] { writer->run(); }))
        error = EAGAIN;
    else {
        std::unique_lock lock(writer->m_mutex);
        const auto isDecided
            = [&] { return writer->m_phase == Phase::Open || writer->m_phase == Phase::Refused; };
        writer->m_progress.wait_until(lock, deadline.deadline<Clock>(), isDecided);
        writer->m_isGiven = writer->m_phase == Phase::Open || writer->m_phase == Phase::TakingOver;
        if (writer->m_isGiven) {
            OpenOutputs::instance().add(writer);
            return writer;
        }
        error = writer->m_phase == Phase::Opening ? ETIMEDOUT : writer->m_error;
        writer->m_phase = Phase::Refused;
    }
    qCWarning(lcPlatform, "Cannot open %s: %s.", qPrintable(path), qPrintable(outputErrorReason(error)));
    return nullptr;
}

// The thread

void FileWriter::run()
{
    m_thread.assertSameThread();
    const int error = openFile();
    std::unique_lock lock(m_mutex);
    if (error && !m_isGiven)
        return refuse(lock, error);
    takeOverAtLast(lock, error);
    m_phase = Phase::Open;
    m_progress.notify_all();
    while (hasWork(lock)) {
        if (m_ring.isEmpty())
            lookForFile(lock);
        else
            writeSome(lock);
    }
    if (m_isClosing) {
        lock.unlock();
        OpenOutputs::instance().remove(this);
        m_file.close();
        lock.lock();
    }
    m_ring.dispose();
    m_phase = Phase::Ended;
    m_progress.notify_all();
}

int FileWriter::openFile()
{
    m_thread.assertSameThread();
    const int error = m_file.open();
    return error ? error : m_file.takeOver([this] { return beginTakingOver(); });
}

// A late opening leaves the file as it is, and to whom it belongs. From here on it is not late any more:
// what a disk was told to throw away cannot be taken back.
bool FileWriter::beginTakingOver()
{
    m_thread.assertSameThread();
    const std::scoped_lock lock(m_mutex);
    if (m_phase == Phase::Refused)
        return false;
    m_phase = Phase::TakingOver;
    return true;
}

// A disk that was too slow with that to be waited for, and then refused it, is asked again like any other.
void FileWriter::takeOverAtLast(std::unique_lock<std::mutex> &lock, int error)
{
    m_thread.assertSameThread();
    while (error) {
        fail(lock, error);
        lock.unlock();
        error = m_file.takeOver([] { return true; });
        lock.lock();
    }
}

void FileWriter::refuse(std::unique_lock<std::mutex> &lock, int error)
{
    m_thread.assertSameThread();
    m_error = error;
    m_phase = Phase::Refused;
    lock.unlock();
    m_file.undo();
    m_progress.notify_all();
}

// Sleeps until there is something to write, or for a while after the last write: false when nothing more is
// going to come.
bool FileWriter::hasWork(std::unique_lock<std::mutex> &lock)
{
    m_thread.assertSameThread();
    const auto isCalled = [this] { return !m_ring.isEmpty() || m_isReleased; };
    if (m_isSeen)
        m_wake.wait(lock, isCalled);
    else
        m_wake.wait_for(lock, lookEvery, isCalled);
    return !m_ring.isEmpty() || !m_isSeen;
}

// Once after the last write, and not later: whoever removes a recording then wants it so.
void FileWriter::lookForFile(std::unique_lock<std::mutex> &lock)
{
    m_thread.assertSameThread();
    lock.unlock();
    const bool isGone = m_file.isGone();
    lock.lock();
    m_isSeen = !isGone;
    if (isGone)
        fail(lock, ENOENT);
}

void FileWriter::writeSome(std::unique_lock<std::mutex> &lock)
{
    m_thread.assertSameThread();
    const auto parts = m_ring.parts();
    const qint64 offset = m_offset;
    const auto now = Clock::now();
    const auto begun = m_time.at(now);
    const bool isLooking = now - m_lookedAt >= lookEvery;
    lock.unlock();
    const bool isGone = isLooking && m_file.isGone();
    const ssize_t size = isGone ? -1 : m_file.write(parts.data(), parts[1].iov_len > 0 ? 2 : 1, offset);
    const int error = isGone ? ENOENT : size < 0 ? errno : EIO;
    if (size > 0)
        m_ring.giveBack(size_t(size));
    lock.lock();
    if (isLooking && !isGone)
        m_lookedAt = now;
    if (size <= 0) {
        if (error != EINTR)
            fail(lock, error);
        return;
    }
    m_isSeen = false;
    m_ring.takeOut(size_t(size));
    m_offset += size;
    m_end = std::max(m_end, m_offset);
    m_waitingSince = begun;
    m_pause = firstPause;
    m_error = 0; // a slow disk that works again may not catch up for long
    if (m_ring.isEmpty())
        settle(lock);
    else
        m_progress.notify_all();
}

void FileWriter::fail(std::unique_lock<std::mutex> &lock, int error)
{
    m_thread.assertSameThread();
    m_error = error;
    announce(lock, outputErrorReason(error));
    m_pause = std::clamp<std::chrono::milliseconds>(m_pause, firstPause, longestPause);
    m_wake.wait_for(lock, m_pause, [] { return false; });
    m_pause *= 2;
    findAgain(lock);
}

void FileWriter::findAgain(std::unique_lock<std::mutex> &lock)
{
    m_thread.assertSameThread();
    qint64 written = m_end;
    lock.unlock();
    const bool isFound = m_file.findAgain(written);
    lock.lock();
    if (!isFound)
        return;
    // New bytes go behind those that are there.
    m_lost += m_end - written;
    m_offset = std::min(m_offset, written);
    m_end = written;
    if (m_ring.isEmpty())
        settle(lock);
}

// Everything is in the file.
void FileWriter::settle(std::unique_lock<std::mutex> &lock)
{
    m_thread.assertSameThread();
    m_progress.notify_all();
    m_error = 0;
    if (!std::exchange(m_isAnnounced, false))
        return;
    const qint64 lost = m_lost;
    lock.unlock();
    if (lost > 0)
        qCWarning(lcPlatform, "%s is complete up to now but for %lld bytes.", qPrintable(m_path), lost);
    else
        qCInfo(lcPlatform, "%s is complete up to now.", qPrintable(m_path));
    lock.lock();
}

void FileWriter::announce(std::unique_lock<std::mutex> &lock, const QString &trouble)
{
    if (std::exchange(m_isAnnounced, true))
        return;
    lock.unlock();
    qCWarning(lcPlatform, "Cannot write %s: %s. What comes meanwhile waits in memory.", qPrintable(m_path),
        qPrintable(trouble));
    lock.lock();
}

// The others

bool FileWriter::write(const char *bytes, std::size_t count)
{
    const OverlapCheck::Call call(m_calls);
    std::unique_lock lock(m_mutex);
    const bool keepsStep = m_ring.isEmpty();
    if (!m_ring.append(bytes, count)) {
        const bool isFirst = m_lost == 0;
        m_lost += qint64(count);
        lock.unlock();
        if (isFirst)
            qCWarning(lcPlatform, "More waits for %s than fits into memory; what comes now is lost.",
                qPrintable(m_path));
        return false;
    }
    const auto now = Clock::now();
    const auto time = m_time.at(now);
    if (!keepsStep) {
        if (time - m_waitingSince > silence)
            announce(lock, outputErrorReason(ETIMEDOUT));
        holdBack(lock, count);
        return true;
    }
    m_waitingSince = time;
    m_wake.notify_one();
    const auto patience = m_error ? Clock::duration::zero() : m_patience.left(now);
    if (patience > Clock::duration::zero()) {
        m_progress.wait_for(lock, patience, [this] { return m_ring.isEmpty(); });
        m_patience.spend(now, Clock::now());
    }
    return true;
}

// The silence that stands for a sleep is encoded a hundred times faster than sound comes. It must not take
// the memory that sound needs until the disk is awake, too.
void FileWriter::holdBack(std::unique_lock<std::mutex> &lock, std::size_t count)
{
    const auto hold = std::min<Clock::duration>(longestHold, count * holdForByte);
    m_progress.wait_for(lock, hold, [this] { return m_ring.size() <= m_ring.capacity() / 2; });
}

std::optional<qint64> FileWriter::seek(qint64 offset, int whence)
{
    const OverlapCheck::Call call(m_calls);
    std::unique_lock lock(m_mutex);
    const qint64 current = m_offset + qint64(m_ring.size());
    if (whence == SEEK_CUR)
        offset += current;
    else if (whence == SEEK_END)
        offset += std::max(m_end, current);
    if (offset == current)
        return offset;
    if (offset < 0 || !m_progress.wait_for(lock, seekDeadline, [this] { return m_ring.isEmpty(); }))
        return std::nullopt;
    m_offset = offset;
    return offset;
}

void FileWriter::release()
{
    const OverlapCheck::Call call(m_calls);
    std::unique_lock lock(m_mutex);
    letGo(lock);
}

void FileWriter::letGo(std::unique_lock<std::mutex> &lock)
{
    m_isReleased = true;
    m_wake.notify_one();
    if (m_ring.isEmpty())
        return;
    lock.unlock();
    runOnSpareThread([self = shared_from_this()] { self->watchOverRest(); });
    lock.lock();
}

// Until now every write showed whether the disk is silent.
void FileWriter::watchOverRest()
{
    std::unique_lock lock(m_mutex);
    while (!m_ring.isEmpty() && !m_isAnnounced) {
        if (m_time.at(Clock::now()) - m_waitingSince > silence)
            announce(lock, outputErrorReason(ETIMEDOUT));
        else
            m_progress.wait_for(lock, looksAtRest, [this] { return m_ring.isEmpty(); });
    }
}

void FileWriter::close()
{
    const OverlapCheck::Call call(m_calls);
    std::unique_lock lock(m_mutex);
    m_isClosing = true;
    letGo(lock);
    m_progress.wait_for(lock, closePatience, [this] { return m_phase == Phase::Ended; });
}

OutputState FileWriter::state() const
{
    const std::scoped_lock lock(m_mutex);
    const auto time = m_time.at(Clock::now());
    const auto waitingFor = m_ring.isEmpty() ? Clock::duration::zero() : time - m_waitingSince;
    return {m_path, qint64(m_ring.size()), waitingFor, m_error, m_lost, !m_isSeen};
}

bool FileWriter::finish(Clock::time_point deadline)
{
    std::unique_lock lock(m_mutex);
    m_isReleased = true;
    m_wake.notify_one();
    return m_progress.wait_until(lock, deadline, [this] { return m_phase == Phase::Ended; });
}

} // namespace platform
