// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

// What several files need of the X window system. Main thread only.
namespace platform {

struct FreeX11Reply {
    void operator()(void *reply) const { std::free(reply); }
};
template <typename Reply> using X11Reply = std::unique_ptr<Reply, FreeX11Reply>;

// The toolkit's own connection; null on every other window system.
xcb_connection_t *x11Connection();
// The number of a name. One round trip for each name; XCB_ATOM_NONE when the server is gone.
xcb_atom_t x11Atom(xcb_connection_t *connection, const char *name);
xcb_screen_t *x11Screen(xcb_connection_t *connection);

} // namespace platform
