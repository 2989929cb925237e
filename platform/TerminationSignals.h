// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class QSocketNotifier;

namespace platform {

// Turns SIGTERM, SIGINT and SIGHUP into a signal from the main loop, so that the application can quit in its
// normal way. One at a time; the signals have their default effect again when it is gone. Main thread only.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    void terminationRequested();

private:
    void receive();

    QSocketNotifier *m_notifier = nullptr;
};

} // namespace platform
