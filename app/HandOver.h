// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/CommandLine.h"

#include <QDeadlineTimer>
#include <QString>
#include <optional>

// What a process of the program does that is not the card: has the card that is open carry out its command
// line, prints what the card answers, and ends, all within a second from when this was made.
class HandOver {
public:
    // `token` lets the card come to the front.
    HandOver(const CommandLine &line, const QString &token);

    // The exit code; nothing when no card is open and this process is to be it. Before the application object
    // is made. `arguments` are those of main(), with which the process is started anew where the session bus
    // is silent.
    std::optional<int> toOpenCard(char **arguments) const;

    // The exit code of a process that has made an application object and finds that another was faster. The
    // other one is still starting: without a command it is only told, and comes to the front by itself.
    int toWinner() const;

private:
    const CommandLine m_line;
    const QString m_token;
    const QDeadlineTimer m_second;
};
