// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QStringList>
#include <chrono>
#include <sys/types.h>

namespace testsupport {

// A child that is talked to in lines. In place of QProcess, whose way of forking leaves the thread sanitizer
// with a wrong picture of the calling thread.
class ChildProcess {
public:
    // Throws when there is no such program.
    explicit ChildProcess(const QStringList &command);
    // Closes its input and waits for its end; kills it when that takes longer than the deadline.
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    void writeLine(const QByteArray &line);
    // Without the line's end. Throws at the deadline, or when the child has closed its output.
    QByteArray readLine(std::chrono::milliseconds deadline = std::chrono::seconds(20));
    // Closes its input and answers its exit status; -1 when it had to be killed or was.
    int finish(std::chrono::milliseconds deadline = std::chrono::seconds(20));
    pid_t pid() const { return m_pid; }

private:
    void closeInput();

    pid_t m_pid = -1;
    int m_input = -1;
    int m_output = -1;
    QByteArray m_read;
};

} // namespace testsupport
