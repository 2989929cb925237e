// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QObject>
#include <QVariant>
#include <optional>

class QDBusVariant;

namespace platform {

// Whether the user has asked the desktop for fewer animations. Follows the desktop's settings service; where
// none answers, the toolkits' settings files are read. Where nothing is said, animations are allowed. Main
// thread only.
class MotionPreference : public QObject {
    Q_OBJECT

public:
    // Created on first use, which asks the service without waiting for its answer. Use it once early.
    static MotionPreference &shared();

    bool animationsAllowed() const;

    // What one setting of the service says; nothing when it is about something else.
    static std::optional<bool> stated(const QString &group, const QString &key, const QVariant &value);
    // What the settings files in a configuration folder (such as ~/.config) say.
    static std::optional<bool> statedByFiles(const QString &configFolder);

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    MotionPreference();
    void askService();
    void keep(const QString &group, const QString &key, const QVariant &value);

    // By setting, because two desktops' settings may stand side by side.
    QHash<QString, bool> m_stated;
};

} // namespace platform
