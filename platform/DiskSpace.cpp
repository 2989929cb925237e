// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/DiskSpace.h"

#include "platform/MainQueue.h"

#include <QFile>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>

namespace platform {

namespace {

std::function<FolderRoom(const QString &)> &diskSpaceInUse()
{
    static std::function<FolderRoom(const QString &)> instance;
    return instance;
}

FolderRoom roomOf(const QByteArray &path)
{
    struct stat status = {};
    if (!path.startsWith('/') || stat(path.constData(), &status) != 0)
        return {FolderRoom::Missing};
    if (!S_ISDIR(status.st_mode))
        return {FolderRoom::NotAFolder};
    struct statvfs disk = {};
    if (access(path.constData(), W_OK | X_OK) != 0 || statvfs(path.constData(), &disk) != 0)
        return {FolderRoom::NotWritable};
    return {FolderRoom::Writable, static_cast<qint64>(disk.f_bavail) * static_cast<qint64>(disk.f_frsize)};
}

} // namespace

void askForRoom(const QString &path, std::function<void(const FolderRoom &)> answer)
{
    if (diskSpaceInUse()) {
        postToMainQueue([room = diskSpaceInUse()(path), answer = std::move(answer)] { answer(room); });
        return;
    }
    // A network disk that has gone away blocks whoever asks it. The thread is left behind then; it owns all
    // that it touches.
    std::thread([name = QFile::encodeName(path), answer = std::move(answer)]() mutable {
        postToMainQueue([room = roomOf(name), answer = std::move(answer)] { answer(room); });
    }).detach();
}

void setDiskSpace(std::function<FolderRoom(const QString &)> diskSpace)
{
    diskSpaceInUse() = std::move(diskSpace);
}

} // namespace platform
