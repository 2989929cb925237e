// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/HandOver.h"

#include "app/RunningCard.h"
#include "platform/Inquiry.h"
#include "platform/Logging.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

// With the time that the process itself needs, the answer is there within a second. A card that waits for a
// sound server is back within 900 ms.
constexpr milliseconds answeredWithin{980};
// Without a command there is no hurry, and a card without a bus is only half of one.
constexpr milliseconds busAnswersACardWithin{2500};
// Kept of that second, however long this process took to start.
constexpr milliseconds leftForWinner{200};

constexpr std::array statusFields{"state", "elapsed", "device", "file"};

// With the same fields as what a card answers.
QVariantMap nothingRuns()
{
    QVariantMap status;
    for (const char *field : statusFields)
        status.insert(QLatin1String(field), QString());
    status.insert(u"state"_s, u"not-running"_s);
    return status;
}

QByteArray inOneField(const QString &text)
{
    if (text.isEmpty())
        return "-";
    QByteArray field = text.toUtf8();
    return field.replace('\\', "\\\\").replace('\t', "\\t").replace('\n', "\\n");
}

int printStatus(const QVariantMap &status, bool json)
{
    QByteArray line;
    if (json) {
        line = QJsonDocument(QJsonObject::fromVariantMap(status)).toJson(QJsonDocument::Compact);
    } else {
        for (const char *key : statusFields)
            line += (line.isEmpty() ? "" : "\t") + inOneField(status.value(QLatin1String(key)).toString());
    }
    return CommandLine::print(line + '\n');
}

void complain(const QString &words)
{
    std::fprintf(stderr, "flipside: %s\n", qUtf8Printable(words));
}

bool startsCard(Command command)
{
    return command != Command::Status && command != Command::Quit;
}

int exitCodeOfCarried(const CommandLine &line, const CardAnswer &answer)
{
    if (line.command == Command::Status)
        return printStatus(answer.status, line.json);
    if (answer.words.isEmpty())
        return ExitCode::Done;
    complain(answer.words);
    return ExitCode::Pending;
}

int exitCode(const CommandLine &line, const CardAnswer &answer)
{
    switch (answer.kind) {
    case CardAnswer::Carried:
        return exitCodeOfCarried(line, answer);
    case CardAnswer::Refused:
        complain(answer.words);
        return ExitCode::Refused;
    case CardAnswer::Silent:
        complain(u"the card that is open does not answer; it may still do it later"_s);
        return ExitCode::NoAnswer;
    default:
        if (line.command != Command::Status)
            complain(u"no card is open"_s);
        else if (const int failed = printStatus(nothingRuns(), line.json))
            return failed;
        return ExitCode::NoCard;
    }
}

// The thread that waits for the bus will not come back, and without it nothing in this process can use any
// bus, the toolkit included. A new one is told that there is none.
[[noreturn]] void startAnewWithoutBus(char **arguments)
{
    qCWarning(lcApp, "The session bus does not answer. Going on without it.");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    execv("/proc/self/exe", arguments);
    qFatal("Cannot start anew.");
}

} // namespace

HandOver::HandOver(const CommandLine &line, const QString &token)
    : m_line(line)
    , m_token(token)
    , m_second(answeredWithin)
{
}

std::optional<int> HandOver::toOpenCard(char **arguments) const
{
    // The toolkit takes the first thread that it sees for the main one.
    QThread::currentThread();
    const bool presents = m_line.command == Command::Present;
    const auto answer = platform::askAndWait<CardAnswer>(
        [command = m_line.command, token = m_token] {
            return RunningCard::ask(command, token, answeredWithin);
        },
        presents ? busAnswersACardWithin : answeredWithin);
    if (!answer && presents)
        startAnewWithoutBus(arguments);
    if (!answer) {
        complain(u"there is no answer from the session bus"_s);
        // The library would wait for its thread.
        std::_Exit(ExitCode::NoAnswer);
    }
    const bool nobodyThere = answer->kind == CardAnswer::NoCard || answer->kind == CardAnswer::NoBus;
    if (nobodyThere && startsCard(m_line.command))
        return {};
    return exitCode(m_line, *answer);
}

int HandOver::toWinner() const
{
    const milliseconds left = std::max(milliseconds(m_second.remainingTime()), leftForWinner);
    const CardAnswer answer = RunningCard::ask(m_line.command, m_token, left);
    if (m_line.command == Command::Present && answer.kind == CardAnswer::Silent)
        return ExitCode::Done;
    return exitCode(m_line, answer);
}
