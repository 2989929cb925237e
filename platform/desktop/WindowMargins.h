// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMargins>

class QWidget;

namespace platform {

// Tells the window system how much of a frameless window is only shadow, in device-independent pixels: it
// places and snaps the window by what is within, the pointer passes through the rest, and compositors add no
// shadow of their own. For a window that has its handle and its size; again whenever one of them changes.
// Main thread only.
void setWindowMargins(QWidget *window, const QMargins &margins);

} // namespace platform
