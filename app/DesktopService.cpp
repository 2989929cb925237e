// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/DesktopService.h"

#include "app/BusNames.h"
#include "platform/Logging.h"
#include "platform/ThreadCheck.h"
#include "platform/desktop/PendingCall.h"
#include "platform/desktop/SessionBus.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusPendingCall>
#include <chrono>

using namespace Qt::StringLiterals;
using platform::SessionBus;

namespace {

constexpr std::chrono::milliseconds nameIsGivenWithin{1000};

// Answers of the bus to a request for a name.
constexpr uint nameExists = 3;
constexpr uint doNotQueue = 4;

QDBusMessage toBus(const QString &method, const QVariantList &arguments)
{
    const QString bus = u"org.freedesktop.DBus"_s;
    QDBusMessage call = QDBusMessage::createMethodCall(bus, u"/org/freedesktop/DBus"_s, bus, method);
    call.setArguments(arguments);
    return call;
}

QDBusMessage requestName()
{
    return toBus(u"RequestName"_s, {BusNames::service, doNotQueue});
}

QString tokenFrom(const QVariantMap &platformData)
{
    const QString token = platformData.value(u"activation-token"_s).toString();
    return token.isEmpty() ? platformData.value(u"desktop-startup-id"_s).toString() : token;
}

QDBusMessage unknownCommand(const QDBusMessage &message, const QString &name)
{
    return message.createErrorReply(QDBusError::InvalidArgs, u"there is no command \"%1\""_s.arg(name));
}

} // namespace

DesktopService::DesktopService(Commands *commands, std::function<void(const QString &)> present)
    : m_commands(commands)
    , m_present(std::move(present))
{
    new ApplicationAdaptor(this);
    new RecorderAdaptor(this);
    connect(&SessionBus::shared(), &SessionBus::cameBack, this, &DesktopService::claimAgain);
}

// Whoever has the name is asked at once, so the object is there before.
bool DesktopService::announce()
{
    return SessionBus::shared().connection().registerObject(
        BusNames::path, this, QDBusConnection::ExportAdaptors);
}

bool DesktopService::claim()
{
    platform::assertMainThread();
    if (!announce())
        return true;
    const QDBusMessage reply
        = SessionBus::shared().connection().call(requestName(), QDBus::Block, int(nameIsGivenWithin.count()));
    if (reply.type() == QDBusMessage::ReplyMessage)
        return reply.arguments().value(0).toUInt() != nameExists;
    qCWarning(lcApp, "No name on the session bus: %s", qUtf8Printable(reply.errorMessage()));
    return true;
}

void DesktopService::claimAgain()
{
    announce();
    const auto call
        = SessionBus::shared().connection().asyncCall(requestName(), int(nameIsGivenWithin.count()));
    platform::whenEnded(call, this, [](const QDBusMessage &reply) {
        if (reply.arguments().value(0).toUInt() == nameExists)
            qCWarning(lcApp, "Another card has the name on the session bus now.");
    });
}

void DesktopService::release()
{
    SessionBus::shared().connection().send(toBus(u"ReleaseName"_s, {BusNames::service}));
}

void DesktopService::run(Command command, const QDBusMessage &message)
{
    message.setDelayedReply(true);
    const auto answer = [message](const CommandOutcome &outcome) {
        SessionBus::shared().connection().send(outcome.refused
                ? message.createErrorReply(BusNames::refused, outcome.words)
                : message.createReply(message.interface() == BusNames::recorder ? QVariantList{outcome.words}
                                                                                : QVariantList()));
    };
    if (command != Command::Quit)
        return m_commands->run(command, answer);
    // In this order, so that whoever has the answer can start the program anew.
    release();
    answer({});
    Q_EMIT quitRequested();
}

ApplicationAdaptor::ApplicationAdaptor(DesktopService *service)
    : QDBusAbstractAdaptor(service)
    , m_service(service)
{
}

void ApplicationAdaptor::Activate(const QVariantMap &platform_data)
{
    m_service->present(tokenFrom(platform_data));
}

void ApplicationAdaptor::Open(const QStringList &, const QVariantMap &, const QDBusMessage &message)
{
    message.setDelayedReply(true);
    SessionBus::shared().connection().send(
        message.createErrorReply(QDBusError::NotSupported, u"Flipside opens no files"_s));
}

void ApplicationAdaptor::ActivateAction(
    const QString &action_name, const QVariantList &, const QVariantMap &, const QDBusMessage &message)
{
    const auto command = CommandLine::commandOf(action_name.toUtf8());
    if (command && *command != Command::Status)
        return m_service->run(*command, message);
    message.setDelayedReply(true);
    SessionBus::shared().connection().send(unknownCommand(message, action_name));
}

RecorderAdaptor::RecorderAdaptor(DesktopService *service)
    : QDBusAbstractAdaptor(service)
    , m_service(service)
{
}

QString RecorderAdaptor::Run(const QString &command, const QDBusMessage &message)
{
    const auto known = CommandLine::commandOf(command.toUtf8());
    if (known && *known != Command::Status) {
        m_service->run(*known, message);
    } else {
        message.setDelayedReply(true);
        SessionBus::shared().connection().send(unknownCommand(message, command));
    }
    return {};
}

QVariantMap RecorderAdaptor::Status()
{
    return m_service->status();
}
