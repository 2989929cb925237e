// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Bookmark.h"

#include "platform/Inquiry.h"
#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace platform {

namespace {

// The token's fields are separated by zero bytes, which no path contains.
const QByteArray signature = QByteArrayLiteral("flipside-bookmark 1");

// A parent folder with more entries than this is not searched: a launch must not read through a mail spool.
constexpr int mostEntriesSearched = 20000;
constexpr std::chrono::seconds deadline(1);
// A launch asks more than once for the same folder. It waits for a dead disk once.
constexpr std::chrono::seconds restAfterSilence(2);

struct FolderIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    // Nanoseconds. Inodes are used again after a deletion, birth times are not. 0 where the file system
    // keeps none.
    qint64 birth = 0;

    bool isSameFolder(const FolderIdentity &other) const
    {
        return inode == other.inode && birth == other.birth;
    }
};

struct Token {
    QByteArray path;
    FolderIdentity identity;
};

std::optional<FolderIdentity> identityOfFolder(const QByteArray &path)
{
    struct statx status = {};
    if (statx(AT_FDCWD, path.constData(), 0, STATX_TYPE | STATX_INO | STATX_BTIME, &status) != 0
        || !S_ISDIR(status.stx_mode))
        return std::nullopt;
    FolderIdentity identity{makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino, 0};
    if (status.stx_mask & STATX_BTIME)
        identity.birth = status.stx_btime.tv_sec * 1'000'000'000LL + status.stx_btime.tv_nsec;
    return identity;
}

QByteArray parentOf(const QByteArray &path)
{
    return path.left(qMax<qsizetype>(path.lastIndexOf('/'), 1));
}

QByteArray encoded(const Token &token)
{
    return QList<QByteArray>{signature, QByteArray::number(token.identity.device),
        QByteArray::number(token.identity.inode), QByteArray::number(token.identity.birth), token.path}
        .join('\0');
}

std::optional<Token> decoded(const QByteArray &data)
{
    const QList<QByteArray> fields = data.split('\0');
    if (fields.size() != 5 || fields[0] != signature || !fields[4].startsWith('/'))
        return std::nullopt;
    bool isNumber[3] = {};
    const Token token{fields[4],
        {fields[1].toULongLong(&isNumber[0]), fields[2].toULongLong(&isNumber[1]),
            fields[3].toLongLong(&isNumber[2])}};
    if (!isNumber[0] || !isNumber[1] || !isNumber[2])
        return std::nullopt;
    return token;
}

struct DirectoryCloser {
    void operator()(DIR *directory) const { closedir(directory); }
};

// The folder under another name beside its old place.
std::optional<QByteArray> renamedFolder(const Token &token)
{
    const QByteArray parent = parentOf(token.path);
    const std::unique_ptr<DIR, DirectoryCloser> directory(opendir(parent.constData()));
    if (!directory)
        return std::nullopt;
    for (int i = 0; i < mostEntriesSearched; ++i) {
        const dirent *entry = readdir(directory.get());
        if (!entry)
            break;
        if (entry->d_ino != token.identity.inode)
            continue;
        const QByteArray path = (parent == "/" ? QByteArray() : parent) + '/' + entry->d_name;
        const auto identity = identityOfFolder(path);
        if (identity && identity->device == token.identity.device && identity->isSameFolder(token.identity))
            return path;
    }
    return std::nullopt;
}

std::optional<QByteArray> resolved(const Token &token)
{
    const auto atOldPath = identityOfFolder(token.path);
    // Device numbers may be given out differently at each start of the computer: at its old place the folder
    // is known by the rest alone.
    if (atOldPath && atOldPath->isSameFolder(token.identity))
        return token.path;
    if (auto renamed = renamedFolder(token))
        return renamed;
    // Deleted and made again on the same disk. On another device it is the empty folder that waits for a disk
    // to be mounted on it.
    if (atOldPath && atOldPath->device == token.identity.device)
        return token.path;
    return std::nullopt;
}

struct Silence {
    QByteArray data;
    std::chrono::steady_clock::time_point end;
};

// The token whose disk did not answer last, and until when it is not asked again.
Silence &lastSilence()
{
    static Silence silence;
    return silence;
}

} // namespace

QByteArray bookmarkDataForFolder(const QUrl &folder)
{
    if (!folder.isLocalFile())
        return {};
    const QByteArray path = QFile::encodeName(QFileInfo(folder.toLocalFile()).absoluteFilePath());
    const auto identity = identityOfFolder(path);
    return identity ? encoded({path, *identity}) : QByteArray();
}

std::optional<QUrl> folderForBookmarkData(const QByteArray &data)
{
    assertMainThread();
    const auto token = decoded(data);
    const auto now = std::chrono::steady_clock::now();
    if (!token || (lastSilence().data == data && now < lastSilence().end))
        return std::nullopt;
    const auto answer
        = askAndWait<std::optional<QByteArray>>([token = *token] { return resolved(token); }, deadline);
    if (!answer) {
        qCWarning(lcPlatform, "The disk of the working folder does not answer.");
        lastSilence() = {data, std::chrono::steady_clock::now() + restAfterSilence};
        return std::nullopt;
    }
    const std::optional<QByteArray> &path = *answer;
    return path ? std::optional(QUrl::fromLocalFile(QFile::decodeName(*path))) : std::nullopt;
}

} // namespace platform
