// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDeadlineTimer>
#include <memory>

class HBRecordingTask;

// Recordings that have been stopped while something that they had captured was not encoded yet: what is said
// after a sleep of hours, for example, waits behind the silence that stands for it. Each is kept here until
// everything is, whoever has taken its place. Main thread only.
namespace UnfinishedRecordings {

// Nothing where everything is encoded.
void keep(const std::shared_ptr<HBRecordingTask> &task);
bool isEmpty();
// For the end of the program: none is left at the deadline. What a recording lacks then is in the log.
void finish(QDeadlineTimer deadline);

} // namespace UnfinishedRecordings
