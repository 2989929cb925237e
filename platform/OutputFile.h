// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <functional>

namespace platform {

// What can be said about a file that is being written, and about the disk it is on.
struct OutputFileState {
    bool folderExists = false;
    bool fileExists = false;
    qint64 fileSize = 0; // bytes
    qint64 bytesFree = 0; // that this user may still write to the disk
};

// May block for as long as a disk or a network takes to answer. Any thread.
OutputFileState examineOutputFile(const QString &path);

// The same from a thread of its own; `done` is called later on the main thread, from the main loop.
void examineOutputFileLater(const QString &path, std::function<void(const OutputFileState &)> done);

// Answers in place of the disk, in a test for example; called on any thread. An empty function brings the
// disk back.
void setOutputFileExaminer(std::function<OutputFileState(const QString &path)> examiner);

} // namespace platform
