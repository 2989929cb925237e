// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/WindowPlatform.h"

#include <QByteArray>

namespace platform {

void preferPlatformThatPlacesWindows()
{
    const bool onWayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    const bool hasX11 = !qEnvironmentVariableIsEmpty("DISPLAY");
    if (onWayland && hasX11 && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

} // namespace platform
