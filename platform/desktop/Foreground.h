// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QWidget;

namespace platform {

// What the desktop has given this process, so that the window which it asks for may come to the front; empty
// when it was not started from the desktop. Before the application object is made, which takes it.
QString launchToken();

// Shows a window in front of all others, restored if it was minimised, and with the keyboard, as far as the
// desktop allows that. `token` is the one of another process, if that is who asks. Main thread only.
void bringToFront(QWidget *window, const QString &token = {});

} // namespace platform
