// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Compositor.h"

#include "platform/desktop/X11.h"

#include <QCoreApplication>

namespace platform {

namespace {

// The compositor of the first screen owns this selection. In practice all other screens of the display share
// it.
constexpr char compositorSelection[] = "_NET_WM_CM_S0";

bool selectionIsOwned(xcb_connection_t *connection)
{
    const auto cookie = xcb_get_selection_owner(connection, x11Atom(connection, compositorSelection));
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace

bool compositorRuns()
{
    xcb_connection_t *connection = x11Connection();
    // Only the X window system can be without one.
    return !connection || selectionIsOwned(connection);
}

CompositorWatch &CompositorWatch::shared()
{
    // Never destroyed: windows that listen to it may go after the application object.
    static auto *const watch = new CompositorWatch;
    return *watch;
}

CompositorWatch::CompositorWatch()
{
    xcb_connection_t *connection = x11Connection();
    if (!connection)
        return;
    m_event = x11FollowSelection(connection, compositorSelection);
    m_selection = x11Atom(connection, compositorSelection);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool CompositorWatch::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    const int event = x11EventType(eventType, message);
    if (event != 0 && event == m_event && x11SelectionOf(message) == m_selection)
        Q_EMIT changed();
    return false;
}

} // namespace platform
