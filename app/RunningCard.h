// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/CommandLine.h"

#include <QString>
#include <QVariantMap>
#include <chrono>
#include <optional>

// What the card that is open already says to a command.
struct CardAnswer {
    enum Kind { Carried, Refused, NoCard, Silent, NoBus };

    Kind kind;
    QString words; // why it refuses, or what is still to come; often empty
    QVariantMap status = {}; // of Status, as Commands::status()
};

namespace RunningCard {

// Connects to the session bus on first use and asks the card, which is given so much time. Never starts one.
// As long as the bus does not answer it does not return: only on a thread that can be spared.
// `token` lets the card come to the front.
CardAnswer ask(Command command, const QString &token, std::chrono::milliseconds deadline);

// Has an open card do what the command line says, and prints what it answers. The exit code; nothing when no
// card is open and this process is to be it. Before the application object is made. `arguments` are those of
// main(), with which the process is started anew where the session bus is silent.
std::optional<int> handOver(const CommandLine &line, const QString &token, char **arguments);

// For the process that has made an application object and finds that another was faster. The other one may
// have a while to go before it answers.
int handOverToWinner(const CommandLine &line, const QString &token);

} // namespace RunningCard
