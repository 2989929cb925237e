// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/LogOutput.h"

#include "platform/Logging.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// For a line of another thread, which is there in microseconds unless a disk holds it.
constexpr std::chrono::milliseconds turnComesWithin(50);

QtMessageHandler toolkitsHandler = nullptr;
std::timed_mutex turn;
std::atomic<int> leftOut = 0;

// Of characters, of which a page holds so many in every language, with what stands before them.
constexpr qsizetype longestText = 1200;

// Names of files and devices may have any length. What was the matter stands behind them.
QString shortened(const QString &text)
{
    constexpr qsizetype half = longestText / 2;
    return text.size() <= longestText ? text : text.left(half) + u" ... "_s + text.right(half);
}

// A pipe that has any has room for a page, and a terminal takes what it can, in a stopped one nothing.
bool isTaken()
{
    pollfd log{STDERR_FILENO, POLLOUT, 0};
    return poll(&log, 1, 0) == 1;
}

void write(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // The process ends right after it.
    if (type == QtFatalMsg)
        return toolkitsHandler(type, context, text);
    const std::unique_lock lock(turn, turnComesWithin);
    if (!lock || !isTaken()) {
        ++leftOut;
        return;
    }
    if (leftOut > 0) {
        const QMessageLogContext own(nullptr, 0, nullptr, lcPlatform().categoryName());
        toolkitsHandler(QtWarningMsg, own,
            QString::asprintf("%d lines of the log had no room and are left out.", leftOut.exchange(0)));
    }
    if (isTaken())
        toolkitsHandler(type, context, shortened(text));
    else
        ++leftOut;
}

} // namespace

void keepStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest number that is free is this one.
        if (fcntl(stream, F_GETFD) < 0)
            open("/dev/null", O_RDONLY);
    }
}

void neverWaitForLog()
{
    std::signal(SIGPIPE, SIG_IGN);
    toolkitsHandler = qInstallMessageHandler(write);
}

} // namespace platform
