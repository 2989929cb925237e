// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/OutputFile.h"
#include "platform/OutputRing.h"
#include "platform/OutputState.h"
#include "platform/OwnTime.h"
#include "platform/ThreadCheck.h"

#include <QDeadlineTimer>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

namespace platform {

// How long a caller that writes may wait for the disk: 50 ms at once, and a fifth of the time in the long
// run. A healthy disk never uses that up, also on a busy computer; with one that needs 20 ms for every write,
// whoever captures sound soon waits for a part of it only, and again for all of it when the disk is back.
class Patience {
public:
    using Clock = std::chrono::steady_clock;

    Clock::duration left(Clock::time_point now);
    void spend(Clock::time_point from, Clock::time_point to);

private:
    static constexpr Clock::duration longest = std::chrono::milliseconds(50);
    static constexpr int share = 5;

    Clock::duration m_left = longest;
    Clock::time_point m_since;
};

// Writes one file on a thread of its own, so that nobody has to wait for a disk.
//
// write() returns when the bytes are in the file, as long as the disk keeps step; when it does not, they wait
// in memory, up to 256 MiB, and everything that waits is handed over in one call. From half of that on, more
// than a second of sound in a second has to wait itself. What no longer fits is lost, a whole call at a time,
// the newest first, so that what is in the file stays a valid stream. Errors are taken as passing: every
// write is tried again, at first after 100 ms, then every second, from the offset up to which the file is
// complete. A file that is gone is looked for, too. Bytes count as written when the system has taken them;
// they are not waited for any further (a kill loses none of them, a power cut may). A second after the last
// write the thread checks once more that the file is still there.
//
// The thread lives from open() to release() or close(), and beyond that until everything is in the file. The
// descriptor stays open until close(). What waits when the process exits is given three seconds, together
// with all other files; what is left is said in the log.
//
// The log has one line when a file gets into trouble and one when that ends. Calls of one object must not
// overlap, apart from state(), which any thread may ask.
class FileWriter : public std::enable_shared_from_this<FileWriter> {
    struct Private { };

public:
    using Clock = std::chrono::steady_clock;

    FileWriter(Private, const QString &path);

    // Creates or truncates the file, locked against other processes (which fail to open it so and leave it as
    // it is) and not against this one, whose other writers of the file go on only while this one is refused.
    // Null, with a log line and an errno in `error`, when the file cannot be opened, when that takes longer
    // than the deadline, or when no thread can be had. A file that is only being emptied then is open: what
    // comes waits for its disk.
    static std::shared_ptr<FileWriter> open(const QString &path, int &error, QDeadlineTimer deadline);

    // At the current offset. False when there is no room for them.
    bool write(const char *bytes, std::size_t count);
    // The new offset. Moving away from it waits until everything is written; nothing, and no move, when that
    // takes longer than 900 ms.
    std::optional<qint64> seek(qint64 offset, int whence);

    // Nothing more is going to be written.
    void release();
    // The same, and closes the file after it.
    void close();

    OutputState state() const;

    // For the end of the process: whether everything is written by then.
    bool finish(Clock::time_point deadline);

private:
    enum class Phase { Opening, TakingOver, Open, Refused, Ended };

    void run();
    int openFile();
    bool beginTakingOver();
    void takeOverAtLast(std::unique_lock<std::mutex> &lock, int error);
    void refuse(std::unique_lock<std::mutex> &lock, int error);
    bool hasWork(std::unique_lock<std::mutex> &lock);
    void lookForFile(std::unique_lock<std::mutex> &lock);
    void writeSome(std::unique_lock<std::mutex> &lock);
    void fail(std::unique_lock<std::mutex> &lock, int error);
    void findAgain(std::unique_lock<std::mutex> &lock);
    void settle(std::unique_lock<std::mutex> &lock);
    void announce(std::unique_lock<std::mutex> &lock, const QString &trouble);
    void holdBack(std::unique_lock<std::mutex> &lock, std::size_t count);
    void letGo(std::unique_lock<std::mutex> &lock);
    void watchOverRest();

    const QString m_path;
    OverlapCheck m_calls;
    ThreadCheck m_thread; // the writing one
    OutputFile m_file; // of the thread alone
    mutable std::mutex m_mutex;
    std::condition_variable m_wake; // of the thread: there is something to do
    std::condition_variable m_progress; // of the others: something has been done
    Phase m_phase = Phase::Opening;
    bool m_isGiven = false; // to the one who has opened it
    OutputRing m_ring;
    Patience m_patience;
    qint64 m_offset = 0; // in the file, of the first byte in the ring
    qint64 m_end = 0; // of the file
    bool m_isSeen = true; // the file, since the last write
    bool m_isReleased = false;
    bool m_isClosing = false;
    bool m_isAnnounced = false;
    int m_error = 0;
    qint64 m_lost = 0;
    mutable OwnTime m_time; // who asks for the state looks at it, too
    Clock::duration m_waitingSince{}; // by that time
    Clock::time_point m_lookedAt; // when the file was last seen under some name
    std::chrono::milliseconds m_pause{};
};

} // namespace platform
