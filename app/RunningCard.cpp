// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/RunningCard.h"

#include "app/BusNames.h"
#include "platform/desktop/SessionBus.h"

#include <QDBusMessage>
#include <QDBusReply>

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

// A bus that works answers within one.
constexpr milliseconds busAnswersWithin{50};

const QString noOwner = u"org.freedesktop.DBus.Error.NameHasNoOwner"_s;

QDBusMessage callFor(Command command, const QString &token)
{
    const bool presents = command == Command::Present;
    const QString method = presents ? u"Activate"_s : command == Command::Status ? u"Status"_s : u"Run"_s;
    QDBusMessage call = QDBusMessage::createMethodCall(
        BusNames::service, BusNames::path, presents ? BusNames::application : BusNames::recorder, method);
    if (presents)
        call << QVariantMap{{u"activation-token"_s, token}};
    else if (command != Command::Status)
        call << QString::fromLatin1(CommandLine::nameOf(command));
    call.setAutoStartService(false);
    return call;
}

// The library's own deadline and the end of the card's process are one error. A bus that is silent has not
// said that there is no card.
bool cardIsGone(const QDBusConnection &bus)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    call << BusNames::service;
    const QDBusReply<bool> isOwned = bus.call(call, QDBus::Block, int(busAnswersWithin.count()));
    return isOwned.isValid() && !isOwned.value();
}

CardAnswer answerFrom(const QDBusConnection &bus, const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ReplyMessage) {
        const QVariant first = reply.arguments().value(0);
        return {CardAnswer::Carried,
            first.metaType() == QMetaType::fromType<QString>() ? first.toString() : u""_s,
            qdbus_cast<QVariantMap>(first)};
    }
    if (reply.errorName() == noOwner)
        return {CardAnswer::NoCard, {}};
    switch (QDBusError(reply).type()) {
    case QDBusError::Disconnected:
        return {CardAnswer::NoBus, {}};
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return {cardIsGone(bus) ? CardAnswer::NoCard : CardAnswer::Silent, {}};
    default:
        return {CardAnswer::Refused, reply.errorMessage()};
    }
}

} // namespace

CardAnswer RunningCard::ask(Command command, const QString &token, milliseconds deadline)
{
    const QDBusConnection bus = platform::SessionBus::open();
    if (!bus.isConnected())
        return {CardAnswer::NoBus, {}};
    const milliseconds cardsShare = std::max(deadline - busAnswersWithin, busAnswersWithin);
    return answerFrom(bus, bus.call(callFor(command, token), QDBus::Block, int(cardsShare.count())));
}
