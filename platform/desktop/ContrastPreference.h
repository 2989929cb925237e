// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QVariant>
#include <optional>

namespace platform {

// Whether the user has asked the desktop for a high contrast: with the settings service, with the theme that
// the X server's settings manager names, or with the toolkits' settings files. One of them is enough. Main
// thread only.
class ContrastPreference : public QObject {
    Q_OBJECT

public:
    // Created on first use, which reads what can be had at once. The service is asked when the main loop
    // runs, so that the first paint does not wait for the session bus.
    static ContrastPreference &shared();

    bool isHigh() const { return m_isHigh; }

    // What one setting of the service says; nothing when it is about something else.
    static std::optional<bool> stated(const QString &group, const QString &key, const QVariant &value);
    // What the settings files in a configuration folder (such as ~/.config) say.
    static bool statedByFiles(const QString &configFolder);

Q_SIGNALS:
    void changed();

private:
    ContrastPreference();
    void followService();

    bool m_isHigh = false;
    const bool m_isHighWithoutService;
};

} // namespace platform
