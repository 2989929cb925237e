// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Seam.h"

#include <QUrl>
#include <functional>
#include <optional>

class QWidget;

namespace platform {

// Called exactly once, from the main loop: with the folder, or with nothing when the user cancelled or the
// window went away.
using FolderChoice = std::function<void(const std::optional<QUrl> &folder)>;

// Opens a chooser for one folder on `window` and returns at once; until it is closed the window takes no
// input. While one is open on the window, another request brings it to the front and is answered with
// nothing. The window owns the chooser. Main thread only.
void chooseFolder(QWidget *window, FolderChoice choice);

// Asks the user.
Seam<std::function<void(QWidget *window, FolderChoice choice)>> &folderChooser();

} // namespace platform
