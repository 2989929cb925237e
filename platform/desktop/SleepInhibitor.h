// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <memory>
#include <vector>

namespace platform {

class SleepInhibition;

// Keeps the computer from being suspended while active; the screen may rest and lock. Asks every service of
// the session that offers it, and the system's own where none of them has taken the request; never waits for
// an answer, and says nothing where none comes. A desktop releases what a process held when that process
// ends. Main thread only.
class SleepInhibitor : public QObject {
    Q_OBJECT

public:
    // `reason` is what the desktop shows to the user, for example "Recording sound".
    explicit SleepInhibitor(const QString &reason, QObject *parent = nullptr);
    ~SleepInhibitor() override;

    void setActive(bool active);

private:
    void askSystem();
    void settle();

    const QString m_reason;
    bool m_active = false;
    std::vector<std::unique_ptr<SleepInhibition>> m_services;
    std::unique_ptr<SleepInhibition> m_system;
};

} // namespace platform
