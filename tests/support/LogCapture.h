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
        QMutexLocker beginning(&s_mutex);
        Q_ASSERT(!s_current);
        s_current = this;
        m_previous
            = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) {
                  QMutexLocker lock(&s_mutex);
                  if (s_current)
                      s_current->m_lines.append(message);
              });
    }
    ~LogCapture()
    {
        qInstallMessageHandler(m_previous);
        QMutexLocker lock(&s_mutex); // a thread may be in the middle of a line
        s_current = nullptr;
    }

    QStringList lines() const
    {
        QMutexLocker lock(&s_mutex);
        return m_lines;
    }
    void clear()
    {
        QMutexLocker lock(&s_mutex);
        m_lines.clear();
    }

private:
    static inline LogCapture *s_current = nullptr;
    static inline QMutex s_mutex;
    QStringList m_lines;
    QtMessageHandler m_previous;
};

} // namespace testbed
