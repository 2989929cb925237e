// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QUrl>
#include <functional>

namespace platform {

// Shows the desktop's file manager with the file or folder selected and returns at once. Where no file
// manager answers on the session bus within some seconds, the containing folder is opened. A failure is
// ignored. Main thread only.
void revealInFileManager(const QUrl &fileUrl);

// Takes the requests in place of the file manager, in a test for example. An empty function brings it back.
void setFileManager(std::function<void(const QUrl &fileUrl)> fileManager);

} // namespace platform
