// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMargins>

class QWindow;

// What several files need of Wayland. Main thread only.
namespace platform {

bool isOnWayland();
// The part of a window that is its shadow: the compositor counts what is within as the window.
void setWaylandMargins(QWindow *window, const QMargins &margins);

} // namespace platform
