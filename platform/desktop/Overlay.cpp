// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Overlay.h"

#include "platform/desktop/Wayland.h"
#include "platform/desktop/X11.h"

#include <QWidget>
#include <QWindow>

namespace platform {

bool canPlaceOverlays()
{
    return x11Connection() || isOnWayland();
}

// A part of the window's surface, which may be larger than the window, and which a compositor neither moves
// nor animates. A popup it would push on screen.
bool overlaysAreRelative()
{
    return isOnWayland();
}

void prepareOverlay(QWidget *overlay, const QWidget *window)
{
    xcb_connection_t *connection = x11Connection();
    if (isOnWayland()) {
        overlay->winId();
        overlay->windowHandle()->setParent(window->windowHandle());
    }
    if (!connection)
        return;
    const auto id = static_cast<xcb_window_t>(overlay->winId());
    // Each of these keeps some compositor from drawing a shadow around a window that is mostly empty.
    x11SetNumbers(connection, id, "_COMPTON_SHADOW", {0});
    x11SetNumbers(connection, id, "_GTK_FRAME_EXTENTS", {0, 0, 0, 0});
    overlay->setWindowOpacity(0);
}

void revealOverlay(QWidget *overlay)
{
    if (x11Connection())
        overlay->setWindowOpacity(1);
}

QRect overlayFrame(const QWidget *window, const QRect &part)
{
    return overlaysAreRelative() ? part : QRect(window->mapToGlobal(part.topLeft()), part.size());
}

QPoint cornerInOverlay(const QWidget *overlay, const QWidget *window, const QPoint &expected)
{
    xcb_connection_t *connection = x11Connection();
    if (!connection)
        return expected;
    const auto upper = x11Corner(connection, overlay);
    const auto lower = x11Corner(connection, window);
    return upper && lower ? *lower - *upper : expected;
}

} // namespace platform
