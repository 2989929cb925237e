// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Seam.h"

#include <QUrl>
#include <functional>

namespace platform {

// Shows the desktop's file manager with the file or folder selected and returns at once. Where no file
// manager answers on the session bus within some seconds, the desktop's portal is asked, and where that does
// not do it either, the containing folder is opened, and Opener tells when nothing opens it. Main thread
// only.
void revealInFileManager(const QUrl &fileUrl);

// Takes the requests.
Seam<std::function<void(const QUrl &fileUrl)>> &fileManager();

} // namespace platform
