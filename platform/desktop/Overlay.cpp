// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Overlay.h"

#include "platform/desktop/X11.h"

#include <QGuiApplication>
#include <QWidget>
#include <optional>

namespace platform {

namespace {

std::optional<QPoint> cornerOnScreen(xcb_connection_t *connection, const QWidget *window)
{
    const auto cookie = xcb_translate_coordinates(
        connection, static_cast<xcb_window_t>(window->internalWinId()), x11Screen(connection)->root, 0, 0);
    const X11Reply<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(connection, cookie, nullptr));
    return reply ? std::optional(QPoint(reply->dst_x, reply->dst_y)) : std::nullopt;
}

} // namespace

bool canPlaceOverlays()
{
    return x11Connection();
}

void prepareOverlay(QWidget *overlay, QWidget *)
{
    if (x11Connection())
        overlay->setWindowOpacity(0);
}

void revealOverlay(QWidget *overlay)
{
    if (x11Connection())
        overlay->setWindowOpacity(1);
}

QRect overlayFrame(const QWidget *window, const QRect &part)
{
    return {window->mapToGlobal(part.topLeft()), part.size()};
}

QPoint cornerInOverlay(const QWidget *overlay, const QWidget *window, const QPoint &expected)
{
    xcb_connection_t *connection = x11Connection();
    if (!connection)
        return expected;
    const auto upper = cornerOnScreen(connection, overlay);
    const auto lower = cornerOnScreen(connection, window);
    return upper && lower ? *lower - *upper : expected;
}

} // namespace platform
