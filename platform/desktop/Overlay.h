// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>

class QWidget;

// A window that is laid over another one for a while, to the pixel. Main thread only.
namespace platform {

// Whether the window system puts a window where it is asked to be.
bool canPlaceOverlays();
// Whether that is a place in the window below, because nobody knows where that one is on the desktop.
bool overlaysAreRelative();

// Before the overlay is shown: tells the window system what it belongs to, and compositors to leave it alone.
void prepareOverlay(QWidget *overlay, const QWidget *window);

// After its first paint: what a window holds before that is not to be seen.
void revealOverlay(QWidget *overlay);

// Where an overlay has to be to cover this part of a window, in device-independent pixels: a place on the
// desktop, or in the window where an overlay is placed relative to it.
QRect overlayFrame(const QWidget *window, const QRect &part);

// Where a window's own corner lies in an overlay, in pixels of the screen. `expected` is what the
// device-independent places of both come to, which may be a pixel beside the truth.
QPoint cornerInOverlay(const QWidget *overlay, const QWidget *window, const QPoint &expected);

} // namespace platform
