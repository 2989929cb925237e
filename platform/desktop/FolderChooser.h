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

struct FolderQuestion {
    QString title; // what the folder is for
    QString beginIn; // a path; empty for the user's music
};

// Opens a chooser for one folder on `window` and returns at once; until it is closed the window takes no
// input. It is the desktop's own, and the toolkit's where the desktop has none or does not answer within some
// seconds. While one is open on the window, another request brings it to the front and is answered with
// nothing. The window owns the chooser. Main thread only.
void chooseFolder(QWidget *window, const FolderQuestion &question, FolderChoice choice);

// Asks the user.
using FolderChooser
    = std::function<void(QWidget *window, const FolderQuestion &question, FolderChoice choice)>;
Seam<FolderChooser> &folderChooser();

} // namespace platform
