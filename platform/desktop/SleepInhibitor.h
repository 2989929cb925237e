// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <memory>
#include <vector>

namespace platform {

class SleepInhibition;

// Keeps the computer from falling asleep by itself while active; what the user asks for (closing the lid,
// "Suspend") is left alone. Asks every service of the desktop that offers it, never waits for an answer, and
// says nothing where none does. A desktop releases what a process held when that process ends. Main thread
// only.
class SleepInhibitor : public QObject {
    Q_OBJECT

public:
    // `reason` is what the desktop shows to the user, for example "Recording sound".
    explicit SleepInhibitor(const QString &reason, QObject *parent = nullptr);
    ~SleepInhibitor() override;

    void setActive(bool active);

private:
    const QString m_reason;
    std::vector<std::unique_ptr<SleepInhibition>> m_inhibitions;
};

} // namespace platform
