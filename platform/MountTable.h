// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <optional>

namespace platform {

// Where the system says what is mounted.
struct MountFiles {
    QByteArray table = "/proc/self/mountinfo";
    // Links to the devices under their file systems' own identifiers.
    QByteArray identifiers = "/dev/disk/by-uuid";
};

struct Mount {
    QByteArray root; // what of the file system is to be seen, "/" for all of it
    QByteArray point;
    QByteArray type;
    QByteArray source;
    // The same at every mount of this file system, on any device: its own identifier, or the share of a
    // server. Empty where the system does not tell.
    QByteArray identity;
};

// What is mounted, as it was when this was made. Reading it asks no file system. Any thread.
class MountTable {
public:
    explicit MountTable(const MountFiles &files = {});

    // The mount that a path without links is on; nothing when the table could not be read.
    std::optional<Mount> mountOf(const QByteArray &path) const;
    // Where the path inside the file system is to be seen now, once for each of its mounts.
    QList<QByteArray> placesOf(const QByteArray &identity, const QByteArray &pathInside) const;

private:
    QList<Mount> m_mounts;
};

// The path with every link on it followed; the path itself where nothing is there. It asks the disks.
QByteArray withoutLinks(const QByteArray &path);

// The path inside the mount's file system of what stands at `path`, which is below the mount point.
QByteArray pathInside(const Mount &mount, const QByteArray &path);

} // namespace platform
