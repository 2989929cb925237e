// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/DiskState.h"

#include <QFile>
#include <cerrno>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace platform {

namespace {

// No other error says so.
bool isNothingThere(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

DiskState::Folder kindOfFolder(const QByteArray &path)
{
    struct stat status = {};
    if (!path.startsWith('/'))
        return DiskState::Missing;
    if (stat(path.constData(), &status) != 0)
        return isNothingThere(errno) ? DiskState::Missing : DiskState::Unknown;
    if (!S_ISDIR(status.st_mode))
        return DiskState::NotAFolder;
    return access(path.constData(), W_OK | X_OK) == 0 ? DiskState::Writable : DiskState::NotWritable;
}

// Some file systems that are mounted over a network report no size at all: they do not know what is free.
std::optional<qint64> bytesFree(const QByteArray &path)
{
    struct statvfs status = {};
    if (statvfs(path.constData(), &status) != 0 || status.f_blocks == 0)
        return {};
    return static_cast<qint64>(status.f_bavail) * static_cast<qint64>(status.f_frsize);
}

DiskState askDisk(const QString &folder, const QString &fileName)
{
    const QByteArray path = QFile::encodeName(folder);
    DiskState state{kindOfFolder(path)};
    if (!state.folderExists())
        return state;
    state.bytesFree = bytesFree(path);
    if (fileName.isEmpty())
        return state;
    struct stat file = {};
    state.fileExists = stat((path + '/' + QFile::encodeName(fileName)).constData(), &file) == 0;
    state.fileSize = file.st_size;
    if (!state.fileExists && !isNothingThere(errno))
        state.folder = DiskState::Unknown;
    return state;
}

} // namespace

std::function<DiskState()> questionToDisk(const QString &folder, const QString &fileName)
{
    return [answer = disk().inUse(), folder, fileName] { return answer(folder, fileName); };
}

Seam<std::function<DiskState(const QString &, const QString &)>> &disk()
{
    static Seam<std::function<DiskState(const QString &, const QString &)>> seam(askDisk);
    return seam;
}

} // namespace platform
