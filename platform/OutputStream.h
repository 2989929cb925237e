// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/OutputState.h"

#include <QDeadlineTimer>
#include <cstdio>
#include <memory>

namespace platform {

class FileWriter;

// A C stream for writing and seeking, opened as by "w+b", that never waits for a disk: behind it is a
// FileWriter. It has no buffer of its own, cannot be read from and has no descriptor.
class OutputStream {
public:
    OutputStream();
    ~OutputStream();
    OutputStream(const OutputStream &) = delete;
    OutputStream &operator=(const OutputStream &) = delete;

    // Creates or truncates the file; not beyond the deadline. False when that fails: state() tells the error.
    bool open(const QString &path, QDeadlineTimer deadline = QDeadlineTimer(750));
    // Null while it is not open.
    std::FILE *get() const { return m_file; }
    // When everything is written; does not wait for that.
    void close();
    // The stream as it is, open, for whoever keeps it until the process exits; nothing more is written to it.
    std::FILE *abandon();

    // Of the file that was opened last, or could not be.
    OutputState state() const;

private:
    std::shared_ptr<FileWriter> m_writer;
    std::FILE *m_file = nullptr;
    OutputState m_refusal;
};

} // namespace platform
