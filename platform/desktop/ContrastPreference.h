// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QVariant>
#include <optional>

namespace platform {

class SettingsFiles;

// Whether the user asks the desktop for a high contrast: with the settings service, with the theme that the X
// server's settings manager names, or with the toolkits' settings files. One of them is enough, and all are
// followed. Main thread only.
class ContrastPreference : public QObject {
    Q_OBJECT

public:
    // Created on first use, which reads what can be had at once. The service is asked when the main loop
    // runs, so that the first paint does not wait for the session bus.
    static ContrastPreference &shared();

    bool isHigh() const { return m_isHigh; }

    // What one setting of the service says; nothing when it is about something else.
    static std::optional<bool> stated(const QString &group, const QString &key, const QVariant &value);
    static bool statedBy(const SettingsFiles &files);

Q_SIGNALS:
    void changed();

private:
    ContrastPreference();
    void follow();
    void look();

    bool m_isHigh;
};

} // namespace platform
