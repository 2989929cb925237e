// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/OutputFile.h"

#include "platform/MainQueue.h"

#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>

namespace platform {

namespace {

std::function<OutputFileState(const QString &path)> &examinerInUse()
{
    static std::function<OutputFileState(const QString &path)> instance;
    return instance;
}

} // namespace

OutputFileState examineOutputFile(const QString &path)
{
    OutputFileState state;
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    struct statvfs disk = {};
    if (statvfs(folder.constData(), &disk) == 0) {
        state.folderExists = true;
        state.bytesFree = qint64(disk.f_bavail) * qint64(disk.f_frsize);
    }
    struct stat file = {};
    if (stat(QFile::encodeName(path).constData(), &file) == 0) {
        state.fileExists = true;
        state.fileSize = file.st_size;
    }
    return state;
}

// A thread that nobody waits for: a disk that never answers must not hold up the end of the process either.
void examineOutputFileLater(const QString &path, std::function<void(const OutputFileState &)> done)
{
    const auto examine = examinerInUse() ? examinerInUse() : examineOutputFile;
    std::thread([path, done = std::move(done), examine] {
        postToMainQueue([done, state = examine(path)] { done(state); });
    }).detach();
}

void setOutputFileExaminer(std::function<OutputFileState(const QString &path)> examiner)
{
    examinerInUse() = std::move(examiner);
}

} // namespace platform
