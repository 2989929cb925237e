// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QVariant>
#include <optional>

namespace platform {

class SettingsFiles;

// Whether the user asks the desktop for fewer animations. Follows the desktop's settings service and, where
// that says nothing of it, the toolkits' settings files. Where nobody says anything, animations are allowed.
// Main thread only.
class MotionPreference : public QObject {
    Q_OBJECT

public:
    // Created on first use, which asks the service without waiting for its answer. Use it once early.
    static MotionPreference &shared();

    bool animationsAllowed() const { return m_isAllowed; }

    // What one setting of the service says; nothing when it is about something else.
    static std::optional<bool> stated(const QString &group, const QString &key, const QVariant &value);
    static std::optional<bool> statedBy(const SettingsFiles &files);

Q_SIGNALS:
    void changed();

private:
    MotionPreference();
    void look();

    bool m_isAllowed;
};

} // namespace platform
