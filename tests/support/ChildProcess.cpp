// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/support/ChildProcess.h"

#include <QDeadlineTimer>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace testsupport {

ChildProcess::ChildProcess(const QStringList &command)
{
    std::vector<QByteArray> words;
    for (const QString &word : command)
        words.push_back(word.toLocal8Bit());
    std::vector<char *> arguments;
    for (QByteArray &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    int input[2] = {-1, -1};
    int output[2] = {-1, -1};
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipes");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    const int error = posix_spawnp(&m_pid, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input[0]);
    close(output[1]);
    m_input = input[1];
    m_output = output[0];
    if (error != 0)
        throw std::runtime_error("cannot start " + words.front().toStdString());
}

ChildProcess::~ChildProcess()
{
    finish();
    close(m_output);
}

void ChildProcess::writeLine(const QByteArray &line)
{
    const QByteArray whole = line + '\n';
    if (write(m_input, whole.constData(), std::size_t(whole.size())) != whole.size())
        throw std::runtime_error("the child does not listen");
}

QByteArray ChildProcess::readLine(std::chrono::milliseconds deadline)
{
    const QDeadlineTimer timer(deadline);
    while (!m_read.contains('\n')) {
        pollfd readable{m_output, POLLIN, 0};
        char buffer[4096];
        if (poll(&readable, 1, int(timer.remainingTime())) <= 0)
            throw std::runtime_error("the child says nothing");
        const ssize_t bytes = read(m_output, buffer, sizeof buffer);
        if (bytes <= 0)
            throw std::runtime_error("the child has ended");
        m_read.append(buffer, bytes);
    }
    const QByteArray line = m_read.first(m_read.indexOf('\n'));
    m_read.remove(0, line.size() + 1);
    return line;
}

int ChildProcess::finish(std::chrono::milliseconds deadline)
{
    closeInput();
    if (m_pid < 0)
        return -1;
    int status = 0;
    const QDeadlineTimer timer(deadline);
    while (waitpid(m_pid, &status, WNOHANG) == 0) {
        if (timer.hasExpired())
            kill(m_pid, SIGKILL);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    m_pid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void ChildProcess::closeInput()
{
    if (m_input >= 0)
        close(std::exchange(m_input, -1));
}

} // namespace testsupport
