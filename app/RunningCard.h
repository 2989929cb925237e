// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/CommandLine.h"

#include <QString>
#include <QVariantMap>
#include <chrono>

// What the card that is open already says to a command.
struct CardAnswer {
    enum Kind { Carried, Refused, NoCard, Silent, NoBus };

    Kind kind;
    QString words; // why it refuses, or what is still to come; often empty
    QVariantMap status = {}; // of Status, as Commands::status()
};

namespace RunningCard {

// Connects to the session bus on first use and asks the card, never starting one. Back within the deadline,
// but for a bus that does not let the process in: as long as that does not answer it does not return, so the
// first time only on a thread that can be spared. `token` lets the card come to the front.
CardAnswer ask(Command command, const QString &token, std::chrono::milliseconds deadline);

} // namespace RunningCard
