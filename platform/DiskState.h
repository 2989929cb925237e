// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Seam.h"

#include <QString>
#include <functional>
#include <optional>

namespace platform {

// What a disk says about a folder, and about one file in it.
struct DiskState {
    // Unknown: the disk reports an error, or the way to the folder, or to the file, is closed to this user.
    enum Folder { Missing, NotAFolder, NotWritable, Writable, Unknown };

    Folder folder = Missing;
    // How much this user may still write to the folder's disk. Nothing where there is no folder, and on file
    // systems that do not tell their size.
    std::optional<qint64> bytesFree = {};
    bool fileExists = false;
    qint64 fileSize = 0; // bytes

    bool folderExists() const { return folder == NotWritable || folder == Writable; }
};

// The question, for an Inquiry: it may take for ever. A folder whose path is not absolute is missing. Made on
// the main thread, asked on any.
std::function<DiskState()> questionToDisk(const QString &folder, const QString &fileName = {});

// Answers the question; it is called on any thread.
Seam<std::function<DiskState(const QString &folder, const QString &fileName)>> &disk();

} // namespace platform
