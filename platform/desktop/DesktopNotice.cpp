// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/DesktopNotice.h"

#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <chrono>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// A service that the bus has to start first needs a while.
constexpr std::chrono::milliseconds deadline = std::chrono::seconds(5);

const QString service = u"org.freedesktop.Notifications"_s;
const QString path = u"/org/freedesktop/Notifications"_s;

// The text is the summary, which is always plain; a body may be read as markup. It stays until it is taken
// back or the user closes it.
QDBusMessage notify(uint replaced, const QString &text)
{
    constexpr int untilTakenBack = 0;
    const QString identifier = QGuiApplication::desktopFileName();
    const QVariantMap hints{{u"desktop-entry"_s, identifier}, {u"category"_s, u"device.error"_s},
        {u"urgency"_s, QVariant::fromValue(uchar(2))}};
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, service, u"Notify"_s);
    call.setArguments({QGuiApplication::applicationDisplayName(), replaced, identifier, text, QString(),
        QStringList(), hints, untilTakenBack});
    return call;
}

QDBusMessage closeNotification(uint id)
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, service, u"CloseNotification"_s);
    call.setArguments({id});
    call.setAutoStartService(false);
    return call;
}

} // namespace

DesktopNotice::DesktopNotice(QObject *parent)
    : QObject(parent)
{
}

DesktopNotice::~DesktopNotice()
{
    takeBack();
}

void DesktopNotice::show(const QString &text)
{
    assertMainThread();
    m_wanted = text;
    settle();
}

void DesktopNotice::takeBack()
{
    assertMainThread();
    m_wanted.clear();
    settle();
}

// The service is told one thing at a time: what it has not numbered yet can be neither replaced nor taken
// back.
void DesktopNotice::settle()
{
    if (m_asking || m_wanted == m_shown)
        return;
    if (!m_wanted.isEmpty())
        return ask();
    m_shown.clear();
    if (const uint id = std::exchange(m_id, 0))
        QDBusConnection::sessionBus().send(closeNotification(id));
}

void DesktopNotice::ask()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    if (!std::exchange(m_listening, true))
        bus.connect(service, path, service, u"NotificationClosed"_s, this, SLOT(closed(uint, uint)));
    m_asking = true;
    m_shown = m_wanted;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(notify(m_id, m_shown), deadline.count()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        answered(*watcher);
    });
}

void DesktopNotice::answered(const QDBusPendingCallWatcher &answer)
{
    const QDBusPendingReply<uint> reply = answer;
    m_asking = false;
    if (reply.isError())
        qCDebug(lcPlatform, "No notification: %s", qUtf8Printable(reply.error().message()));
    m_id = reply.isError() ? 0 : reply.value();
    settle();
}

// By the user, who has read it: the same text is not shown again.
void DesktopNotice::closed(uint id, uint)
{
    if (id == m_id)
        m_id = 0;
}

} // namespace platform
