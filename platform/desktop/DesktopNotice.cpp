// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/DesktopNotice.h"

#include "platform/Logging.h"
#include "platform/ThreadCheck.h"
#include "platform/desktop/PendingCall.h"
#include "platform/desktop/SessionBus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <chrono>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// A service that the bus has to start first needs a while, and only one that has answered can be told to take
// the notification back.
constexpr std::chrono::milliseconds notificationAnswersWithin = std::chrono::seconds(25);

const QString notifications = u"org.freedesktop.Notifications"_s;
const QString notificationsPath = u"/org/freedesktop/Notifications"_s;

// The text is the summary, which is always plain; a body may be read as markup. It stays until it is taken
// back or the user closes it.
QDBusMessage notify(uint replaced, const QString &text)
{
    constexpr int untilTakenBack = 0;
    const QString identifier = QGuiApplication::desktopFileName();
    const QVariantMap hints{{u"desktop-entry"_s, identifier}, {u"category"_s, u"device.error"_s},
        {u"urgency"_s, QVariant::fromValue(uchar(2))}};
    QDBusMessage call
        = QDBusMessage::createMethodCall(notifications, notificationsPath, notifications, u"Notify"_s);
    call.setArguments({QGuiApplication::applicationDisplayName(), replaced, identifier, text, QString(),
        QStringList(), hints, untilTakenBack});
    return call;
}

QDBusMessage closeNotification(uint id)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        notifications, notificationsPath, notifications, u"CloseNotification"_s);
    call.setArguments({id});
    call.setAutoStartService(false);
    return call;
}

// A sandbox lets nothing through to the service, and some desktops have none. A service that is only slow is
// not asked a second time, through the portal.
bool isOutOfReach(const QDBusMessage &answer)
{
    if (answer.type() == QDBusMessage::ReplyMessage)
        return false;
    switch (QDBusError(answer).type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    case QDBusError::LimitsExceeded:
    case QDBusError::NoMemory:
        return false;
    default:
        return true;
    }
}

} // namespace

DesktopNotice::DesktopNotice(QObject *parent)
    : QObject(parent)
{
    connect(&SessionBus::shared(), &SessionBus::cameBack, this, &DesktopNotice::beginAnew);
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
    if (m_throughPortal)
        return sayToPortal(u"RemoveNotification"_s, {});
    if (const uint id = std::exchange(m_id, 0))
        SessionBus::shared().connection().send(closeNotification(id));
}

void DesktopNotice::ask()
{
    QDBusConnection bus = SessionBus::shared().connection();
    if (!bus.isConnected())
        return;
    if (m_throughPortal) {
        m_shown = m_wanted;
        return sayToPortal(
            u"AddNotification"_s, {QVariantMap{{u"title"_s, m_shown}, {u"priority"_s, u"urgent"_s}}});
    }
    if (!std::exchange(m_listening, true))
        // Without a name, or the toolkit would ask the bus for its owner and wait for the answer.
        bus.connect(
            {}, notificationsPath, notifications, u"NotificationClosed"_s, this, SLOT(closed(uint, uint)));
    m_asking = true;
    m_shown = m_wanted;
    whenEnded(bus.asyncCall(notify(m_id, m_shown), notificationAnswersWithin.count()), this,
        [this](const QDBusMessage &answer) { answered(answer); });
}

void DesktopNotice::answered(const QDBusMessage &answer)
{
    m_asking = false;
    m_throughPortal = isOutOfReach(answer);
    if (answer.type() == QDBusMessage::ReplyMessage)
        m_id = answer.arguments().value(0).toUInt();
    else
        qCDebug(lcPlatform, "Notifications: %s", qUtf8Printable(answer.errorMessage()));
    if (m_throughPortal)
        m_shown.clear();
    settle();
}

// The services of another bus know nothing of what was shown.
void DesktopNotice::beginAnew()
{
    m_id = 0;
    m_listening = false;
    m_throughPortal = false;
    m_shown.clear();
    settle();
}

// Nothing is asked: the portal knows the message by a name that the program gives it. Without a portal
// nobody hears this.
void DesktopNotice::sayToPortal(const QString &method, const QVariantList &more) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s,
        u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Notification"_s, method);
    call.setArguments(QVariantList{u"warning"_s} + more);
    SessionBus::shared().connection().send(call);
}

// By the user, who has read it: the same text is not shown again.
void DesktopNotice::closed(uint id, uint)
{
    if (id == m_id)
        m_id = 0;
}

} // namespace platform
