// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QUrl>

class HBRecordingTask;

// What the start of a recording needs, and what is said when it fails.
namespace Takes {

// The process can open what a recording opens, and an alert should it fail. Each recording keeps its file
// open.
bool canOpenAnother();

// Named after this moment. Two recordings that start within the same second share a name on purpose; what
// becomes of the first file is the writer's decision.
QUrl createUniquePathFile(const QString &folder);

// A reason, see ForPeople.h. A file that failed says why in more detail than the task.
QString whyNotStarted(HBRecordingTask &task);

} // namespace Takes
