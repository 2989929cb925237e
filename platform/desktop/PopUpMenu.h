// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

class QMenu;
class QWidget;

namespace platform {

// Pops the menu up under the control, at least as wide as the control, and returns when the menu has closed.
// The main loop goes on meanwhile. Does nothing when either is null or the menu is empty. Main thread only.
void popUpMenu(QMenu *menu, QWidget *view);

} // namespace platform
