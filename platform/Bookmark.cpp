// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Bookmark.h"

#include <QDir>
#include <QFile>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace platform {

namespace {

// The token's fields are separated by zero bytes, which no path contains. The first version had only the
// folder's identity and its path.
const QByteArray firstSignature = QByteArrayLiteral("flipside-bookmark 1");
const QByteArray signature = QByteArrayLiteral("flipside-bookmark 2");

// A parent folder with more entries than this is not searched: a launch must not read through a mail spool.
constexpr int mostEntriesSearched = 20000;

struct FolderIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    // Nanoseconds. Inodes are used again after a deletion, birth times are not. 0 where the file system
    // keeps none.
    qint64 birth = 0;

    // Device numbers are given out anew at each start of the computer.
    bool isSameFolder(const FolderIdentity &other) const
    {
        return inode == other.inode && birth == other.birth;
    }
};

struct Token {
    FolderIdentity identity;
    QByteArray path;
    QByteArray target; // the path without links
    QByteArray mountPoint; // empty when it was not known
    QByteArray fileSystem; // as Mount::identity
    QByteArray pathInside; // of the file system
};

struct DirectoryCloser {
    void operator()(DIR *directory) const { closedir(directory); }
};

QByteArray canonical(const QByteArray &path)
{
    return QFile::encodeName(QDir::cleanPath(QFile::decodeName(path)));
}

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

QByteArray encoded(const Token &token)
{
    return QList<QByteArray>{signature, QByteArray::number(token.identity.device),
        QByteArray::number(token.identity.inode), QByteArray::number(token.identity.birth), token.path,
        token.target, token.mountPoint, token.fileSystem, token.pathInside}
        .join('\0');
}

std::optional<Token> decoded(const QByteArray &data)
{
    const QList<QByteArray> fields = data.split('\0');
    const bool isFirst = fields.size() == 5 && fields[0] == firstSignature;
    if (!isFirst && (fields.size() != 9 || fields[0] != signature))
        return std::nullopt;
    bool isNumber[3] = {};
    const FolderIdentity identity{fields[1].toULongLong(&isNumber[0]), fields[2].toULongLong(&isNumber[1]),
        fields[3].toLongLong(&isNumber[2])};
    if (!isNumber[0] || !isNumber[1] || !isNumber[2] || !fields[4].startsWith('/'))
        return std::nullopt;
    const QByteArray path = canonical(fields[4]);
    if (isFirst)
        return Token{identity, path, path, {}, {}, {}};
    return Token{identity, path, fields[5], fields[6], fields[7], fields[8]};
}

// Looks for the folder of a token, first for the very folder, then for one that has taken its place.
class Search {
public:
    Search(const Token &token, const MountFiles &files)
        : m_token(token)
        , m_mounts(files)
        , m_places(m_mounts.placesOf(token.fileSystem, token.pathInside))
    {
    }

    std::optional<QByteArray> result() const
    {
        const QList<QByteArray> places = QList{m_token.path, m_token.target} + m_places;
        for (const QByteArray &place : places) {
            if (isTheFolder(place))
                return place;
        }
        for (const QByteArray &place : places) {
            if (auto renamed = renamedBeside(place))
                return renamed;
        }
        // Some file systems number their folders anew at each mount.
        for (const QByteArray &place : m_places) {
            if (identityOfFolder(place))
                return place;
        }
        return isReplacedInPlace() ? std::optional(m_token.path) : std::nullopt;
    }

private:
    bool isTheFolder(const QByteArray &path) const
    {
        const auto identity = identityOfFolder(path);
        return identity
            && identity->isSameFolder(m_token.identity)
            // An inode alone says little.
            && (identity->birth || identity->device == m_token.identity.device || path == m_token.path);
    }

    std::optional<QByteArray> renamedBeside(const QByteArray &path) const
    {
        const QByteArray parent = path.left(qMax<qsizetype>(path.lastIndexOf('/'), 1));
        const std::unique_ptr<DIR, DirectoryCloser> directory(opendir(parent.constData()));
        for (int i = 0; directory && i < mostEntriesSearched; ++i) {
            const dirent *entry = readdir(directory.get());
            if (!entry)
                break;
            if (entry->d_ino != m_token.identity.inode)
                continue;
            QByteArray candidate = (parent == "/" ? QByteArray() : parent) + '/' + entry->d_name;
            if (isTheFolder(candidate))
                return candidate;
        }
        return std::nullopt;
    }

    // Deleted and made again on the same disk, or on another one that is mounted where the disk was. Where
    // nothing is mounted it is the empty folder that waits for a disk.
    bool isReplacedInPlace() const
    {
        const auto identity = identityOfFolder(m_token.path);
        if (!identity || identity->device == m_token.identity.device)
            return identity.has_value();
        const auto mount = m_mounts.mountOf(withoutLinks(m_token.path));
        if (!mount)
            return false;
        if (m_token.mountPoint.isEmpty())
            return mount->point != "/";
        const bool isKnownToDiffer = !m_token.fileSystem.isEmpty() && !mount->identity.isEmpty();
        return mount->point == m_token.mountPoint && (mount->point == "/" || !isKnownToDiffer);
    }

    const Token &m_token;
    const MountTable m_mounts;
    const QList<QByteArray> m_places; // on the file system that the folder was on
};

} // namespace

QByteArray bookmarkDataForFolder(const QUrl &folder, const MountFiles &files)
{
    const QByteArray path
        = canonical(QFile::encodeName(QDir::current().absoluteFilePath(folder.toLocalFile())));
    const auto identity = folder.isLocalFile() ? identityOfFolder(path) : std::nullopt;
    if (!identity)
        return {};
    Token token{*identity, path, withoutLinks(path), {}, {}, {}};
    if (const auto mount = MountTable(files).mountOf(token.target)) {
        token.mountPoint = mount->point;
        token.fileSystem = mount->identity;
        token.pathInside = pathInside(*mount, token.target);
    }
    return encoded(token);
}

std::optional<QUrl> folderForBookmarkData(const QByteArray &data, const MountFiles &files)
{
    const auto token = decoded(data);
    const auto path = token ? Search(*token, files).result() : std::nullopt;
    return path ? std::optional(QUrl::fromLocalFile(QFile::decodeName(*path))) : std::nullopt;
}

QString pathInBookmarkData(const QByteArray &data)
{
    const auto token = decoded(data);
    return token ? QFile::decodeName(token->path) : QString();
}

} // namespace platform
