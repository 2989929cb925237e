// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace platform {

// Bytes that this user may still write on the disk that holds the folder; nothing when `path` is no folder or
// may not be written to. Main thread only.
std::optional<qint64> writableBytes(const QString &path);

// Answers in place of the disk, in a test for example. An empty function brings the disk back.
void setDiskSpace(std::function<std::optional<qint64>(const QString &path)> diskSpace);

} // namespace platform
