// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QObject>
#include <QVariant>
#include <functional>
#include <optional>

class QDBusVariant;

namespace platform {

// What the desktop's settings service says of the user's preferences, as far as it has answered. Follows
// their changes. Main thread only.
class SettingsPortal : public QObject {
    Q_OBJECT

public:
    // Created on first use, which asks the service without waiting for its answer.
    static SettingsPortal &shared();

    // Understands one setting; nothing when it is about something else.
    using Reading
        = std::function<std::optional<bool>(const QString &group, const QString &key, const QVariant &value)>;
    // What all settings say that are about it. Two desktops' settings may stand side by side.
    QList<bool> answersTo(const Reading &reading) const;

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    SettingsPortal();
    void askService();

    QMap<QString, QVariantMap> m_groups;
};

} // namespace platform
