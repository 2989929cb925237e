// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Seam.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>
#include <memory>
#include <optional>

namespace platform {

// The user's settings: byte strings and booleans under string keys, in one INI file. What cannot be read is
// absent: a missing, damaged or unreadable file, or a byte string of another type. Nothing is written before
// the first value is set; a file that is damaged then is kept beside the new one, as "<name>.damaged".
// Another process may use the same file: only the keys that were set here are written, on a thread of their
// own, which a disk may hold for as long as it likes. Main thread only.
class UserDefaults {
public:
    // $XDG_CONFIG_HOME/flipside/flipside.conf, read on the first call.
    static UserDefaults &standardUserDefaults();

    explicit UserDefaults(const QString &path);
    // Waits a second for what is still on its way into the file.
    ~UserDefaults();
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;

    // Empty when absent; callers treat an empty byte string as absent, too.
    QByteArray dataForKey(const QString &key) const;
    // Yes, true, on and numbers other than zero are yes, in any case and also abbreviated; whatever else
    // stands there is no. Nothing only when the key is absent.
    std::optional<bool> boolForKey(const QString &key) const;

    // Readable at once; on its way into the file.
    void setData(const QByteArray &data, const QString &key);
    void setBool(bool value, const QString &key);

    // Waits a moment for what is not in the file yet. False when it cannot be written, or is not by then; the
    // values stay readable in this process, and the reason is logged. What the disk only kept waiting
    // follows.
    bool synchronize();

private:
    class File;

    std::optional<QVariant> objectForKey(const QString &key) const;
    void setObject(const QVariant &value, const QString &key);

    const QString m_path;
    std::shared_ptr<File> m_file; // null where something stands at its path that cannot be one
    QHash<QString, QVariant> m_values;
};

// What standardUserDefaults() answers; null for the user's own file.
Seam<std::shared_ptr<UserDefaults>> &userDefaults();

} // namespace platform
