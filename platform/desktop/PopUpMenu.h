// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

class QMenu;
class QWidget;

namespace platform {

// Pops the menu up under the control, as wide as it at least, and returns when the menu has closed. The main
// loop goes on meanwhile. Does nothing without both, or for an empty menu. Main thread only.
void popUpMenu(QMenu *menu, QWidget *view);

} // namespace platform
