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

class QSettings;

namespace platform {

// The user's settings: byte strings and booleans under string keys, in one INI file. What cannot be read is
// absent: a missing, damaged or unreadable file, or a byte string of another type. Nothing is written before
// the first value is set; a file that is damaged then is kept beside the new one, as "<name>.damaged".
// Another process may use the same file: only the keys that were set here are written. Main thread only.
class UserDefaults {
public:
    // $XDG_CONFIG_HOME/flipside/flipside.conf, opened on the first call.
    static UserDefaults &standardUserDefaults();

    explicit UserDefaults(const QString &path);
    ~UserDefaults();

    // Empty when absent; callers treat an empty byte string as absent, too.
    QByteArray dataForKey(const QString &key) const;
    // Yes, true, on and numbers other than zero are yes, in any case and also abbreviated; whatever else
    // stands there is no. Nothing only when the key is absent.
    std::optional<bool> boolForKey(const QString &key) const;

    // Readable at once; in the file at the latest when the main loop comes round again.
    void setData(const QByteArray &data, const QString &key);
    void setBool(bool value, const QString &key);

    // Writes what is not in the file yet. False when it cannot be written; the values stay readable in this
    // process, and the reason is logged.
    bool synchronize();

private:
    std::optional<QVariant> objectForKey(const QString &key) const;
    void setObject(const QVariant &value, const QString &key);
    void keepDamagedFile();

    QString m_path;
    std::unique_ptr<QSettings> m_settings;
    // In place of the file, where something stands at its path that cannot be one.
    QHash<QString, QVariant> m_unsaved;
    bool m_damagedFileIsKept = false;
};

// What standardUserDefaults() answers; null for the user's own file.
Seam<std::shared_ptr<UserDefaults>> &userDefaults();

} // namespace platform
