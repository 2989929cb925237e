// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Compositor.h"

#include "platform/desktop/X11.h"

#include <QCoreApplication>
#include <xcb/xfixes.h>

namespace platform {

namespace {

// The compositor of the first screen owns this selection. In practice all other screens of the display share
// it.
constexpr char compositorSelection[] = "_NET_WM_CM_S0";

constexpr uint32_t everyChangeOfOwner = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
    | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
    | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;

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
    const auto *extension = connection ? xcb_get_extension_data(connection, &xcb_xfixes_id) : nullptr;
    if (!extension || !extension->present)
        return;
    m_event = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    m_selection = x11Atom(connection, compositorSelection);
    xcb_xfixes_select_selection_input(
        connection, x11Screen(connection)->root, m_selection, everyChangeOfOwner);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool CompositorWatch::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    constexpr uint8_t sentByAProgram = 0x80;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if (eventType != "xcb_generic_event_t" || (event->response_type & ~sentByAProgram) != m_event)
        return false;
    if (static_cast<const xcb_xfixes_selection_notify_event_t *>(message)->selection == m_selection)
        Q_EMIT changed();
    return false;
}

} // namespace platform
