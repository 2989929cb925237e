// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

// Exchanging two windows without a flip.
namespace WindowExchange {

// Shown, also when it was minimised, above the other windows and active.
void bringToFront(QWidget *window);

// The new window is there before the old one goes, so that nothing shows through in between. Each may be
// null.
void exchange(QWidget *oldWindow, QWidget *newWindow);

} // namespace WindowExchange
