// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/X11.h"

#include "platform/ThreadCheck.h"

#include <QGuiApplication>
#include <cstring>

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

} // namespace platform
