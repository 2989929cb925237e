// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/RunningCard.h"

#include "app/BusNames.h"
#include "platform/Inquiry.h"
#include "platform/Logging.h"
#include "platform/desktop/SessionBus.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

// With the time that the process itself needs, an answer is had within a second. A card that waits for a
// sound server is back within 900 ms.
constexpr milliseconds cardAnswersWithin{930};
constexpr milliseconds busAnswersWithin{980};
// Without a command there is no hurry, and a card without a bus is only half of one.
constexpr milliseconds busAnswersACardWithin{2500};
// A card that has just begun to start.
constexpr milliseconds winnerAnswersWithin{10000};

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

// The library's own deadline and the end of the card's process are one error.
bool cardIsThere(const QDBusConnection &bus)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    call << BusNames::service;
    return QDBusReply<bool>(bus.call(call)).value();
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
        return {cardIsThere(bus) ? CardAnswer::Silent : CardAnswer::NoCard, {}};
    default:
        return {CardAnswer::Refused, reply.errorMessage()};
    }
}

QByteArray inOneField(const QString &text)
{
    if (text.isEmpty())
        return "-";
    QByteArray field = text.toUtf8();
    return field.replace('\\', "\\\\").replace('\t', "\\t").replace('\n', "\\n");
}

void printStatus(const QVariantMap &status, bool json)
{
    QByteArray line;
    if (json) {
        line = QJsonDocument(QJsonObject::fromVariantMap(status)).toJson(QJsonDocument::Compact);
    } else {
        for (const char *key : {"state", "elapsed", "device", "file"})
            line += (line.isEmpty() ? "" : "\t") + inOneField(status.value(QLatin1String(key)).toString());
    }
    std::printf("%s\n", line.constData());
}

void complain(const QString &words)
{
    std::fprintf(stderr, "flipside: %s\n", qUtf8Printable(words));
}

bool startsCard(Command command)
{
    return command != Command::Status && command != Command::Quit;
}

int exitCode(const CommandLine &line, const CardAnswer &answer)
{
    switch (answer.kind) {
    case CardAnswer::Carried:
        if (line.command == Command::Status)
            printStatus(answer.status, line.json);
        else if (!answer.words.isEmpty())
            complain(answer.words);
        return ExitCode::Done;
    case CardAnswer::Refused:
        complain(answer.words);
        return ExitCode::Refused;
    case CardAnswer::Silent:
        complain(u"the card that is open does not answer; it may still do it later"_s);
        return ExitCode::NoAnswer;
    default:
        if (line.command == Command::Status)
            printStatus({{u"state"_s, u"not-running"_s}}, line.json);
        else
            complain(u"no card is open"_s);
        return ExitCode::NoCard;
    }
}

// The thread that waits for the bus cannot be had back, and without it nothing in this process can use any
// bus, the toolkit included. A new one is told that there is none.
[[noreturn]] void startAnewWithoutBus(char **arguments)
{
    qCWarning(lcApp, "The session bus does not answer. Going on without it.");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    execv("/proc/self/exe", arguments);
    qFatal("Cannot start anew.");
}

} // namespace

namespace RunningCard {

CardAnswer ask(Command command, const QString &token, milliseconds deadline)
{
    const QDBusConnection bus = platform::SessionBus::open();
    if (!bus.isConnected())
        return {CardAnswer::NoBus, {}};
    return answerFrom(bus, bus.call(callFor(command, token), QDBus::Block, int(deadline.count())));
}

std::optional<int> handOver(const CommandLine &line, const QString &token, char **arguments)
{
    // The toolkit takes the first thread that it sees for the main one.
    QThread::currentThread();
    const bool presents = line.command == Command::Present;
    const auto answer = platform::askAndWait<CardAnswer>(
        [command = line.command, token] { return ask(command, token, cardAnswersWithin); },
        presents ? busAnswersACardWithin : busAnswersWithin);
    if (!answer && presents)
        startAnewWithoutBus(arguments);
    if (!answer) {
        complain(u"there is no answer from the session bus"_s);
        // The library would wait for its thread.
        std::_Exit(ExitCode::NoAnswer);
    }
    const bool nobodyThere = answer->kind == CardAnswer::NoCard || answer->kind == CardAnswer::NoBus;
    if (nobodyThere && startsCard(line.command))
        return {};
    return exitCode(line, *answer);
}

int handOverToWinner(const CommandLine &line, const QString &token)
{
    return exitCode(line, ask(line.command, token, winnerAnswersWithin));
}

} // namespace RunningCard
