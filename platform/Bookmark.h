// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QUrl>
#include <optional>

namespace platform {

// A token from which a folder is found again at a later launch, even when it was renamed in place. It
// remembers the folder's path, device, inode and time of birth, and is opaque to everybody else. Main thread.

// Empty when the address is not that of an existing local folder.
QByteArray bookmarkDataForFolder(const QUrl &folder);

// Where the folder is now. Nothing when it is gone, on a disk that is not there, replaced by a file, moved
// out of its parent folder, when the bytes are no token, or when the file system does not answer within a
// second; then it is not asked again for two seconds.
std::optional<QUrl> folderForBookmarkData(const QByteArray &data);

} // namespace platform
