// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <chrono>

class QSocketNotifier;

namespace platform {

// Turns SIGTERM, SIGINT and SIGHUP into a signal from the main loop, so that the application can quit in its
// normal way. Whoever ends a session may send several at once, and what is still being written must not be
// lost by that: only one that comes later than `patience` after the first ends the process at once, for the
// case that quitting hangs. One at a time; the signals have their default effect again when it is gone. Main
// thread only.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(
        std::chrono::milliseconds patience = std::chrono::seconds(5), QObject *parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    void terminationRequested();

private:
    void receive();

    QSocketNotifier *m_notifier = nullptr;
};

} // namespace platform
