// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <optional>
#include <span>

// What can be asked of the card from outside its window. Present brings it to the front.
enum class Command { Present, Record, Pause, Stop, Toggle, Play, Show, Status, Quit };

// What the process ends with. Stated in the help text.
struct ExitCode {
    enum { Done = 0, Refused = 1, WrongUsage = 2, NoCard = 3, NoAnswer = 4, Pending = 5 };
};

// What the program was asked for. Needs no application object.
struct CommandLine {
    Command command = Command::Present;
    bool json = false; // of Status
    // To be printed, and nothing else to be done.
    bool help = false;
    bool version = false;
    // What is wrong with it; empty when nothing is.
    QByteArray problem;

    // The arguments without the program's name. Those that the toolkit knows are passed over.
    static CommandLine parse(std::span<char *const> arguments);

    static QByteArray helpText();

    // On the standard output, for whoever reads it; an exit code.
    static int print(const QByteArray &text);

    // The word behind the two dashes, which is also the name on the bus. Nothing for Present.
    static QByteArray nameOf(Command command);
    static std::optional<Command> commandOf(const QByteArray &name);
};
