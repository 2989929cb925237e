// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/PortalRequest.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/PendingCall.h"
#include "platform/desktop/SessionBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString servicePath = u"/org/freedesktop/portal/desktop"_s;

QString newToken()
{
    static int count = 0;
    return u"flipside_request_%1"_s.arg(++count);
}

} // namespace

PortalRequest::PortalRequest(Report report)
    : QObject(QCoreApplication::instance())
    , m_report(std::move(report))
{
}

void PortalRequest::send(const QString &interface, const QString &method, QVariantList arguments,
    std::chrono::milliseconds deadline, Report report)
{
    assertMainThread();
    auto *const request = new PortalRequest(std::move(report));
    request->ask(interface, method, std::move(arguments), deadline);
}

// The portal names the request after who asks, so that the second part is not missed when it comes early.
void PortalRequest::ask(const QString &interface, const QString &method, QVariantList arguments,
    std::chrono::milliseconds deadline)
{
    QDBusConnection bus = SessionBus::shared().connection();
    const QString token = newToken();
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    bus.connect(service, u"%1/request/%2/%3"_s.arg(servicePath, sender, token),
        u"org.freedesktop.portal.Request"_s, u"Response"_s, this, SLOT(answered(uint, QVariantMap)));

    QDBusMessage call = QDBusMessage::createMethodCall(service, servicePath, interface, method);
    arguments.append(QVariantMap{{u"handle_token"_s, token}});
    call.setArguments(arguments);
    whenEnded(bus.asyncCall(call, int(deadline.count())), this, [this](const QDBusMessage &taken) {
        if (taken.type() != QDBusMessage::ReplyMessage)
            end(Outcome::Failed);
    });
}

void PortalRequest::answered(uint response, const QVariantMap &)
{
    end(response == 0 ? Outcome::Done : response == 1 ? Outcome::Cancelled : Outcome::Failed);
}

void PortalRequest::end(Outcome outcome)
{
    if (const Report report = std::exchange(m_report, {})) {
        deleteLater();
        report(outcome);
    }
}

} // namespace platform
