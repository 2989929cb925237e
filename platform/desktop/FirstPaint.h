// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

class QWidget;

namespace platform {

// Runs `work` once, from the main loop, after the widget has been painted for the first time: what may wait
// must not hold up the first sight of a window. Main thread only.
void afterFirstPaint(QWidget *widget, std::function<void()> work);

} // namespace platform
