// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDeadlineTimer>
#include <QString>
#include <chrono>
#include <vector>

namespace platform {

// How a file that this process writes gets on with its disk.
struct OutputState {
    QString path;
    // Bytes in memory, in order, that the file does not have yet. Safe for as long as the process lives.
    qint64 bytesWaiting = 0;
    // For how long the oldest of them has waited while this program itself ran, as far as somebody asked, or
    // wrote, at least twice a second. More than a second and no error: the disk does not answer.
    std::chrono::steady_clock::duration waitingFor{};
    // The errno of the trouble that the file is in, or that kept it from being opened; 0 while there is none.
    // EBUSY: another process writes to it; EAGAIN: no thread could be had. ETIMEDOUT: it could not be opened
    // in time.
    int error = 0;
    // Bytes for which there was no memory, or that went with a disk. Never goes back.
    qint64 bytesLost = 0;
    // It is not known yet whether what was written last is in a file that can be found.
    bool isUnseen = false;
};

// Of each file that has bytes waiting, an error or a loss, or is just ending, also of recordings that have
// been stopped; in the order in which they were opened. Any thread; does not wait for a disk.
std::vector<OutputState> outputStates();

// How long the end of the program waits for sound that is still on its way into a file: three seconds from
// the first call on.
QDeadlineTimer endOfProgram();

// What an error means to the user: a reason, see ForPeople.h.
QString outputErrorReason(int error);

} // namespace platform
