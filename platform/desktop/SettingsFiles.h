// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFileSystemWatcher>
#include <QMap>
#include <QObject>
#include <QTimer>
#include <QVariant>

namespace platform {

// What the toolkits' settings files say, in the user's configuration folder (such as ~/.config): read once,
// and again when they change, however they are written or put in place. Main thread only.
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
    void read();
    void readAgain();
    void watch();

    const QString m_folder;
    QMap<QString, QVariantMap> m_values; // by file
    QFileSystemWatcher m_watcher;
    QTimer m_soon;
};

} // namespace platform
