// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/MountTable.h"

#include <QByteArray>
#include <QUrl>
#include <optional>

namespace platform {

// A token from which a folder is found again at a later launch, even when it was renamed in place, reached
// over a link that has changed, or is on a disk that is mounted under another name. It is opaque to everybody
// else. All of this asks disks and may take for ever: on any thread, but from the main thread only through an
// Inquiry.

// Empty when the address is not that of an existing local folder.
QByteArray bookmarkDataForFolder(const QUrl &folder, const MountFiles &files = {});

// Where the folder is now. Nothing when it is gone, on a disk that is not there, replaced by a file or moved
// out of its parent folder, or when the bytes are no token.
std::optional<QUrl> folderForBookmarkData(const QByteArray &data, const MountFiles &files = {});

// Where the folder was when the token was made; empty when the bytes are no token. Asks nobody.
QString pathInBookmarkData(const QByteArray &data);

} // namespace platform
