// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/ScreenUpdates.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/X11.h"

namespace platform {

ScreenUpdatesDisabled::ScreenUpdatesDisabled()
{
    assertMainThread();
    if (xcb_connection_t *connection = x11Connection())
        xcb_grab_server(connection);
}

ScreenUpdatesDisabled::~ScreenUpdatesDisabled()
{
    if (xcb_connection_t *connection = x11Connection()) {
        xcb_ungrab_server(connection);
        xcb_flush(connection);
    }
}

} // namespace platform
