// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Compositor.h"

#include "platform/ThreadCheck.h"

#include <QGuiApplication>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace platform {

namespace {

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};

// The compositor of the first screen owns this selection. In practice all other screens of the display share
// it.
constexpr char compositorSelection[] = "_NET_WM_CM_S0";

xcb_atom_t selectionAtom(xcb_connection_t *connection)
{
    const auto cookie = xcb_intern_atom(connection, 0, std::strlen(compositorSelection), compositorSelection);
    const std::unique_ptr<xcb_intern_atom_reply_t, FreeReply> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

bool selectionIsOwned(xcb_connection_t *connection)
{
    const auto cookie = xcb_get_selection_owner(connection, selectionAtom(connection));
    const std::unique_ptr<xcb_get_selection_owner_reply_t, FreeReply> reply(
        xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace

bool compositorRuns()
{
    assertMainThread();
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // Only the X window system can be without one.
    return !x11 || !x11->connection() || selectionIsOwned(x11->connection());
}

} // namespace platform
