// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QVariant>
#include <optional>

namespace platform {

// Whether the user has asked the desktop for fewer animations. Follows the desktop's settings service; where
// none answers, the toolkits' settings files are read. Where nothing is said, animations are allowed. Main
// thread only.
class MotionPreference {
public:
    // Created on first use, which asks the service without waiting for its answer. Use it once early.
    static MotionPreference &shared();

    bool animationsAllowed() const;

    // What one setting of the service says; nothing when it is about something else.
    static std::optional<bool> stated(const QString &group, const QString &key, const QVariant &value);
    // What the settings files in a configuration folder (such as ~/.config) say.
    static std::optional<bool> statedByFiles(const QString &configFolder);

private:
    MotionPreference();
};

} // namespace platform
