// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/ThreadCheck.h"

#include <QByteArray>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <sys/stat.h>
#include <sys/uio.h>

namespace platform {

// A file that is written by one process at a time, and found again when it has gone with its folder or its
// disk. Every call may take as long as the disk does. One thread, which the destructor alone may not be on;
// results are 0 or an errno.
class OutputFile {
public:
    explicit OutputFile(QByteArray path);
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    // Opens the file, or creates it, and locks it against other processes, for which it is EBUSY then; a file
    // system without locks goes without. What is in it stays, and who writes to it in this process goes on.
    int open();
    // Empties the file; what earlier objects of this process write to it comes to nothing from then on. After
    // a later one has taken it over it stays as it is, and what this one writes comes to nothing. When none
    // of them is at it, and before anything has changed, it is asked whether that is still wanted: if not,
    // ECANCELED, and they go on as if nothing had been, as also after any other error.
    int takeOver(const std::function<bool()> &isWanted);
    // Closes the file, and removes it again where open() has created it and nobody else here writes to it.
    void undo();
    void close();

    // Bytes written from this offset on, or -1 and errno.
    ssize_t write(const iovec *parts, int count, qint64 offset);

    // Whether the file can no longer be reached under any name. A disk that does not say so has not lost it.
    bool isGone() const;
    // Looks for a file that has gone, or whose disk has: the same file under the path again, or else a new
    // one with everything that can still be read. True when there is another one now; `written` becomes the
    // number of bytes that are in it, less than before where a disk has lost some.
    bool findAgain(qint64 &written);

    // What others of the same file in this process may ask for and change.
    struct Share {
        std::mutex writing; // held while the file is changed
        std::atomic<bool> isTakenOver = false;
        const std::uint64_t number = ++s_made; // whoever was made later takes over from earlier ones

    private:
        static inline std::atomic<std::uint64_t> s_made = 0;
    };

private:
    int truncate();
    int descriptorFor(int flags) const;
    int lock(int descriptor);
    bool isMineAlone() const;
    bool beginsLikeThis(int descriptor) const;
    void replaceBy(int descriptor);
    bool isTakenOver() const { return m_share->isTakenOver.load(); }

    const QByteArray m_path;
    ThreadCheck m_thread;
    QByteArray m_beginning; // the first bytes that were written: by these the file is known again
    int m_descriptor = -1;
    bool m_isCreated = false;
    const std::shared_ptr<Share> m_share = std::make_shared<Share>();
};

} // namespace platform
