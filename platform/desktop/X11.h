// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QPoint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <optional>
#include <xcb/xcb.h>

class QWidget;

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
// Where a window that has its handle begins on the screen, in pixels. One round trip.
std::optional<QPoint> x11Corner(xcb_connection_t *connection, const QWidget *window);
// Sets a property of a window to these numbers.
void x11SetNumbers(xcb_connection_t *connection, xcb_window_t window, const char *property,
    std::initializer_list<uint32_t> numbers);

// Has the server tell when a selection, such as a compositor's or a manager's, comes, goes or changes hands.
// The type of its events; 0 where the server cannot.
int x11FollowSelection(xcb_connection_t *connection, const char *selection);
// The type of an event that a native event filter is given; 0 when it is not one of this window system.
int x11EventType(const QByteArray &filterType, const void *message);
// Which selection an event of the type above is about.
xcb_atom_t x11SelectionOf(const void *message);

} // namespace platform
