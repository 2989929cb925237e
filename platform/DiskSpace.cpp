// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/DiskSpace.h"

#include <QFile>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace platform {

namespace {

std::function<std::optional<qint64>(const QString &)> &diskSpaceInUse()
{
    static std::function<std::optional<qint64>(const QString &)> instance;
    return instance;
}

} // namespace

std::optional<qint64> writableBytes(const QString &path)
{
    if (diskSpaceInUse())
        return diskSpaceInUse()(path);
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    struct statvfs disk = {};
    if (stat(name.constData(), &status) != 0 || !S_ISDIR(status.st_mode)
        || access(name.constData(), W_OK | X_OK) != 0 || statvfs(name.constData(), &disk) != 0)
        return std::nullopt;
    return static_cast<qint64>(disk.f_bavail) * static_cast<qint64>(disk.f_frsize);
}

void setDiskSpace(std::function<std::optional<qint64>(const QString &)> diskSpace)
{
    diskSpaceInUse() = std::move(diskSpace);
}

} // namespace platform
