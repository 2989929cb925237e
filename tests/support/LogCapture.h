// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMutex>
#include <QStringList>

namespace testbed {

// Collects every log line of the process, from any thread, as long as it lives. One at a time.
class LogCapture {
public:
    LogCapture()
    {
        Q_ASSERT(!s_current);
        s_current = this;
        m_previous
            = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) {
                  QMutexLocker lock(&s_current->m_mutex);
                  s_current->m_lines.append(message);
              });
    }
    ~LogCapture()
    {
        qInstallMessageHandler(m_previous);
        s_current = nullptr;
    }

    QStringList lines() const
    {
        QMutexLocker lock(&m_mutex);
        return m_lines;
    }
    void clear()
    {
        QMutexLocker lock(&m_mutex);
        m_lines.clear();
    }

private:
    static inline LogCapture *s_current = nullptr;
    mutable QMutex m_mutex;
    QStringList m_lines;
    QtMessageHandler m_previous;
};

} // namespace testbed
