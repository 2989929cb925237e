// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

namespace platform {

// Raises the soft limit of open files to the hard one. Recordings keep their files open until the process
// exits, and the usual soft limit of 1024 would end a day of short ones.
void raiseOpenFileLimit();

// Whether this process may open that many more files. Any thread; asks no disk.
bool canOpenMoreFiles(int count);

} // namespace platform
