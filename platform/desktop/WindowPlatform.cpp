// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/WindowPlatform.h"

#include <QByteArray>
#include <xcb/xcb.h>

namespace platform {

void preferNativePlatform()
{
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "wayland;xcb");
}

bool hasDisplay()
{
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        return true;
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    xcb_connection_t *const server = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(server) == 0;
    xcb_disconnect(server);
    return answers;
}

} // namespace platform
