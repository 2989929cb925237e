// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/support/LogCapture.h"

namespace testbed {

LogCapture *LogCapture::s_current = nullptr;

LogCapture::LogCapture()
{
    Q_ASSERT(!s_current);
    s_current = this;
    m_previous = qInstallMessageHandler(handle);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_previous);
    s_current = nullptr;
}

QStringList LogCapture::lines() const
{
    QMutexLocker lock(&m_mutex);
    return m_lines;
}

qsizetype LogCapture::count(const QString &line) const
{
    return lines().count(line);
}

void LogCapture::clear()
{
    QMutexLocker lock(&m_mutex);
    m_lines.clear();
}

void LogCapture::handle(QtMsgType, const QMessageLogContext &, const QString &message)
{
    QMutexLocker lock(&s_current->m_mutex);
    s_current->m_lines.append(message);
}

} // namespace testbed
