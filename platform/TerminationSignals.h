// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <chrono>

class QSocketNotifier;

namespace platform {

// Turns SIGTERM, SIGINT and SIGHUP into a signal from the main loop, so that the application can quit in its
// normal way. Whoever ends a session may send several, and what is still being written must not be lost by
// that; but when quitting hangs, and the process is still there `patience` after the first, the system's
// alarm ends it. One at a time; the signals have their default effect again, and the alarm is off, when it is
// gone. Main thread only.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    // A quit takes six seconds where sound server and disk are both silent.
    explicit TerminationSignals(
        std::chrono::seconds patience = std::chrono::seconds(8), QObject *parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    void terminationRequested();

private:
    void receive();

    QSocketNotifier *m_notifier = nullptr;
};

} // namespace platform
