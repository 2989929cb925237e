// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Foreground.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/X11.h"

#include <QRegularExpression>
#include <QWidget>
#include <cstring>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr char waylandToken[] = "XDG_ACTIVATION_TOKEN";
constexpr char x11Token[] = "DESKTOP_STARTUP_ID";

void sendToRoot(xcb_connection_t *connection, const xcb_client_message_event_t &event, uint32_t receivers)
{
    xcb_send_event(
        connection, 0, x11Screen(connection)->root, receivers, reinterpret_cast<const char *>(&event));
}

// The window manager compares the time of the user's click, which is in the token, with that of the last
// input elsewhere.
void activate(xcb_connection_t *connection, xcb_window_t window, const QString &token)
{
    static const QRegularExpression timeInToken(u"_TIME(\\d+)$"_s);
    const auto time = timeInToken.match(token);
    if (!time.hasMatch())
        return;
    constexpr std::uint32_t fromApplication = 1;
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = x11Atom(connection, "_NET_ACTIVE_WINDOW");
    event.data.data32[0] = fromApplication;
    event.data.data32[1] = time.captured(1).toULongLong() & 0xffffffff;
    sendToRoot(connection, event, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
}

// Ends the launcher's busy pointer: nothing new will appear. The text is sent in pieces.
void endLaunch(xcb_connection_t *connection, xcb_window_t window, const QString &token)
{
    const QByteArray text = "remove: ID=\"" + token.toUtf8().replace('"', "\\\"") + '"';
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = window;
    event.type = x11Atom(connection, "_NET_STARTUP_INFO_BEGIN");
    constexpr qsizetype piece = sizeof event.data.data8;
    for (qsizetype at = 0; at <= text.size(); at += piece) { // with the zero at the end
        std::memset(event.data.data8, 0, piece);
        std::memcpy(event.data.data8, text.constData() + at, std::min(piece, text.size() - at));
        sendToRoot(connection, event, XCB_EVENT_MASK_PROPERTY_CHANGE);
        event.type = x11Atom(connection, "_NET_STARTUP_INFO");
    }
}

} // namespace

QString launchToken()
{
    const QString token = qEnvironmentVariable(waylandToken);
    return token.isEmpty() ? qEnvironmentVariable(x11Token) : token;
}

void bringToFront(QWidget *window, const QString &token)
{
    assertMainThread();
    // Here the toolkit looks for it.
    if (!token.isEmpty())
        qputenv(waylandToken, token.toUtf8());
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
    qunsetenv(waylandToken);

    xcb_connection_t *connection = x11Connection();
    if (token.isEmpty() || !connection)
        return;
    const auto id = xcb_window_t(window->winId());
    activate(connection, id, token);
    endLaunch(connection, id, token);
    xcb_flush(connection);
}

} // namespace platform
