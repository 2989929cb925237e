// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Wayland.h"

#include <QGuiApplication>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

namespace platform {

bool isOnWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

// The toolkit has no public way. Where it loses this one, the compositor counts the shadow as part of the
// window.
void setWaylandMargins(QWindow *window, const QMargins &margins)
{
    using SetMargins = void (*)(QWindow *, const QMargins &);
    auto *native = QGuiApplication::platformNativeInterface();
    auto *const function
        = native ? native->nativeResourceFunctionForWindow(QByteArrayLiteral("setmargins")) : nullptr;
    if (!function || !window->handle())
        return;
    const QRect frame = window->geometry();
    reinterpret_cast<SetMargins>(reinterpret_cast<void (*)()>(function))(window, margins);
    // It adds them to the window's frame, which has them already.
    window->setGeometry(frame);
}

} // namespace platform
