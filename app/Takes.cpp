// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Takes.h"

#include "audio/HBRecordingTask.h"
#include "platform/OpenFileLimit.h"
#include "platform/OutputState.h"

#include <QDateTime>
#include <QDir>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace Takes {

namespace {

constexpr int filesForAStart = 12;

} // namespace

bool canOpenAnother()
{
    return platform::canOpenMoreFiles(filesForAStart);
}

QUrl createUniquePathFile(const QString &folder)
{
    const QLocale locale(QLocale::English, QLocale::UnitedStates);
    const QString name = locale.toString(QDateTime::currentDateTime(), u"yyyy-MM-dd HH'h'mm'm'ss's'"_s);
    return QUrl::fromLocalFile(QDir(folder).filePath(name + u".mp3"_s));
}

QString whyNotStarted(HBRecordingTask &task)
{
    const int error = task.outputState().error;
    return error ? platform::outputErrorReason(error) : task.startProblem();
}

} // namespace Takes
