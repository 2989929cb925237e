// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/CommandLine.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>

namespace {

struct NamedCommand {
    const char *name;
    Command command;
    const char *help;
};

constexpr std::array namedCommands = {
    NamedCommand{"record", Command::Record, "start a recording, or go on with the paused one"},
    NamedCommand{"pause", Command::Pause, "pause the recording or the playback"},
    NamedCommand{"stop", Command::Stop, "stop the recording or the playback"},
    NamedCommand{"toggle", Command::Toggle, "stop the recording that runs, else do as --record"},
    NamedCommand{"play", Command::Play, "play the last recording, or go on with the paused playback"},
    NamedCommand{"show", Command::Show, "show the last recording in the file manager"},
    NamedCommand{
        "status", Command::Status, "print a line: state, elapsed time, device and file, with tabs between"},
    NamedCommand{"quit", Command::Quit, "close the card; a recording is kept up to then"},
};

// Options of the toolkit, which accepts one dash or two, and later removes its own. A session manager uses
// "session" to start the program again.
constexpr std::array<std::string_view, 12> toolkitOptions
    = {"display", "geometry", "platform", "platformpluginpath", "platformtheme", "plugin", "qwindowgeometry",
        "qwindowicon", "qwindowtitle", "session", "style", "stylesheet"};
constexpr std::string_view toolkitFlag = "reverse";

// How many arguments the toolkit takes from here on.
std::size_t takenByToolkit(std::string_view argument)
{
    if (!argument.starts_with('-'))
        return 0;
    argument.remove_prefix(argument.starts_with("--") ? 2 : 1);
    if (argument == toolkitFlag)
        return 1;
    const std::string_view name = argument.substr(0, argument.find('='));
    if (std::find(toolkitOptions.begin(), toolkitOptions.end(), name) == toolkitOptions.end())
        return 0;
    return name == argument ? 2 : 1;
}

} // namespace

CommandLine CommandLine::parse(std::span<char *const> arguments)
{
    CommandLine line;
    const auto take = [&line](Command asked) {
        if (line.command != Command::Present && line.command != asked)
            line.problem = "--" + nameOf(line.command) + " and --" + nameOf(asked) + " contradict each other";
        line.command = asked;
    };
    bool areOptionsOver = false;
    for (std::size_t i = 0; i < arguments.size() && line.problem.isEmpty(); ++i) {
        const QByteArray argument = arguments[i];
        if (areOptionsOver || !argument.startsWith('-'))
            line.problem = "nothing to do with " + argument;
        else if (argument == "--")
            areOptionsOver = true;
        else if (argument == "--help" || argument == "-h")
            line.help = true;
        else if (argument == "--version")
            line.version = true;
        else if (argument == "--json")
            line.json = true;
        else if (const auto command = argument.startsWith("--") ? commandOf(argument.mid(2)) : std::nullopt)
            take(*command);
        else if (const std::size_t taken = takenByToolkit(arguments[i])) {
            i += taken - 1;
        } else
            line.problem = "unknown option " + argument;
    }
    if (line.problem.isEmpty() && line.json && line.command != Command::Status && !line.help && !line.version)
        line.problem = "--json goes with --status only";
    return line;
}

QByteArray CommandLine::helpText()
{
    QByteArray text
        = "Usage: flipside [COMMAND]\n"
          "Records sound straight into MP3 files. Without a command it opens the card, or brings the one\n"
          "that is open to the front.\n\n"
          "Commands to the card. Where none is open, this process becomes the card and does it, but for\n"
          "--status and --quit:\n";
    for (const NamedCommand &command : namedCommands)
        text += "  --" + QByteArray(command.name).leftJustified(10) + command.help + '\n';
    return text
        + "  --json      with --status: the same as a JSON object\n\n"
          "  --help      print this; -h as well\n"
          "  --version   print the version\n\n"
          "Exit codes:\n"
          "  0  done; a process that has become the card: it was closed\n"
          "  1  the card refuses, or there is no display; the reason is on standard error\n"
          "  2  a command line that makes no sense\n"
          "  3  no card is open (--status, --quit)\n"
          "  4  the card that is open, or the session bus, does not answer within a second\n"
          "  5  begun, but not done yet: the card asks for a folder, or waits for the sound server\n";
}

int CommandLine::print(const QByteArray &text)
{
    std::fputs(text.constData(), stdout);
    if (std::fflush(stdout) == 0)
        return ExitCode::Done;
    // Whoever reads no more is told no more.
    if (errno != EPIPE)
        std::perror("flipside");
    return ExitCode::Refused;
}

QByteArray CommandLine::nameOf(Command command)
{
    const auto found = std::find_if(namedCommands.begin(), namedCommands.end(),
        [command](const NamedCommand &named) { return named.command == command; });
    return found == namedCommands.end() ? QByteArray() : QByteArray(found->name);
}

std::optional<Command> CommandLine::commandOf(const QByteArray &name)
{
    const auto found = std::find_if(namedCommands.begin(), namedCommands.end(),
        [&name](const NamedCommand &named) { return name == named.name; });
    return found == namedCommands.end() ? std::nullopt : std::optional(found->command);
}
