// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/X11.h"

#include "platform/ThreadCheck.h"

#include <QGuiApplication>
#include <QWidget>
#include <cstring>
#include <xcb/xfixes.h>

namespace platform {

xcb_connection_t *x11Connection()
{
    assertMainThread();
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t x11Atom(xcb_connection_t *connection, const char *name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<uint16_t>(std::strlen(name)), name);
    const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

xcb_screen_t *x11Screen(xcb_connection_t *connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

std::optional<QPoint> x11Corner(xcb_connection_t *connection, const QWidget *window)
{
    const auto cookie = xcb_translate_coordinates(
        connection, static_cast<xcb_window_t>(window->internalWinId()), x11Screen(connection)->root, 0, 0);
    const X11Reply<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(connection, cookie, nullptr));
    return reply ? std::optional(QPoint(reply->dst_x, reply->dst_y)) : std::nullopt;
}

void x11SetNumbers(xcb_connection_t *connection, xcb_window_t window, const char *property,
    std::initializer_list<uint32_t> numbers)
{
    constexpr uint8_t bits = 32;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, x11Atom(connection, property),
        XCB_ATOM_CARDINAL, bits, static_cast<uint32_t>(numbers.size()), numbers.begin());
}

int x11FollowSelection(xcb_connection_t *connection, const char *selection)
{
    constexpr uint32_t everyChangeOfOwner = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
        | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
        | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
    const auto *extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return 0;
    xcb_xfixes_select_selection_input(
        connection, x11Screen(connection)->root, x11Atom(connection, selection), everyChangeOfOwner);
    return extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
}

int x11EventType(const QByteArray &filterType, const void *message)
{
    constexpr uint8_t sentByAProgram = 0x80;
    if (filterType != "xcb_generic_event_t")
        return 0;
    return static_cast<const xcb_generic_event_t *>(message)->response_type & uint8_t(~sentByAProgram);
}

xcb_atom_t x11SelectionOf(const void *message)
{
    return static_cast<const xcb_xfixes_selection_notify_event_t *>(message)->selection;
}

} // namespace platform
