// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

namespace platform {

// The application's main window, for windows that lead back to it without knowing the application. Null
// before it was made known and after its destruction. Main thread only.
QWidget *mainWindow();
void setMainWindow(QWidget *window);

} // namespace platform
