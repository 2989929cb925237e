// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/MountTable.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QScopedPointer>
#include <cstdlib>
#include <memory>

namespace platform {

namespace {

// Blanks and the like are written as a backslash and three octal digits.
QByteArray unescaped(const QByteArray &field)
{
    QByteArray text;
    for (qsizetype i = 0; i < field.size(); ++i) {
        const bool isEscape = field[i] == '\\' && i + 3 < field.size();
        text.append(isEscape ? char(field.mid(i + 1, 3).toInt(nullptr, 8)) : field[i]);
        i += isEscape ? 3 : 0;
    }
    return text;
}

// "36 35 98:0 /root /point options [more ...] - type source options"
std::optional<Mount> mountInLine(const QByteArray &line)
{
    const QList<QByteArray> fields = line.split(' ');
    const qsizetype dash = fields.indexOf("-", 6);
    if (dash < 0 || dash + 2 >= fields.size())
        return std::nullopt;
    return Mount{
        unescaped(fields[3]), unescaped(fields[4]), fields[dash + 1], unescaped(fields[dash + 2]), {}};
}

QHash<QByteArray, QByteArray> identifiersByDevice(const QByteArray &folder)
{
    QHash<QByteArray, QByteArray> identifiers;
    const QStringList names = QDir(QFile::decodeName(folder)).entryList(QDir::System | QDir::Files);
    for (const QString &name : names)
        identifiers.insert(withoutLinks(folder + '/' + QFile::encodeName(name)), QFile::encodeName(name));
    return identifiers;
}

QByteArray identityOf(const Mount &mount, const QHash<QByteArray, QByteArray> &identifiers)
{
    // Any other path is that of a file, which may be on a disk that does not answer.
    if (mount.source.startsWith("/dev/"))
        return identifiers.value(withoutLinks(mount.source));
    const bool isShare = mount.source.startsWith("//") || mount.source.contains(':');
    return isShare ? mount.type + ' ' + mount.source : QByteArray();
}

// What follows `folder` in a path that is in it, "/" for the folder itself.
std::optional<QByteArray> pathBelow(const QByteArray &folder, const QByteArray &path)
{
    const QByteArray start = folder == "/" ? QByteArray() : folder;
    if (path == start || path == folder)
        return "/";
    return path.startsWith(start + '/') ? std::optional(path.mid(start.size())) : std::nullopt;
}

QByteArray joined(const QByteArray &folder, const QByteArray &below)
{
    return below == "/" ? folder : (folder == "/" ? QByteArray() : folder) + below;
}

} // namespace

QByteArray withoutLinks(const QByteArray &path)
{
    const std::unique_ptr<char, QScopedPointerPodDeleter> real(realpath(path.constData(), nullptr));
    return real ? QByteArray(real.get()) : path;
}

MountTable::MountTable(const MountFiles &files)
{
    QFile table(QFile::decodeName(files.table));
    if (!table.open(QIODevice::ReadOnly))
        return;
    const QHash<QByteArray, QByteArray> identifiers = identifiersByDevice(files.identifiers);
    const QList<QByteArray> lines = table.readAll().split('\n');
    for (const QByteArray &line : lines) {
        auto mount = mountInLine(line);
        // An automounter's place holder; what it mounts has a line of its own.
        if (!mount || mount->type == "autofs")
            continue;
        mount->identity = identityOf(*mount, identifiers);
        m_mounts.append(*mount);
    }
}

std::optional<Mount> MountTable::mountOf(const QByteArray &path) const
{
    std::optional<Mount> found;
    for (const Mount &mount : m_mounts) {
        // Of two at the same place the later one covers the other.
        if (pathBelow(mount.point, path) && (!found || mount.point.size() >= found->point.size()))
            found = mount;
    }
    return found;
}

QList<QByteArray> MountTable::placesOf(const QByteArray &identity, const QByteArray &pathInside) const
{
    QList<QByteArray> places;
    for (const Mount &mount : m_mounts) {
        const auto below = pathBelow(mount.root, pathInside);
        if (!identity.isEmpty() && mount.identity == identity && below)
            places.append(joined(mount.point, *below));
    }
    return places;
}

QByteArray pathInside(const Mount &mount, const QByteArray &path)
{
    return joined(mount.root, pathBelow(mount.point, path).value_or("/"));
}

} // namespace platform
