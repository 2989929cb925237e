// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <functional>

namespace platform {

// What a folder has room for.
struct FolderRoom {
    enum Kind { Missing, NotAFolder, NotWritable, Writable };
    Kind kind = Missing;
    // That this user may still write on the folder's disk. 0 for all kinds but Writable.
    qint64 bytes = 0;
};

// Asks the disk on a thread of its own, and gives the answer on the main thread, never inside this call. From
// a disk that does not answer none comes. A path that is not absolute is missing. Main thread only.
void askForRoom(const QString &path, std::function<void(const FolderRoom &room)> answer);

// Answers in place of the disk, on the main thread, in a test for example. An empty function brings the disk
// back.
void setDiskSpace(std::function<FolderRoom(const QString &path)> diskSpace);

} // namespace platform
