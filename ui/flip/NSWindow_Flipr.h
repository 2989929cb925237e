// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

// Exchanges two cards of a stage by turning one over until the other one is seen. The cards, which are
// windows to whoever uses them, belong to somebody else. Main thread only.
namespace NSWindow_Flipr {

// The one window in which all flips are seen, created on first use. Its content is a FliprView.
QWidget *flippingWindow();
// Drops it, and with it a flip that is running; the next use creates a new one.
void releaseFlippingWindow();

// Puts `otherWindow` onto the stage where `window` is, top left corner on top left corner, with a flip that
// starts at once and ends within the event loop; `forward` makes the right edge recede first. A flip that is
// asked for while one runs is ignored, and so are windows that are on no stage. Where a flip is not possible
// or not wanted, and when `window` is not to be seen, the cards are exchanged before this returns.
void flipToShowWindow(QWidget *window, QWidget *otherWindow, bool forward);

} // namespace NSWindow_Flipr
