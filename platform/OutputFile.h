// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <atomic>
#include <memory>
#include <sys/stat.h>
#include <sys/uio.h>

namespace platform {

// A file that is written by one process at a time, and found again when it has gone with its folder or its
// disk. Every call may take as long as the disk does. One thread; results are 0 or an errno.
class OutputFile {
public:
    explicit OutputFile(QByteArray path);
    ~OutputFile() { close(); }
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    // Opens the file, or creates it, and locks it against other processes, for which it is EBUSY then; a file
    // system without locks goes without. What is in it stays. Where this process has the file open already,
    // this takes it over: the other object's writes come to nothing from now on.
    int open();
    int truncate();
    // Closes the file, and removes it again where open() has created it.
    void undo();
    void close();

    // Bytes written from this offset on, or -1 and errno.
    ssize_t write(const iovec *parts, int count, qint64 offset);

    // Whether the file can no longer be reached under any name, or not at all.
    bool isGone() const;
    // Looks for a file that has gone, or whose disk has: the same file under the path again, or else a new
    // one with everything that can still be read. True when there is another one now; `written` becomes the
    // number of bytes that are in it, less than before where a disk has lost some.
    bool findAgain(qint64 &written);

private:
    int descriptorFor(int flags) const;
    int lock(int descriptor);
    bool beginsLikeThis(int descriptor) const;
    void replaceBy(int descriptor);
    bool isTakenOver() const { return m_isTakenOver->load(); }

    const QByteArray m_path;
    QByteArray m_beginning; // the first bytes that were written: by these the file is known again
    int m_descriptor = -1;
    bool m_isCreated = false;
    const std::shared_ptr<std::atomic<bool>> m_isTakenOver = std::make_shared<std::atomic<bool>>(false);
};

} // namespace platform
