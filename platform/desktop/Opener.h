// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

class QUrl;

namespace platform {

// Opens a page or a folder in whatever the desktop opens such things with, and returns at once. A failure is
// ignored. Main thread only.
void openOnDesktop(const QUrl &url);

} // namespace platform
