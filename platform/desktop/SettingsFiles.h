// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Inquiry.h"

#include <QFileSystemWatcher>
#include <QMap>
#include <QObject>
#include <QTimer>
#include <QVariant>

namespace platform {

// What the toolkits' settings files say, in the user's configuration folder (such as ~/.config): read once,
// and again when they change, however they are written or put in place. Nobody waits then for a disk that
// does not answer. Main thread only.
class SettingsFiles : public QObject {
    Q_OBJECT

public:
    static constexpr const char *gtk4 = "gtk-4.0/settings.ini";
    static constexpr const char *gtk3 = "gtk-3.0/settings.ini";
    static constexpr const char *kde = "kdeglobals";

    // Those of the user, kept for the life of the process.
    static SettingsFiles &shared();

    // Reads the files at once. Their changes are seen from when the main loop runs.
    explicit SettingsFiles(const QString &configFolder);

    // One of the files above, and a key with its group before it: "Settings/gtk-theme-name". Invalid where
    // the file does not have it.
    QVariant value(const char *file, const char *key) const;

Q_SIGNALS:
    void changed();

private:
    using Values = QMap<QString, QVariantMap>; // by file
    struct Look {
        QStringList places; // to be watched
        Values values;
    };

    static Values valuesIn(const QString &folder);
    static Look look(const QString &folder);
    void lookAgain();
    void adopt(const Look &seen);
    bool watch(const QStringList &places);

    const QString m_folder;
    Values m_values;
    QFileSystemWatcher m_watcher;
    QTimer m_soon;
    Inquiry<Look> m_question;
    bool m_isOutdated = false; // the answer that is still due
};

} // namespace platform
