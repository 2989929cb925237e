// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMutex>
#include <QStringList>

namespace testbed {

// Collects every log line of the process, from any thread, as long as it lives. One at a time.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QStringList lines() const;
    qsizetype count(const QString &line) const;
    void clear();

private:
    static void handle(QtMsgType, const QMessageLogContext &, const QString &message);

    static LogCapture *s_current;
    mutable QMutex m_mutex;
    QStringList m_lines;
    QtMessageHandler m_previous;
};

} // namespace testbed
