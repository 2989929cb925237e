// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/WindowMargins.h"

#include "platform/desktop/Wayland.h"
#include "platform/desktop/X11.h"

#include <QWidget>
#include <QWindow>
#include <xcb/shape.h>

namespace platform {

namespace {

void letPointerThrough(
    xcb_connection_t *connection, xcb_window_t window, const QSize &size, const QMargins &margins)
{
    const xcb_rectangle_t inner{static_cast<int16_t>(margins.left()), static_cast<int16_t>(margins.top()),
        static_cast<uint16_t>(size.width() - margins.left() - margins.right()),
        static_cast<uint16_t>(size.height() - margins.top() - margins.bottom())};
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, window,
        0, 0, 1, &inner);
}

void setX11Margins(xcb_connection_t *connection, const QWidget *window, const QMargins &margins)
{
    const double ratio = window->devicePixelRatioF();
    const QMargins pixels = (QMarginsF(margins) * ratio).toMargins();
    const auto id = static_cast<xcb_window_t>(window->internalWinId());
    x11SetNumbers(connection, id, "_GTK_FRAME_EXTENTS",
        {uint32_t(pixels.left()), uint32_t(pixels.right()), uint32_t(pixels.top()),
            uint32_t(pixels.bottom())});
    x11SetNumbers(connection, id, "_COMPTON_SHADOW", {0});
    letPointerThrough(connection, id, (QSizeF(window->size()) * ratio).toSize(), pixels);
    xcb_flush(connection);
}

} // namespace

void setWindowMargins(QWidget *window, const QMargins &margins)
{
    if (xcb_connection_t *connection = x11Connection()) {
        setX11Margins(connection, window, margins);
    } else if (isOnWayland()) {
        setWaylandMargins(window->windowHandle(), margins);
        // There it is the pointer's alone, and cuts no picture.
        window->windowHandle()->setMask(window->rect().marginsRemoved(margins));
    }
}

} // namespace platform
