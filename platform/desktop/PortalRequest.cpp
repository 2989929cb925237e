// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/PortalRequest.h"

#include "platform/Logging.h"
#include "platform/ThreadCheck.h"
#include "platform/desktop/PendingCall.h"
#include "platform/desktop/SessionBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QFile>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

const QString portal = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString requestInterface = u"org.freedesktop.portal.Request"_s;

QString newToken()
{
    static int count = 0;
    return u"flipside_request_%1"_s.arg(++count);
}

bool isSandboxed()
{
    return QFile::exists(u"/.flatpak-info"_s);
}

} // namespace

PortalRequest::PortalRequest(Kind kind, Report report)
    : QObject(QCoreApplication::instance())
    , m_kind(kind)
    , m_report(std::move(report))
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] {
        // It may still take the question, and open what nobody waits for any more.
        close();
        fail();
    });
}

PortalRequest::~PortalRequest()
{
    if (m_report)
        close();
}

PortalRequest *PortalRequest::send(const QString &interface, const QString &method, QVariantList arguments,
    const QVariantMap &options, std::chrono::milliseconds deadline, Report report)
{
    assertMainThread();
    auto *const request = new PortalRequest(Kind::Question, std::move(report));
    request->m_deadline.start(deadline);
    request->ask(interface, method, std::move(arguments), options);
    return request;
}

PortalRequest *PortalRequest::hold(const QString &interface, const QString &method, QVariantList arguments,
    const QVariantMap &options, std::chrono::milliseconds deadline, Report report)
{
    assertMainThread();
    auto *const request = new PortalRequest(Kind::Held, std::move(report));
    request->m_deadline.start(deadline);
    request->ask(interface, method, std::move(arguments), options);
    return request;
}

// The portal names the request after who asks, so that the second part is not missed when it comes early.
void PortalRequest::ask(
    const QString &interface, const QString &method, QVariantList arguments, QVariantMap options)
{
    const QDBusConnection bus = SessionBus::shared().connection();
    const QString token = newToken();
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    m_path = u"%1/request/%2/%3"_s.arg(portalPath, sender, token);
    follow();

    QDBusMessage call = QDBusMessage::createMethodCall(portal, portalPath, interface, method);
    options.insert(u"handle_token"_s, token);
    arguments.append(options);
    call.setArguments(arguments);
    call.setAutoStartService(m_kind == Kind::Question || isSandboxed());
    // The deadline of the call itself would leave open what comes after it.
    constexpr int noDeadline = std::numeric_limits<int>::max();
    whenEnded(bus.asyncCall(call, noDeadline), this, [this](const QDBusMessage &answer) { taken(answer); });
}

void PortalRequest::taken(const QDBusMessage &answer)
{
    m_deadline.stop();
    if (answer.type() != QDBusMessage::ReplyMessage) {
        qCInfo(lcPlatform, "The portal: %s", qUtf8Printable(answer.errorMessage()));
        fail();
    } else if (m_kind == Kind::Held) {
        const Report report = m_report; // which may delete this
        report(Outcome::Done, {});
    }
}

void PortalRequest::follow()
{
    QDBusConnection bus = SessionBus::shared().connection();
    // Without a name, or the toolkit would ask the bus for its owner and wait for the answer.
    bus.connect({}, m_path, requestInterface, u"Response"_s, this, SLOT(answered(uint, QVariantMap)));
    bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
        this, SLOT(fail()));
    auto *const watcher
        = new QDBusServiceWatcher(portal, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &PortalRequest::fail);
}

void PortalRequest::close() const
{
    QDBusMessage call = QDBusMessage::createMethodCall(portal, m_path, requestInterface, u"Close"_s);
    call.setAutoStartService(false);
    SessionBus::shared().connection().send(call);
}

void PortalRequest::answered(uint response, const QVariantMap &results)
{
    if (m_kind == Kind::Held && response == 0)
        return;
    end(response == 0 ? Outcome::Done : response == 1 ? Outcome::Cancelled : Outcome::Ended, results);
}

void PortalRequest::fail()
{
    end(Outcome::Failed, {});
}

void PortalRequest::end(Outcome outcome, const QVariantMap &results)
{
    if (const Report report = std::exchange(m_report, {})) {
        deleteLater();
        report(outcome, results);
    }
}

} // namespace platform
