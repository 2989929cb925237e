// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Foreground.h"

#include "platform/ThreadCheck.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QWidget>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr char waylandToken[] = "XDG_ACTIVATION_TOKEN";
constexpr char x11Token[] = "DESKTOP_STARTUP_ID";

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};

xcb_atom_t atomOf(xcb_connection_t *connection, const char *name)
{
    const auto cookie = xcb_intern_atom(connection, 0, std::strlen(name), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, FreeReply> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

void sendToRoot(xcb_connection_t *connection, const xcb_client_message_event_t &event, xcb_window_t root)
{
    constexpr std::uint32_t toWindowManager
        = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(connection, 0, root, toWindowManager, reinterpret_cast<const char *>(&event));
}

// The window manager compares the time of the user's click, which is in the token, with that of the last
// input elsewhere.
void activate(xcb_connection_t *connection, xcb_window_t root, xcb_window_t window, const QString &token)
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
    event.type = atomOf(connection, "_NET_ACTIVE_WINDOW");
    event.data.data32[0] = fromApplication;
    event.data.data32[1] = time.captured(1).toULongLong() & 0xffffffff;
    sendToRoot(connection, event, root);
}

// Ends the launcher's busy pointer: nothing new will appear. The text is sent in pieces.
void endLaunch(xcb_connection_t *connection, xcb_window_t root, xcb_window_t window, const QString &token)
{
    const QByteArray text = "remove: ID=\"" + token.toUtf8().replace('"', "\\\"") + '"';
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = window;
    event.type = atomOf(connection, "_NET_STARTUP_INFO_BEGIN");
    constexpr qsizetype piece = sizeof event.data.data8;
    for (qsizetype at = 0; at <= text.size(); at += piece) { // with the zero at the end
        std::memset(event.data.data8, 0, piece);
        std::memcpy(event.data.data8, text.constData() + at, std::min(piece, text.size() - at));
        xcb_send_event(
            connection, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE, reinterpret_cast<const char *>(&event));
        event.type = atomOf(connection, "_NET_STARTUP_INFO");
    }
}

xcb_window_t rootOf(xcb_connection_t *connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
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

    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (token.isEmpty() || !x11 || !x11->connection())
        return;
    const auto id = xcb_window_t(window->winId());
    activate(x11->connection(), rootOf(x11->connection()), id, token);
    endLaunch(x11->connection(), rootOf(x11->connection()), id, token);
    xcb_flush(x11->connection());
}

} // namespace platform
