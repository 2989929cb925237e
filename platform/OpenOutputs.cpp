// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/OpenOutputs.h"

#include "platform/ForPeople.h"
#include "platform/Logging.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

using namespace std::chrono_literals;

namespace platform {

namespace {

constexpr auto exitDeadline = 3s; // for all files together
// Of a disk that was given the last of it only when the time was nearly over.
constexpr auto shortestWait = 1s;

void finishAll()
{
    const auto deadline
        = std::max(endOfProgram().deadline<FileWriter::Clock>(), FileWriter::Clock::now() + shortestWait);
    for (const auto &writer : OpenOutputs::instance().all()) {
        if (writer->finish(deadline))
            continue;
        const OutputState state = writer->state();
        const QString reason = outputErrorReason(state.error ? state.error : ETIMEDOUT);
        if (state.bytesWaiting > 0)
            qCWarning(lcPlatform, "%lld bytes of %s are left unwritten: %s.", state.bytesWaiting,
                qPrintable(state.path), qPrintable(reason));
        else
            qCWarning(lcPlatform, "%s is left behind: %s.", qPrintable(state.path), qPrintable(reason));
    }
}

} // namespace

OpenOutputs::OpenOutputs()
{
    lcPlatform(); // so that it is there for longer than what is registered now
    std::atexit(finishAll);
}

OpenOutputs &OpenOutputs::instance()
{
    static auto *const outputs = new OpenOutputs;
    return *outputs;
}

void OpenOutputs::add(std::shared_ptr<FileWriter> writer)
{
    const std::scoped_lock lock(m_mutex);
    m_writers.push_back(std::move(writer));
}

void OpenOutputs::remove(const FileWriter *writer)
{
    const std::scoped_lock lock(m_mutex);
    std::erase_if(m_writers, [writer](const auto &other) { return other.get() == writer; });
}

std::vector<std::shared_ptr<FileWriter>> OpenOutputs::all() const
{
    const std::scoped_lock lock(m_mutex);
    return m_writers;
}

std::vector<OutputState> outputStates()
{
    std::vector<OutputState> states;
    for (const auto &writer : OpenOutputs::instance().all()) {
        OutputState state = writer->state();
        if (state.bytesWaiting > 0 || state.error != 0 || state.bytesLost > 0 || state.isUnseen)
            states.push_back(std::move(state));
    }
    return states;
}

QDeadlineTimer endOfProgram()
{
    static const QDeadlineTimer end(exitDeadline);
    return end;
}

QString outputErrorReason(int error)
{
    switch (error) {
    case ENOSPC:
        return reason(QT_TRANSLATE_NOOP("Reason", "the disk is full"));
    case EDQUOT:
        return reason(QT_TRANSLATE_NOOP("Reason", "the quota is used up"));
    case EFBIG:
        return reason(QT_TRANSLATE_NOOP("Reason", "the file is too large for this disk"));
    case EROFS:
        return reason(QT_TRANSLATE_NOOP("Reason", "the disk is read-only"));
    case EACCES:
    case EPERM:
        return reason(QT_TRANSLATE_NOOP("Reason", "the folder is not writable"));
    case ENOENT:
    case ENOTDIR:
    case ESTALE:
        return reason(QT_TRANSLATE_NOOP("Reason", "the folder is gone"));
    case EIO:
    case ENXIO:
    case ENODEV:
        return reason(QT_TRANSLATE_NOOP("Reason", "the disk reports an error"));
    case ETIMEDOUT:
        return reason(QT_TRANSLATE_NOOP("Reason", "the disk does not answer"));
    case EBUSY:
        return reason(QT_TRANSLATE_NOOP("Reason", "another program writes this file"));
    case EMFILE:
    case ENFILE:
        return reason(QT_TRANSLATE_NOOP("Reason", "too many files are open"));
    case ENOMEM:
    case EAGAIN:
        return reason(QT_TRANSLATE_NOOP("Reason", "the computer is out of memory"));
    default:
        return systemError(error);
    }
}

} // namespace platform
